#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// The shell's result for a file that does not exist.
inline constexpr std::intptr_t kShellFileNotFound = 2;

// The message for the result of asking the shell to open the technical bulletin; nullopt when it
// was opened (results above 31).
std::optional<std::wstring> DocumentationMessage(std::intptr_t shellResult);

// The name (no folder) of a device's technical bulletin: the first four digits of the hexadecimal
// text of its identity block, as they are, and ".pdf". nullopt when the text is shorter or one of
// the four is no hexadecimal digit, so that the name never leads out of its folder.
std::optional<std::wstring> BulletinFile(std::wstring_view identityBlock);

}  // namespace quillon
