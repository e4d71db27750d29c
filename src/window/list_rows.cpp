#include "window/list_rows.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace quillon {
namespace {

constexpr std::size_t kPrefixLength = 4;
static_assert(kNvPrefix.size() == kPrefixLength && kCpPrefix.size() == kPrefixLength);

std::wstring Join(std::wstring_view front, std::wstring_view back) {
    std::wstring text(front);
    text += back;
    return text;
}

// NUL is among them because it would end the text on the clipboard.
bool BreaksCell(wchar_t character) {
    constexpr std::wstring_view kBreaks(L"\0\t\n\v\f\r\u0085\u2028\u2029", 9);
    return kBreaks.find(character) != std::wstring_view::npos;
}

void AppendCell(std::wstring& text, std::wstring_view cell) {
    std::replace_copy_if(cell.begin(), cell.end(), std::back_inserter(text), BreaksCell, L' ');
}

}  // namespace

int IconIndex(std::wstring_view key) {
    const auto found = std::find(kImageKeys.begin(), kImageKeys.end(), key);
    return found == kImageKeys.end() ? -1 : static_cast<int>(found - kImageKeys.begin());
}

ListRow NetworkVariableRow(std::wstring_view name, std::wstring_view key, std::wstring_view value,
                           bool output, bool setupList) {
    const std::wstring_view direction = output ? kOutputIcon : kInputIcon;
    return {.text = std::wstring(name),
            .key = Join(kNvPrefix, key),
            .tag = std::wstring(kNvTag),
            .icon = std::wstring(setupList ? kConfigurationIcon : direction),
            .value = std::wstring(value)};
}

ListRow ConfigurationPropertyRow(std::wstring_view name, std::wstring_view key,
                                 std::wstring_view value) {
    return {.text = std::wstring(name),
            .key = Join(kCpPrefix, key),
            .tag = std::wstring(kCpTag),
            .icon = std::wstring(kConfigurationIcon),
            .value = std::wstring(value)};
}

std::wstring ItemKey(std::wstring_view rowKey) {
    return std::wstring(rowKey.substr(std::min(rowKey.size(), kPrefixLength)));
}

std::wstring RowsAsText(std::span<const ListRow> rows) {
    std::wstring text;
    for (const ListRow& row : rows) {
        AppendCell(text, row.text);
        text += L'\t';
        AppendCell(text, row.value);
        text += L"\r\n";
    }
    return text;
}

}  // namespace quillon
