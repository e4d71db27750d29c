#include "plugin/hex_text.h"

#include <algorithm>
#include <cstring>

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

void CheckHexByte(std::int32_t number) {
    std::int32_t variable = number;
    const std::wstring text = HexByte(variable);
    Require(variable == std::min(number, 255));
    Require(IsUpperHex(text) && text.size() == (number < 0 ? 8u : 2u));
    if (number >= 0) Require(HexByteAt(text, 0) == variable);
    if (number < 0) Require(LenientNumber(L"&H" + text) == number);
}

void CheckHexWord(std::int32_t number) {
    std::int32_t variable = number;
    const std::wstring text = HexWord(variable);
    Require(variable == std::min(number, 65535));
    Require(IsUpperHex(text));
    if (number < 0) {
        Require(text.size() >= 4 && text.size() <= 16);
        return;
    }
    Require(text.size() == 4);
    Require(*HexByteAt(text, 0) * 256 + *HexByteAt(text, 2) == variable);
    Require(FileCode(text) == static_cast<std::int16_t>(variable));
}

void CheckTwoDigits(std::int32_t number) {
    std::int32_t variable = number;
    const std::wstring text = TwoDigits(variable);
    Require(variable == std::min(number, 99));
    Require(text.size() >= 2 && StrictNumber(text) == variable);
}

void CheckText(const std::wstring& text) {
    const auto byte = Attempt([&] { return HexTextToNumber(text); });
    const auto front = HexByteAt(text, 0);
    if (text.empty()) {
        Require(byte == -1);
    } else if (text.size() == 2) {
        Require(byte.has_value() == front.has_value() && (!byte || *byte == *front));
    } else {
        const auto eleventh = HexByteAt(text, 22);
        Require(byte.has_value() == eleventh.has_value() && (!byte || *byte == *eleventh));
    }
    if (front) Require(FileCode(text.substr(0, 2)) == *front);
    for (std::size_t i = 0; i <= text.size(); ++i) {
        Require(HexByteAt(text, i).has_value() ==
                (i + 1 < text.size() && HexDigit(text[i]) && HexDigit(text[i + 1])));
    }
    const auto code = Attempt([&] { return FileCode(text); });
    Require(code == Attempt([&] { return LenientWhole(L" &h" + text); }));
}

}  // namespace
}  // namespace quillon::fuzz

// The first four bytes are a number, the others a text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    std::int32_t number = 0;
    const std::size_t used = std::min(size, sizeof number);
    if (used != 0) std::memcpy(&number, data, used);
    CheckHexByte(number);
    CheckHexWord(number);
    CheckTwoDigits(number);
    CheckText(WideText(data + used, size - used));
    return 0;
}
