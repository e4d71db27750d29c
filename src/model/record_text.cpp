#include "model/record_text.h"

#include <cstddef>

#include "plugin/number_text.h"

namespace quillon {
namespace {

std::wstring Upper(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& character : upper) {
        if (character >= L'a' && character <= L'z') {
            character = static_cast<wchar_t>(character - L'a' + L'A');
        }
    }
    return upper;
}

void TakeWhole(std::int32_t& field, std::wstring_view text) {
    try {
        field = LenientWhole(text);
    } catch (const NumberError&) {
        // A number out of range leaves the field as it was.
    }
}

void TakeCommonChild(RecordText& record, std::wstring_view upperName, std::wstring_view text) {
    if (upperName == L"CONNECTIONINDEX") {
        TakeWhole(record.connectionIndex, text);
    } else if (upperName == L"LENGTH") {
        TakeWhole(record.length, text);
    } else if (upperName == L"RAWVALUE") {
        record.rawValue = text;
    }
}

void FillWithOnes(RecordText& record) {
    if (!record.rawValue.empty() || record.length <= 0 || record.length > kMostDefaultBytes) return;
    record.rawValue.assign(std::size_t{2} * static_cast<std::size_t>(record.length), L'F');
}

}  // namespace

void TakeAttribute(RecordText& record, std::wstring_view localName, std::wstring_view value) {
    if (Upper(localName) != L"ISNC") return;
    std::int32_t number = record.isNC ? 1 : 0;
    TakeWhole(number, value);
    record.isNC = number == 1;
}

void TakeNetworkVariableChild(RecordText& record, std::wstring_view localName,
                              std::wstring_view text) {
    const std::wstring name = Upper(localName);
    if (name == L"SNVTTYPE") {
        record.snvtType = text;
    } else if (name == L"DIRECTION") {
        record.direction = Upper(text.substr(0, 2)) == L"IN" ? kDirectionInput : kDirectionOutput;
    } else {
        TakeCommonChild(record, name, text);
    }
}

void TakeConfigurationPropertyChild(RecordText& record, std::wstring_view localName,
                                    std::wstring_view text) {
    TakeCommonChild(record, Upper(localName), text);
}

void CompleteNetworkVariable(RecordText& record) {
    if (record.isNC) FillWithOnes(record);
}

void CompleteConfigurationProperty(RecordText& record) {
    FillWithOnes(record);
}

}  // namespace quillon
