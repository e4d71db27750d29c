// What a device or a settings file says in a text: names of files, factory data, state, fields,
// names and texts of XML.
#include <algorithm>
#include <array>

#include "fuzz_support.h"
#include "model/xml_text.h"
#include "plugin/factory_data.h"
#include "plugin/field_text.h"
#include "plugin/hex_text.h"
#include "plugin/settings_text.h"
#include "window/device_state.h"
#include "window/shell_answer.h"

namespace quillon::fuzz {
namespace {

std::wstring UpperCase(std::wstring text) {
    for (wchar_t& one : text)
        if (one >= L'a' && one <= L'z') one = static_cast<wchar_t>(one - L'a' + L'A');
    return text;
}

bool IsHex(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t one) { return HexDigit(one); });
}

std::size_t Count(std::wstring_view text, wchar_t one) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), one));
}

// A name that never leads out of the folder before it, nor to anything but a file in it.
void RequireInFolder(const std::wstring& name) {
    Require(name.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos);
    Require(std::none_of(name.begin(), name.end(), [](wchar_t one) { return one < 0x20; }));
    Require(!name.empty() && name.back() != L'.' && name.back() != L' ');
    const std::wstring stem = UpperCase(name.substr(0, name.find(L'.')));
    for (const wchar_t* device : {L"CON", L"NUL", L"AUX", L"PRN", L"COM1", L"LPT9", L"CONIN$"})
        Require(stem != device);
    Require(NamesFileInside(name));
}

void CheckFileNames(const std::wstring& text) {
    if (const auto name = SettingsFileName(text)) {
        RequireInFolder(*name);
        Require(*name == text + L".ini");
    } else {
        Require(!IsHex(text));
    }
    Require(CalibrationFileName(text).has_value() == SettingsFileName(text).has_value());
    if (const auto name = CalibrationFileName(text)) {
        RequireInFolder(*name);
        Require(*name == text + L".tca");
    }
    const std::wstring head = text.substr(0, 4);
    const auto bulletin = BulletinFile(text);
    Require(bulletin.has_value() == (head.size() == 4 && IsHex(head)));
    if (bulletin) {
        RequireInFolder(*bulletin);
        Require(*bulletin == head + L".pdf");
    }
    const std::wstring value = SettingsValue(text);
    Require(value.find(L'/') == std::wstring::npos && text.find(value) != std::wstring::npos);
}

void CheckFactoryData(const std::wstring& text) {
    const std::wstring digits = text.substr(0, 18);
    const auto data = ParseFactoryData(text);
    Require(data.has_value() == IsFactoryText(digits));
    if (!data) return;
    std::wstring written;
    for (const std::uint8_t byte : data->bytes) {
        std::int32_t number = byte;
        written += HexByte(number);
    }
    Require(written == UpperCase(digits));
    Require(data->bytes[0] >= 0x80 || data->high == (data->bytes[0] << 8 | data->bytes[1]));
    Require(ProductionYear(*data).size() == 4 && ProductionYear(*data) >= L"1998" &&
            ProductionYear(*data) <= L"2253");
    Require(!ProductionWeek(*data).empty() && ProductionWeek(*data).size() <= 3);
}

void CheckState(const std::wstring& text) {
    const auto number = StateNumber(text);
    Require(!text.empty() || number == -1);
    Require(text.size() != 2 || number.has_value() == IsHex(text));
    ShowsHardware(text);
    if (!number) return;
    Require(*number >= -1 && *number <= 255);
    const StateView view = ViewOfState(*number, [](int) { return 0xFFC0C0C0; });
    Require(!view.text.empty() && view.color <= 0xFFFFFF);
    Require(Contrast(view.color, view.darkText ? 0x000000 : 0xFFFFFF) >= 4.5);
}

// The fields of a text, put together again, are the text.
void CheckFields(const std::wstring& text, const std::wstring& delimiter) {
    Require(GetField(text, -1, delimiter).empty() && GetField(text, 0, L"").empty());
    Require(GetField(text, 0x7FFFFFFF, delimiter).empty());
    if (delimiter.empty() || text.find(delimiter) == std::wstring::npos) {
        Require(GetField(text, 0, delimiter).empty() && GetField(text, 1, delimiter).empty());
        return;
    }
    std::wstring whole = GetField(text, 0, delimiter);
    Require(text.starts_with(whole + delimiter));
    if (delimiter.size() > 1) {
        Require(text.find(GetField(text, 1, delimiter)) != std::wstring::npos);
        return;
    }
    const auto last = static_cast<std::int32_t>(Count(text, delimiter.front()));
    for (std::int32_t n = 1; n <= last; ++n) whole += delimiter + GetField(text, n, delimiter);
    Require(whole == text && GetField(text, last + 1, delimiter).empty());
}

void CheckSeparator(const std::wstring& text) {
    for (const std::wstring separator : {L".", L",", L"", L"::"}) {
        const std::wstring replaced = ReplaceDecimalSeparator(text, separator);
        const std::size_t place = std::min(text.find(L'.'), text.size());
        const std::size_t mark = place < text.size() ? place : text.find(L',');
        if (mark == std::wstring::npos) {
            Require(replaced == text);
            continue;
        }
        Require(replaced == text.substr(0, mark) + separator + text.substr(mark + 1));
    }
}

void CheckXml(const std::wstring& text) {
    const std::wstring kept = XmlCharacters(text);
    Require(kept.size() <= text.size() && XmlCharacters(kept) == kept);
    for (const wchar_t one : kept) {
        Require(one >= 0x20 || one == L'\t' || one == L'\n' || one == L'\r');
        Require(one != 0xFFFE && one != 0xFFFF);
    }
    if (!IsXmlName(text)) return;
    Require(kept == text && IsXmlName(text + L"-.0_"));
    Require(text.find_first_of(L" :<>&\"'/=") == std::wstring::npos);
    Require(text.front() != L'-' && text.front() != L'.' && !(text[0] >= L'0' && text[0] <= L'9'));
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    const std::wstring text = WideText(data, size);
    CheckFileNames(text);
    CheckFactoryData(text);
    CheckState(text);
    for (const std::size_t length : {0u, 1u, 2u})
        CheckFields(text.substr(std::min<std::size_t>(length, text.size())),
                    text.substr(0, length));
    CheckFields(text, L",");
    CheckSeparator(text);
    CheckXml(text);
    return 0;
}
