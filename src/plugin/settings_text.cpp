#include "plugin/settings_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "plugin/blanks.h"

namespace quillon {
namespace {

wchar_t Upper(wchar_t character) {
    return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - L'a' + L'A')
                                                  : character;
}

bool IsControl(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

// The system takes the superscripts 1 to 3 for port numbers, too.
bool IsPortNumber(wchar_t character) {
    return (character >= L'1' && character <= L'9') || character == L'\u00B9' ||
           character == L'\u00B2' || character == L'\u00B3';
}

// The system looks at what precedes the first dot, without the blanks around it.
bool IsDeviceName(std::wstring_view name) {
    std::wstring stem(WithoutBlanks(name.substr(0, name.find(L'.'))));
    std::transform(stem.begin(), stem.end(), stem.begin(), Upper);
    constexpr std::array<std::wstring_view, 6> kNames{L"CON", L"PRN",    L"AUX",
                                                      L"NUL", L"CONIN$", L"CONOUT$"};
    if (std::find(kNames.begin(), kNames.end(), stem) != kNames.end()) return true;
    return stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT")) &&
           IsPortNumber(stem.back());
}

constexpr std::wstring_view kSeparators = L"\\/";

// One part of a path that names what it says and nothing else; may be empty.
bool IsPlainName(std::wstring_view part) {
    constexpr std::wstring_view kForbidden = L":*?\"<>|";
    if (part.find_first_of(kForbidden) != std::wstring_view::npos) return false;
    if (std::any_of(part.begin(), part.end(), IsControl)) return false;
    if (part.ends_with(L'.') || part.ends_with(L' ')) return false;
    return !IsDeviceName(part);
}

std::optional<std::wstring> FileNameOf(std::wstring_view stem, const wchar_t* extension) {
    if (stem.find_first_of(kSeparators) != std::wstring_view::npos) return std::nullopt;
    if (!IsPlainName(stem)) return std::nullopt;
    return std::wstring(stem) + extension;
}

}  // namespace

std::wstring SettingsValue(std::wstring_view asRead) {
    if (asRead == kSettingNotFound) return {};
    const std::size_t comment = asRead.find(L'/');
    if (comment == std::wstring_view::npos) return std::wstring(asRead);
    return std::wstring(WithoutBlanks(asRead.substr(0, comment)));
}

std::optional<std::wstring> SettingsFileName(std::wstring_view programId) {
    return FileNameOf(programId, L".ini");
}

std::optional<std::wstring> CalibrationFileName(std::wstring_view neuronId) {
    return FileNameOf(neuronId, L".tca");
}

bool NamesFileInside(std::wstring_view name) {
    while (true) {
        const std::size_t end = name.find_first_of(kSeparators);
        const std::wstring_view part = name.substr(0, end);
        if (part.empty() || !IsPlainName(part)) return false;
        if (end == std::wstring_view::npos) return true;
        name.remove_prefix(end + 1);
    }
}

}  // namespace quillon
