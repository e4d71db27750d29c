// Files read and written in one go.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// nullopt when the file cannot be read or is larger.
std::optional<std::string> ReadWholeFile(const std::wstring& path, std::size_t largest);
// Replaces the file. False when it could not be written whole; nothing of it is left then.
bool WriteWholeFile(const std::wstring& path, std::string_view bytes);
// True when there is no such file any more.
bool DeleteWholeFile(const std::wstring& path);

}  // namespace quillon
