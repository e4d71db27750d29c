#include "plugin/MMain.h"

#include <windows.h>
//
#include <oleauto.h>

#include <algorithm>

#include "com/text.h"
#include "plugin/code_page.h"
#include "plugin/field_text.h"
#include "plugin/settings_text.h"

namespace quillon {

namespace {

constexpr DWORD kValueBuffer = 4096;

std::wstring ShortPath(const std::wstring& path) {
    std::wstring shortened(MAX_PATH, L'\0');
    DWORD length =
        GetShortPathNameW(path.c_str(), shortened.data(), static_cast<DWORD>(shortened.size()));
    if (length > shortened.size()) {
        shortened.resize(length);
        length = GetShortPathNameW(path.c_str(), shortened.data(), length);
    }
    shortened.resize(length);
    return shortened;
}

// An empty or missing section or key would make the system list or delete, a missing file name read
// its own settings.
bool NamesOneKey(const std::wstring& file, const std::wstring& section, const std::wstring& key) {
    const auto named = [](const std::wstring& name) { return !name.empty() && name[0] != L'\0'; };
    return named(file) && named(section) && named(key);
}

}  // namespace

std::string SystemPath(const std::wstring& path) {
    bool lossy = false;
    std::string narrow = Narrow(path, &lossy);
    if (!lossy) return narrow;
    if (const std::wstring whole = ShortPath(path); !whole.empty()) return Narrow(whole);
    const std::size_t mark = path.find_last_of(L'\\');
    if (mark == std::wstring::npos) return narrow;
    const std::wstring folder = ShortPath(path.substr(0, mark));
    return folder.empty() ? narrow : Narrow(folder + path.substr(mark));
}

std::wstring ReadIniValue(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key) {
    if (!NamesOneKey(file, section, key)) return {};
    char value[kValueBuffer];
    const std::string missing = Narrow(kSettingNotFound);
    const DWORD length =
        GetPrivateProfileStringA(Narrow(section).c_str(), Narrow(key).c_str(), missing.c_str(),
                                 value, kValueBuffer, SystemPath(file).c_str());
    return SettingsValue(Widen(std::string_view(value, length)));
}

void WriteIniValue(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                   const std::wstring& value) {
    if (!NamesOneKey(file, section, key)) return;
    WritePrivateProfileStringA(Narrow(section).c_str(), Narrow(key).c_str(), Narrow(value).c_str(),
                               SystemPath(file).c_str());
}

std::vector<std::wstring> ReadIniSections(const std::wstring& file) {
    if (file.empty() || file[0] == L'\0') return {};
    const std::string path = SystemPath(file);
    std::string names(kValueBuffer, '\0');
    for (;;) {
        const auto room = static_cast<DWORD>(names.size());
        const DWORD length = GetPrivateProfileSectionNamesA(names.data(), room, path.c_str());
        // Two characters short of the room: some names did not fit.
        if (length + 2 < room) {
            names.resize(length);
            break;
        }
        names.resize(names.size() * 2);
    }
    std::vector<std::wstring> sections;
    for (std::size_t begin = 0; begin < names.size();) {
        const std::size_t end = std::min(names.find('\0', begin), names.size());
        sections.push_back(Widen(std::string_view(names).substr(begin, end - begin)));
        begin = end + 1;
    }
    return sections;
}

std::wstring LocalDecimalSeparator() {
    com::Bstr half;
    const HRESULT formatted = VarBstrFromR4(0.5F, LOCALE_USER_DEFAULT, 0, half.Out());
    const bool comma = SUCCEEDED(formatted) && half.View().find(L',') != std::wstring_view::npos;
    return comma ? L"," : L".";
}

std::wstring ToLocalDecimal(const std::wstring& text) {
    return ReplaceDecimalSeparator(text, LocalDecimalSeparator());
}

void Main(bool startedAsProgram, void (*showSplash)()) {
    if (startedAsProgram) showSplash();
}

}  // namespace quillon
