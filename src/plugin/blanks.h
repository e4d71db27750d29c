#pragma once

#include <algorithm>
#include <string_view>

namespace quillon {

// The text without the spaces around it.
inline std::wstring_view WithoutBlanks(std::wstring_view text) {
    const std::size_t first = std::min(text.find_first_not_of(L' '), text.size());
    return text.substr(first, text.find_last_not_of(L' ') + 1 - first);
}

}  // namespace quillon
