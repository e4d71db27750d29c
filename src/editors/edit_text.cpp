#include "editors/edit_text.h"

#include <algorithm>

namespace quillon {

std::wstring Applied(std::wstring_view text, const TextEdit& edit) {
    std::wstring result(text.substr(0, edit.range.from));
    result += edit.text;
    result += text.substr(std::min(edit.range.to, text.size()));
    return result;
}

std::wstring_view FirstLine(std::wstring_view text) {
    constexpr std::wstring_view kEnds(L"\r\n\0", 3);
    return text.substr(0, text.find_first_of(kEnds));
}

std::wstring_view TrimBlanks(std::wstring_view text) {
    const std::size_t begin = text.find_first_not_of(L' ');
    if (begin == std::wstring_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(L' ') + 1 - begin);
}

}  // namespace quillon
