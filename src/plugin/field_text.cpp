#include "plugin/field_text.h"

#include <cstddef>

namespace quillon {

std::wstring GetField(std::wstring_view text, std::int32_t n, std::wstring_view delimiter) {
    if (n < 0 || delimiter.empty()) return {};
    std::size_t begin = 0;
    for (std::int32_t found = 0; found < n; ++found) {
        const std::size_t mark = text.find(delimiter, begin);
        if (mark == std::wstring_view::npos) return {};
        begin = mark + 1;
    }
    const std::size_t end = text.find(delimiter, begin);
    if (end != std::wstring_view::npos) return std::wstring(text.substr(begin, end - begin));
    return n == 0 ? std::wstring() : std::wstring(text.substr(begin));
}

std::wstring ReplaceDecimalSeparator(std::wstring_view text, std::wstring_view separator) {
    std::size_t mark = text.find(L'.');
    if (mark == std::wstring_view::npos) mark = text.find(L',');
    std::wstring result(text);
    if (mark != std::wstring_view::npos) result.replace(mark, 1, separator);
    return result;
}

}  // namespace quillon
