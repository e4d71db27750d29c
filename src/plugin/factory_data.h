#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// The factory data of a controller: two calibration points and the offset of analog input 1, and
// the date of production (byte 7: years after 1998, byte 8: week).
struct FactoryData {
    std::array<std::uint8_t, 9> bytes{};
    std::int16_t high = 0;
    std::int16_t low = 0;
    std::int16_t offset = 0;
};

// Decodes the 9 bytes of factory data from the first 18 digits; what follows them is ignored. A
// shorter text, or one with another character among them, yields nullopt; the caller keeps what it
// had.
//
// The words are bytes 0-1, 2-3 and 4-5, high byte first, worked out in the order high, low, offset.
// A high byte of 0x80 or more overflows: that word and those after it keep their bytes low byte
// first.
std::optional<FactoryData> ParseFactoryData(std::wstring_view hexText);

// True for exactly 18 hexadecimal digits, which is all that a calibration file may hold.
bool IsFactoryText(std::wstring_view text);

// The first 18 digits of an entry's text, which may be longer: what a calibration file is to hold.
// Empty when the entry does not begin with factory data.
std::wstring_view FactoryDigits(std::wstring_view entryText);

// The year in full, in decimal: 1998 to 2253.
std::wstring ProductionYear(const FactoryData& data);

// The week in decimal, without a leading zero.
std::wstring ProductionWeek(const FactoryData& data);

}  // namespace quillon
