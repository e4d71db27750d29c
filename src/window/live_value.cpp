#include "window/live_value.h"

#include "plugin/field_text.h"

namespace quillon {

bool SaysSilent(std::wstring_view raw) {
    return raw == kUnread;
}

LiveReading ReadLiveValue(std::wstring_view raw, std::wstring_view invalid,
                          const std::function<std::wstring()>& formatted,
                          std::wstring_view decimalSeparator) {
    if (SaysSilent(raw)) return {.silent = true, .text = {}};
    const bool isInvalid = ReplaceDecimalSeparator(raw, decimalSeparator) ==
                           ReplaceDecimalSeparator(invalid, decimalSeparator);
    return {.silent = false, .text = isInvalid ? std::wstring(kInvalidText) : formatted()};
}

}  // namespace quillon
