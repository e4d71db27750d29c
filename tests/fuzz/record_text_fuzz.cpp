#include "model/record_text.h"

#include <algorithm>

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

// Longer defaults are right, but filling them takes the time that other inputs need.
constexpr std::int32_t kLongestFilled = 1 << 16;

struct Line {
    std::wstring name;
    std::wstring text;
};

Line TakeLine(std::wstring& rest) {
    const std::wstring line = rest.substr(0, rest.find(L'\n'));
    rest.erase(0, line.size() + 1);
    const std::size_t mark = std::min(line.find(L'='), line.size());
    return {line.substr(0, mark), line.substr(std::min(mark + 1, line.size()))};
}

void CheckCompletion(RecordText record, void (*complete)(RecordText&), bool takesDefault) {
    if (record.length > kLongestFilled && record.length <= kMostDefaultBytes) return;
    const std::wstring before = record.rawValue;
    complete(record);
    if (!before.empty() || !takesDefault || record.length <= 0 ||
        record.length > kMostDefaultBytes) {
        Require(record.rawValue == before);
        return;
    }
    Require(record.rawValue.size() == std::size_t{2} * static_cast<std::size_t>(record.length));
    Require(record.rawValue.find_first_not_of(L'F') == std::wstring::npos);
}

// A number field after a child was taken: the text's value, or what it was when out of range.
void CheckNumber(std::int32_t before, std::int32_t after, const std::wstring& text) {
    Require(after == Attempt([&] { return LenientWhole(text); }).value_or(before));
}

void CheckNetworkVariable(std::wstring rest) {
    RecordText record;
    while (!rest.empty()) {
        const Line line = TakeLine(rest);
        const RecordText before = record;
        TakeAttribute(record, line.name, line.text);
        TakeNetworkVariableChild(record, line.name, line.text);
        Require(record.direction == kDirectionInput || record.direction == kDirectionOutput);
        Require(record.name.empty() && record.address == 0);
        if (line.name == L"length") CheckNumber(before.length, record.length, line.text);
        if (line.name == L"CONNECTIONINDEX") {
            CheckNumber(before.connectionIndex, record.connectionIndex, line.text);
        }
        if (line.name == L"RawValue") Require(record.rawValue == line.text);
        if (line.name == L"SNVTType") Require(record.snvtType == line.text);
        if (line.name == L"IsNC") {
            const auto number = Attempt([&] { return LenientWhole(line.text); });
            Require(record.isNC == (number ? *number == 1 : before.isNC));
        }
    }
    CheckCompletion(record, CompleteNetworkVariable, record.isNC);
}

void CheckConfigurationProperty(std::wstring rest) {
    RecordText record;
    while (!rest.empty()) {
        const Line line = TakeLine(rest);
        const RecordText before = record;
        TakeConfigurationPropertyChild(record, line.name, line.text);
        if (line.name == L"Length") CheckNumber(before.length, record.length, line.text);
        if (line.name == L"rawvalue") Require(record.rawValue == line.text);
    }
    Require(record.snvtType.empty() && record.direction == kDirectionInput && !record.isNC);
    CheckCompletion(record, CompleteConfigurationProperty, true);
}

}  // namespace
}  // namespace quillon::fuzz

// Lines of "name=text", each taken as an attribute and as a child.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = quillon::fuzz::WideText(data, size);
    quillon::fuzz::CheckNetworkVariable(text);
    quillon::fuzz::CheckConfigurationProperty(text);
    return 0;
}
