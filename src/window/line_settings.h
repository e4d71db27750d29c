// The texts by which a serial port is named and set up.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillon {

enum class Parity { kNone, kOdd, kEven, kMark, kSpace };
enum class StopBits { kOne, kOneAndHalf, kTwo };

struct LineSettings {
    std::uint32_t baud = 9600;
    Parity parity = Parity::kEven;
    std::uint8_t dataBits = 7;
    StopBits stopBits = StopBits::kOne;

    bool operator==(const LineSettings&) const = default;
};

// "9600,e,7,1": bits a second; n, o, e, m or s of either case; 4 to 8 data bits; 1, 1.5 or 2 stop
// bits. Blanks around a field do not count. nullopt for anything else, a missing field included.
// Which combinations a port can do is the port's to say.
std::optional<LineSettings> ParseLineSettings(std::wstring_view text);

// 1 to 256, digits alone with blanks around; nullopt for anything else.
std::optional<std::uint32_t> ParsePortNumber(std::wstring_view text);

}  // namespace quillon
