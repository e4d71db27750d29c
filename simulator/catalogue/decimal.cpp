#include "decimal.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr int kFraction = 6;           // decimals kept: one more than the finest half step needs
constexpr int kMaxIntegerDigits = 12;  // with the decimals kept, this fits 64 bits

constexpr std::int64_t Power10(int exponent) {
    std::int64_t power = 1;
    for (int i = 0; i < exponent; ++i) power *= 10;
    return power;
}

constexpr bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

std::wstring_view Trimmed(std::wstring_view text) {
    const auto first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

// The text's value in millionths. Digits beyond are dropped: they cannot move a value across a half
// step or a limit, all of which are whole millionths.
struct Millionths {
    std::int64_t value = 0;
    int beyond = 0;  // sign of what was dropped, 0 when it was nothing
};

std::wstring_view TakeDigits(std::wstring_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    const auto digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

std::optional<Millionths> ParseMillionths(std::wstring_view text) {
    text = Trimmed(text);
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+')) text.remove_prefix(1);
    auto whole = TakeDigits(text);
    std::wstring_view fraction;
    if (text.starts_with(L'.') || text.starts_with(L',')) {
        text.remove_prefix(1);
        fraction = TakeDigits(text);
    }
    if (!text.empty() || (whole.empty() && fraction.empty())) return std::nullopt;
    whole.remove_prefix(std::min(whole.find_first_not_of(L'0'), whole.size()));
    if (whole.size() > kMaxIntegerDigits) return std::nullopt;

    Millionths result;
    for (const wchar_t digit : whole) result.value = result.value * 10 + (digit - L'0');
    for (std::size_t i = 0; i < kFraction; ++i) {
        result.value = result.value * 10 + (i < fraction.size() ? fraction[i] - L'0' : 0);
    }
    if (fraction.size() > kFraction) {
        result.beyond = fraction.find_first_not_of(L'0', kFraction) != std::wstring_view::npos;
    }
    if (negative) {
        result.value = -result.value;
        result.beyond = -result.beyond;
    }
    return result;
}

std::int64_t DivideRounding(std::int64_t value, std::int64_t divisor) {
    const std::int64_t half = divisor / 2;
    return (value < 0 ? value - half : value + half) / divisor;
}

}  // namespace

std::wstring ScaledText(std::int64_t raw, const Scale& scale) {
    std::int64_t steps = scale.multiplier * (raw + scale.offset);
    if (scale.exponent > 0) steps *= Power10(scale.exponent);
    const int decimals = std::max(0, -scale.exponent);
    const bool negative = steps < 0;
    std::wstring digits = std::to_wstring(negative ? -steps : steps);
    const auto needed = static_cast<std::size_t>(decimals) + 1;
    if (digits.size() < needed) digits.insert(0, needed - digits.size(), L'0');
    if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), 1, L'.');
    return negative ? L"-" + digits : digits;
}

std::optional<std::int64_t> RawFromText(std::wstring_view text, const Scale& scale,
                                        const RawRange& range) {
    const auto number = ParseMillionths(text);
    if (!number) return std::nullopt;
    const std::int64_t step = scale.multiplier * Power10(kFraction + scale.exponent);
    const auto shown = [&](std::int64_t raw) { return (raw + scale.offset) * step; };
    if (range.invalid && number->beyond == 0 && number->value == shown(*range.invalid)) {
        return *range.invalid;
    }
    const auto lowest = shown(range.minimum);
    const auto highest = shown(range.maximum);
    const bool below = number->value < lowest || (number->value == lowest && number->beyond < 0);
    const bool above = number->value > highest || (number->value == highest && number->beyond > 0);
    if (below || above) return std::nullopt;
    return DivideRounding(number->value, step) - scale.offset;
}

}  // namespace quorvex
