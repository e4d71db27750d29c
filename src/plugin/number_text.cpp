#include "plugin/number_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>

#include "plugin/hex_text.h"

namespace quillon {
namespace {

constexpr std::size_t kMaxHexDigits = 8;
constexpr std::size_t kMaxShortHexDigits = 4;

bool IsBlank(wchar_t character) {
    return character == L' ' || character == L'\t';
}

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

std::wstring_view WithoutLeadingBlanks(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return text;
}

// A decimal number at the front of a text.
struct Decimal {
    std::string magnitude;  // digits and at most one "."
    bool negative = false;
    bool hasDigits = false;
    std::size_t length = 0;  // characters taken, the sign included
};

Decimal TakeDecimal(std::wstring_view text) {
    Decimal found;
    if (!text.empty() && (text.front() == L'-' || text.front() == L'+')) {
        found.negative = text.front() == L'-';
        found.length = 1;
    }
    bool hasPoint = false;
    for (; found.length < text.size(); ++found.length) {
        const wchar_t character = text[found.length];
        if (IsDigit(character)) {
            found.hasDigits = true;
        } else if (character == L'.' && !hasPoint) {
            hasPoint = true;
        } else {
            break;
        }
        found.magnitude.push_back(static_cast<char>(character));
    }
    return found;
}

double ToNumber(const Decimal& decimal) {
    if (!decimal.hasDigits) return 0;
    const std::string& digits = decimal.magnitude;
    double number = 0;
    const auto converted = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                           std::chars_format::fixed);
    if (converted.ec == std::errc::result_out_of_range) {
        // The conversion also calls a fraction too small to tell from 0 out of range.
        if (digits.substr(0, digits.find('.')).find_first_not_of('0') != std::string::npos) {
            throw NumberError("number out of range");
        }
        number = 0;
    }
    return decimal.negative ? -number : number;
}

bool StartsHexNumber(std::wstring_view text) {
    return text.size() >= 2 && text[0] == L'&' && (text[1] == L'H' || text[1] == L'h');
}

std::int32_t SignedHexNumber(std::wstring_view digits) {
    std::uint32_t bits = 0;
    std::size_t count = 0;
    while (count < digits.size()) {
        const auto digit = HexDigit(digits[count]);
        if (!digit) break;
        if (++count > kMaxHexDigits) throw NumberError("hexadecimal number out of range");
        bits = bits << 4 | *digit;
    }
    if (count <= kMaxShortHexDigits) return static_cast<std::int16_t>(bits);
    return static_cast<std::int32_t>(bits);
}

}  // namespace

double LenientNumber(std::wstring_view text) {
    text = WithoutLeadingBlanks(text);
    if (StartsHexNumber(text)) return SignedHexNumber(text.substr(2));
    return ToNumber(TakeDecimal(text));
}

std::int32_t LenientWhole(std::wstring_view text) {
    return RoundHalfEven(LenientNumber(text));
}

double StrictNumber(std::wstring_view text) {
    text = WithoutLeadingBlanks(text);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    const Decimal decimal = TakeDecimal(text);
    if (!decimal.hasDigits || decimal.length != text.size()) throw NumberError("not a number");
    return ToNumber(decimal);
}

std::int32_t RoundHalfEven(double number) {
    // The lower bound is a half whose even neighbour is in range; the upper one's is not.
    if (std::isnan(number) || number < -2147483648.5 || number >= 2147483647.5) {
        throw NumberError("number out of range");
    }
    const double below = std::floor(number);
    const double fraction = number - below;
    const auto whole = static_cast<std::int64_t>(below);
    const bool isOdd = whole % 2 != 0;
    const bool up = fraction > 0.5 || (fraction == 0.5 && isOdd);
    return static_cast<std::int32_t>(whole + (up ? 1 : 0));
}

std::wstring DecimalText(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

}  // namespace quillon
