#include "plugin/ini_text.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::string_view kBlanks = " \t";
// A pair of quotes around less than this is taken off before anything can be cut.
constexpr std::size_t kLongestQuoted = 4000;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& one : lower)
        if (one >= 'A' && one <= 'Z') one = static_cast<char>(one - 'A' + 'a');
    return lower;
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
           value.back() == value.front();
}

bool IsOtherControl(char one) {
    return static_cast<unsigned char>(one) < 0x20 && one != '\t' && one != '\r' && one != '\n';
}

bool HasEncodingMark(std::string_view bytes) {
    return bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") ||
           bytes.starts_with("\xFE\xFF");
}

}  // namespace

bool IniText::AddSection(std::string_view line) {
    if (line.size() < 3 || line.find(']') != line.size() - 1) return false;
    const std::string_view name = line.substr(1, line.size() - 2);
    if (Trimmed(name) != name) return false;
    const auto [place, added] = m_sections.try_emplace(Lower(name));
    m_current = added ? &place->second : nullptr;
    if (added) m_names.emplace_back(name);
    return true;
}

bool IniText::AddKey(std::string_view line, std::size_t mark) {
    const std::string_view value = Trimmed(line.substr(mark + 1));
    if (IsQuoted(value) && value.size() > kLongestQuoted) return false;
    if (m_current) m_current->try_emplace(Lower(Trimmed(line.substr(0, mark))), value);
    return true;
}

bool IniText::AddLine(std::string_view line) {
    if (line.empty() || line.front() == ';') return true;
    if (line.front() == '[') return AddSection(line);
    const std::size_t mark = line.find('=');
    return mark != std::string_view::npos && AddKey(line, mark);
}

std::optional<IniText> IniText::Parse(std::string_view bytes) {
    if (HasEncodingMark(bytes)) return std::nullopt;
    if (std::any_of(bytes.begin(), bytes.end(), IsOtherControl)) return std::nullopt;
    IniText text;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.find('\r') != std::string_view::npos) return std::nullopt;
        if (!text.AddLine(Trimmed(line))) return std::nullopt;
    }
    text.m_current = nullptr;
    return text;
}

std::optional<std::string> IniText::Value(std::string_view section, std::string_view key) const {
    const auto keys = m_sections.find(Lower(section));
    if (keys == m_sections.end()) return std::nullopt;
    const auto found = keys->second.find(Lower(key));
    if (found == keys->second.end()) return std::nullopt;
    std::string_view value = found->second;
    if (IsQuoted(value)) value = value.substr(1, value.size() - 2);
    return std::string(value.substr(0, kLongestSetting));
}

}  // namespace quillon
