#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// What could be read of the inputs; a value that is absent leaves the caller's variable as it was.
struct InputsReading {
    std::optional<std::int16_t> analog;
    std::optional<std::uint8_t> inputs;
};

// Reads analog input 1 and the digital inputs from an input/output image, two hexadecimal digits a
// byte. The analog value is bytes 9 and 10, high byte first, signed. The inputs byte is piece 2
// plus 2 x piece 4 plus 4 x piece 7 plus 8 x piece 8, each piece of two characters a *decimal*
// number.
//
// Fewer than 22 characters, or no digits where the analog value stands: nothing at all. A piece
// that is no number, or a sum outside 0..255: the analog value alone.
InputsReading ReadInputImage(std::wstring_view text);

// Bytes 0-5 of an input/output image; the outputs are bytes 4 and 5.
using OutputImage = std::array<std::uint8_t, 6>;

// From the first 12 digits; what follows is ignored. nullopt for a shorter text or another
// character.
std::optional<OutputImage> ReadOutputImage(std::wstring_view text);

// 12 upper-case digits.
std::wstring OutputImageText(const OutputImage& image);

}  // namespace quillon
