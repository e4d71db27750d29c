// A parameter file to choose from.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plugin/ini_text.h"

namespace quillon {

// Reads as ReadIniValue does. A plain file is read once, at construction, and then answers as it
// was; any other is asked for each value. A file that cannot be read has nothing in it.
class ParameterSource {
public:
    explicit ParameterSource(std::wstring file);

    std::wstring Value(const std::wstring& section, const std::wstring& key) const;
    std::vector<std::wstring> Sections() const;
    // Whether the file is held in memory.
    bool IsHeld() const { return m_text.has_value(); }

private:
    std::wstring m_file;
    std::optional<IniText> m_text;
};

}  // namespace quillon
