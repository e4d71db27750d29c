#include "plugin/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "plugin/hex_text.h"

namespace quillon {
namespace {

constexpr std::size_t kMaxHexDigits = 8;
constexpr std::size_t kMaxShortHexDigits = 4;
// Beyond what digits and point of any text can make up for.
constexpr std::int64_t kMostExponent = 1'000'000'000'000;

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

std::wstring_view WithoutBlanksAround(std::wstring_view text) {
    text = WithoutLeadingBlanks(text);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// A decimal number at the front of a text.
struct Decimal {
    std::string magnitude;  // digits and at most one "."
    bool negative = false;
    bool hasDigits = false;
    std::int64_t exponent = 0;
    std::size_t length = 0;  // characters taken, sign and exponent included
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

// The same with the exponent behind it, if that has digits.
Decimal TakeScientific(std::wstring_view text) {
    Decimal found = TakeDecimal(text);
    std::size_t place = found.length;
    const auto is = [&](wchar_t one, wchar_t other) {
        return place < text.size() && (text[place] == one || text[place] == other);
    };
    if (!found.hasDigits || !is(L'e', L'E')) return found;
    ++place;
    const bool negative = is(L'-', L'-');
    if (is(L'-', L'+')) ++place;
    std::int64_t exponent = 0;
    for (; place < text.size() && IsDigit(text[place]); ++place) {
        exponent = std::min(exponent * 10 + (text[place] - L'0'), kMostExponent);
        found.length = place + 1;
    }
    found.exponent = negative ? -exponent : exponent;
    return found;
}

// Whether a number is 1 or more, by its first digit that is not 0.
bool HasWholePart(const Decimal& decimal, std::size_t firstDigit) {
    const std::size_t point = std::min(decimal.magnitude.find('.'), decimal.magnitude.size());
    const auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    return decimal.exponent + (places > 0 ? places - 1 : places) >= 0;
}

double ToNumber(const Decimal& decimal) {
    const std::size_t firstDigit = decimal.magnitude.find_first_not_of("0.");
    if (firstDigit == std::string::npos) return 0;
    std::string digits = decimal.magnitude;
    if (decimal.exponent != 0) digits += 'e' + std::to_string(decimal.exponent);
    double number = 0;
    const auto converted = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (converted.ec == std::errc::result_out_of_range) {
        // The conversion also calls a fraction too small to tell from 0 out of range.
        if (HasWholePart(decimal, firstDigit)) throw NumberError("number out of range");
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

double LenientScientific(std::wstring_view text) {
    text = WithoutLeadingBlanks(text);
    if (StartsHexNumber(text)) return SignedHexNumber(text.substr(2));
    return ToNumber(TakeScientific(text));
}

bool IsScientific(std::wstring_view text) {
    text = WithoutBlanksAround(text);
    const Decimal decimal = TakeScientific(text);
    return decimal.hasDigits && decimal.length == text.size();
}

std::int32_t LenientWhole(std::wstring_view text) {
    return RoundHalfEven(LenientNumber(text));
}

double StrictNumber(std::wstring_view text) {
    text = WithoutBlanksAround(text);
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
