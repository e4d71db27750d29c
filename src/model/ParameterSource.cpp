#include "model/ParameterSource.h"

#include <windows.h>

#include "plugin/MMain.h"
#include "plugin/code_page.h"
#include "plugin/settings_text.h"
#include "plugin/whole_file.h"

namespace quillon {
namespace {

// Larger ones are left on the disk.
constexpr std::size_t kLargestHeld = 64 * 1024 * 1024;

bool CharactersAreBytes() {
    CPINFO info{};
    return GetCPInfo(CP_ACP, &info) && info.MaxCharSize == 1;
}

}  // namespace

ParameterSource::ParameterSource(std::wstring file) : m_file(std::move(file)) {
    if (!CharactersAreBytes()) return;
    if (const auto bytes = ReadWholeFile(m_file, kLargestHeld)) m_text = IniText::Parse(*bytes);
}

std::wstring ParameterSource::Value(const std::wstring& section, const std::wstring& key) const {
    if (!m_text) return ReadIniValue(m_file, section, key);
    const auto value = m_text->Value(Narrow(section), Narrow(key));
    return value ? SettingsValue(Widen(*value)) : std::wstring();
}

std::vector<std::wstring> ParameterSource::Sections() const {
    if (!m_text) return ReadIniSections(m_file);
    std::vector<std::wstring> names;
    for (const std::string& name : m_text->Sections()) names.push_back(Widen(name));
    return names;
}

}  // namespace quillon
