#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillon {

// A text that is no number, or a number out of range.
struct NumberError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The lenient numeric value: the number that a text begins with. After leading blanks (spaces,
// tabs) come an optional sign, digits and at most one "."; what follows is ignored, exponents
// included. Empty and non-numeric texts give 0.
//
// "&H" (either case, after blanks, without sign) starts a hexadecimal number: up to four digits are
// a signed 16-bit number, five to eight a signed 32-bit one, no digit at all is 0.
//
// Throws NumberError for more than eight hexadecimal digits and for numbers beyond double's range.
double LenientNumber(std::wstring_view text);

// The lenient numeric value with the exponent that may follow the digits: "e" or "E", an optional
// sign, digits. "5e-06" is 0.000005; an "e" without digits behind it is ignored like any other
// text.
double LenientScientific(std::wstring_view text);
// Whether the whole text is a decimal number with or without exponent, blanks allowed around, in
// range or not.
bool IsScientific(std::wstring_view text);

// The lenient numeric value as the nearest whole number, halves to the even neighbour.
// Throws NumberError when that is no 32-bit number.
std::int32_t LenientWhole(std::wstring_view text);

// The strict value: an optional sign, digits and at most one ".", with blanks allowed around.
// Throws NumberError for anything else: the empty text, a lone "." or sign, exponents, "&H",
// trailing text.
double StrictNumber(std::wstring_view text);

// The nearest whole number, halves to the even neighbour, whatever the rounding mode of the
// process. Throws NumberError when it is no 32-bit number, or for NaN.
std::int32_t RoundHalfEven(double number);

// Decimal digits, "-" in front when negative; the same in every locale.
std::wstring DecimalText(std::int32_t number);

}  // namespace quillon
