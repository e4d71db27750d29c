#include "editors/enumeration.h"

#include <algorithm>

#include "plugin/number_text.h"

namespace quillon {
namespace {

template <class Matches>
std::optional<std::size_t> First(const std::vector<Option>& entries, Matches matches) {
    const auto found = std::find_if(entries.begin(), entries.end(), matches);
    if (found == entries.end()) return std::nullopt;
    return static_cast<std::size_t>(found - entries.begin());
}

}  // namespace

std::optional<std::size_t> Enumeration::EntryOf(std::wstring_view value) const {
    return First(m_entries, [&](const Option& entry) { return DecimalText(entry.code) == value; });
}

std::wstring Enumeration::TextToWrite(std::optional<std::size_t> shown) const {
    std::int32_t number = kNoNumber;
    if (shown && shown == m_picked) number = m_entries[*shown].code;
    if (number == kNoNumber) {
        const std::wstring text = shown ? m_entries[*shown].label : std::wstring();
        const auto named =
            First(m_entries, [&](const Option& entry) { return entry.label == text; });
        if (named) number = m_entries[*named].code;
    }
    return DecimalText(number);
}

}  // namespace quillon
