// A settings file in memory, for readers of thousands of keys: the system's own reader goes through
// the file once for each.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// The most characters that the system's reader is asked for.
inline constexpr std::size_t kLongestSetting = 4095;

class IniText {
public:
    // nullopt for bytes that readers are known, or likely, to differ about, so that the system's
    // reader has to be asked: a mark of another encoding, control characters (other than tabs and
    // line ends, "\r\n" or "\n"), a line that is neither empty, nor a comment (";"), nor a section
    // name alone in its brackets, nor a key with "=", and a quoted value of about the longest
    // length and more. Bytes are characters: not for code pages with more than one byte a
    // character.
    static std::optional<IniText> Parse(std::string_view bytes);

    // The value as the system's reader gives it: of the first key with the name in the first
    // section with the name, letter case of ASCII apart; without the blanks around it, then without
    // one pair of quotes, then cut after kLongestSetting characters. nullopt when there is none.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;

    // In the spelling and order of the file, each once.
    const std::vector<std::string>& Sections() const { return m_names; }

private:
    using Keys = std::map<std::string, std::string, std::less<>>;

    bool AddLine(std::string_view line);
    bool AddSection(std::string_view line);
    bool AddKey(std::string_view line, std::size_t mark);

    std::map<std::string, Keys, std::less<>> m_sections;  // by lower-case name
    std::vector<std::string> m_names;
    Keys* m_current = nullptr;  // while parsing; null: what follows is never read
};

}  // namespace quillon
