// 8-bit text in the machine's code page, for the platform calls that take no other.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

// Characters that the code page does not have become its replacement character, never a look-alike
// (some look-alikes are path separators); *lossy tells whether there was one. The code page is the
// process's own, which may be UTF-8, unless another is named. Throw com::Error when it is none.
std::string Narrow(std::wstring_view text, bool* lossy = nullptr, unsigned codePage = 0);
std::wstring Widen(std::string_view text, unsigned codePage = 0);

}  // namespace quillon
