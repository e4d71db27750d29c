#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "plugin/number_text.h"

namespace quillon {

// The value of one hexadecimal digit of either case; nullopt for any other character.
std::optional<std::uint8_t> HexDigit(wchar_t character);

// The byte whose two digits stand at a 0-based position; nullopt when the text is too short there
// or one of the two is no hexadecimal digit.
std::optional<std::uint8_t> HexByteAt(std::wstring_view text, std::size_t position);

// A byte taken from a hexadecimal text: -1 for an empty text, the value of a text of exactly two
// digits, otherwise byte 11 (counted from 0) of a dump of two digits a byte. Throws NumberError
// when there are no two digits at that place.
std::int32_t HexTextToNumber(std::wstring_view text);

// Upper-case hexadecimal, at least two digits. Above 255 the caller's variable becomes 255. A
// negative number is not clamped and gives the eight digits of its two's complement.
std::wstring HexByte(std::int32_t& number);

// Four digits, high byte first. Above 65535 the caller's variable becomes 65535. A negative number
// is not clamped: quotient and remainder by 256 (truncated, each with its sign) are written one
// after the other as HexByte does, so that -1 gives "00FFFFFFFF".
std::wstring HexWord(std::int32_t& number);

// Decimal, at least two characters. Above 99 the caller's variable becomes 99. Negative numbers
// keep their sign and get no zero: -5 gives "-5".
std::wstring TwoDigits(std::int32_t& number);

// The number of a device file entry from its hexadecimal code, by the rule of "&H" in
// LenientNumber: "FFFA" is -6, "1" is 1, a text without digits is 0. Throws NumberError for more
// than eight digits.
std::int32_t FileCode(std::wstring_view code);

}  // namespace quillon
