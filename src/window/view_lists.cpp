#include "window/view_lists.h"

#include <utility>

#include "plugin/number_text.h"

namespace quillon {

std::vector<std::wstring> ReadViewEntries(
    const std::function<std::wstring(const std::wstring& key)>& read) {
    std::vector<std::wstring> entries;
    for (std::int32_t number = 0; number < kMostEntries; ++number) {
        std::wstring entry = read(DecimalText(number));
        if (entry.empty()) break;
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::optional<std::int32_t> EntryNumber(std::wstring_view entry) {
    try {
        return LenientWhole(entry);
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

std::optional<std::wstring> NumberEntry(std::wstring_view entry) {
    const auto number = EntryNumber(entry);
    if (!number) return std::nullopt;
    return DecimalText(*number);
}

}  // namespace quillon
