#include "model/parameter_subset.h"

#include "fuzz_support.h"
#include "plugin/ini_text.h"

namespace quillon::fuzz {
namespace {

// One character for each byte, as in a code page.
std::wstring Widened(std::string_view bytes) {
    std::wstring text;
    for (const char one : bytes)
        text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(one)));
    return text;
}

std::string Narrowed(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t one : text) bytes.push_back(static_cast<char>(one));
    return bytes;
}

std::wstring ValueIn(const IniText& text, std::wstring_view section, std::wstring_view key) {
    return Widened(text.Value(Narrowed(section), Narrowed(key)).value_or(""));
}

std::vector<std::wstring> SectionsOf(const IniText& text) {
    std::vector<std::wstring> names;
    for (const std::string& name : text.Sections()) names.push_back(Widened(name));
    return names;
}

void CheckHidden(const ParameterLine& line, const ParameterKind& kind) {
    Require(line.hidden.starts_with(std::wstring(kind.tag) + L"\\"));
    Require(line.hidden.find(L'\\', 3) != std::wstring::npos);
    Require(line.hidden.find_first_of(L"\r\n") == std::wstring::npos);
}

// The subset of a file, all entries chosen, is a file with as many entries.
void CheckSubset(const IniText& text) {
    ParameterSubset subset(ValueIn(text, kGeneralSection, kProgramIdKey));
    std::array<std::int32_t, 2> counts{};
    const auto read = [&](const std::wstring& section, const std::wstring& key) {
        return ValueIn(text, section, key);
    };
    for (std::size_t place = 0; place < counts.size(); ++place) {
        const ParameterKind& kind = *kParameterKinds[place];
        counts[place] = EntryCount(ValueIn(text, kind.list, kTotalNumber), SectionsOf(text), kind);
        Require(counts[place] >= 0 && counts[place] <= kMostParameters);
        counts[place] = std::min(counts[place], 50);
        for (std::int32_t n = 0; n < counts[place]; ++n) {
            const ParameterLine line = ReadParameter(read, kind, n);
            CheckHidden(line, kind);
            subset.Add(line.hidden);
        }
    }
    const auto again = IniText::Parse(Narrowed(subset.Text()));
    if (!again) return;
    for (std::size_t place = 0; place < counts.size(); ++place) {
        const ParameterKind& kind = *kParameterKinds[place];
        const std::wstring total = ValueIn(*again, kind.list, kTotalNumber);
        Require(total == DecimalText(counts[place]));
        Require(EntryCount(total, SectionsOf(*again), kind) == counts[place]);
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto text = quillon::IniText::Parse(bytes);
    if (!text) return 0;
    for (const std::string& section : text->Sections())
        Require(text->Value(section, "Value").value_or("").size() <= quillon::kLongestSetting);
    CheckSubset(*text);
    // Comments and empty lines change nothing.
    const auto commented = quillon::IniText::Parse("; comment\r\n\r\n" + bytes);
    Require(commented && commented->Sections() == text->Sections());
    return 0;
}
