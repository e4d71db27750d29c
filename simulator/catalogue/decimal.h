// Whole numbers shown as scaled decimals, exactly: no binary fraction is ever involved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

// shown = multiplier * 10^exponent * (raw + offset); multiplier > 0, exponent -5 to 3, raw within
// 32 bits.
struct Scale {
    int multiplier = 1;
    int exponent = 0;
    int offset = 0;
};

struct RawRange {
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::optional<std::int64_t> invalid;  // accepted though it may lie outside
};

// -exponent decimals, "." as separator, no sign at zero.
std::wstring ScaledText(std::int64_t raw, const Scale& scale);

// The raw number nearest to the text's value, halves away from zero; nullopt when the text is no
// number or its value, before any rounding, lies outside the range. Blanks around it and "," for
// "." are allowed.
std::optional<std::int64_t> RawFromText(std::wstring_view text, const Scale& scale,
                                        const RawRange& range);

}  // namespace quorvex
