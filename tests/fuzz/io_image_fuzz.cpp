#include "plugin/io_image.h"

#include <algorithm>

#include "fuzz_support.h"
#include "plugin/hex_text.h"

namespace quillon::fuzz {
namespace {

// The value of a piece of two decimal digits, the only form that a device writes.
std::optional<int> TwoDecimalDigits(const std::wstring& text, std::size_t piece) {
    int value = 0;
    for (wchar_t character : text.substr(2 * piece, 2)) {
        if (character < L'0' || character > L'9') return std::nullopt;
        value = 10 * value + static_cast<int>(character - L'0');
    }
    return value;
}

void CheckInputs(const std::wstring& text) {
    const InputsReading reading = ReadInputImage(text);
    if (text.size() < 22) Require(!reading.analog);
    if (!reading.analog) {
        Require(!reading.inputs);
        return;
    }
    Require(*reading.analog == LenientNumber(L"&H" + text.substr(18, 4)));

    const auto first = TwoDecimalDigits(text, 2);
    const auto second = TwoDecimalDigits(text, 4);
    const auto third = TwoDecimalDigits(text, 7);
    const auto fourth = TwoDecimalDigits(text, 8);
    if (!first || !second || !third || !fourth) return;
    const int sum = *first + 2 * *second + 4 * *third + 8 * *fourth;
    Require(reading.inputs.has_value() == (sum <= 255));
    if (reading.inputs) Require(*reading.inputs == sum);
}

void CheckOutputs(const std::wstring& text) {
    const auto image = ReadOutputImage(text);
    const std::wstring front = text.substr(0, 12);
    const bool isHex = front.size() == 12 && std::all_of(front.begin(), front.end(), [](wchar_t c) {
                           return HexDigit(c).has_value();
                       });
    Require(image.has_value() == isHex);
    if (!image) return;
    const std::wstring written = OutputImageText(*image);
    Require(written.size() == 12 && IsUpperHex(written));
    Require(ReadOutputImage(written) == image);
    for (std::size_t i = 0; i < written.size(); ++i) {
        Require(HexDigit(written[i]) == HexDigit(text[i]));
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    const std::wstring text = WideText(data, size);
    CheckInputs(text);
    CheckOutputs(text);

    quillon::OutputImage image{};
    std::copy_n(data, std::min(size, image.size()), image.begin());
    Require(quillon::ReadOutputImage(quillon::OutputImageText(image)) == image);
    return 0;
}
