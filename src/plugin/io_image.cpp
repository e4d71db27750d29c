#include "plugin/io_image.h"

#include <cstddef>

#include "plugin/hex_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::size_t kAnalogByte = 9;

struct DigitalInput {
    std::size_t piece;
    double weight;
};

constexpr std::array<DigitalInput, 4> kDigitalInputs{{{2, 1}, {4, 2}, {7, 4}, {8, 8}}};

std::optional<std::uint8_t> ReadInputs(std::wstring_view text) {
    try {
        double sum = 0;
        for (const auto& [piece, weight] : kDigitalInputs) {
            sum += weight * StrictNumber(text.substr(2 * piece, 2));
        }
        const std::int32_t inputs = RoundHalfEven(sum);
        if (inputs < 0 || inputs > 0xFF) return std::nullopt;
        return static_cast<std::uint8_t>(inputs);
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

}  // namespace

InputsReading ReadInputImage(std::wstring_view text) {
    InputsReading reading;
    // The analog word is the image's last, so a text that holds it holds every piece.
    const auto high = HexByteAt(text, 2 * kAnalogByte);
    const auto low = HexByteAt(text, 2 * kAnalogByte + 2);
    if (!high || !low) return reading;
    reading.analog = static_cast<std::int16_t>(*high << 8 | *low);
    reading.inputs = ReadInputs(text);
    return reading;
}

std::optional<OutputImage> ReadOutputImage(std::wstring_view text) {
    OutputImage image{};
    for (std::size_t i = 0; i < image.size(); ++i) {
        const auto byte = HexByteAt(text, 2 * i);
        if (!byte) return std::nullopt;
        image[i] = *byte;
    }
    return image;
}

std::wstring OutputImageText(const OutputImage& image) {
    std::wstring text;
    for (std::int32_t byte : image) text += HexByte(byte);
    return text;
}

}  // namespace quillon
