#include "plugin/hex_text.h"

namespace quillon {
namespace {

constexpr std::size_t kDumpPosition = 22;

std::wstring UpperHex(std::uint32_t bits) {
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    std::wstring text;
    for (int shift = 28; shift >= 0; shift -= 4) {
        const std::uint32_t digit = bits >> shift & 0xF;
        if (digit != 0 || !text.empty() || shift <= 4) text.push_back(kDigits[digit]);
    }
    return text;
}

}  // namespace

std::optional<std::uint8_t> HexDigit(wchar_t character) {
    if (character >= L'0' && character <= L'9') return static_cast<std::uint8_t>(character - L'0');
    if (character >= L'A' && character <= L'F') {
        return static_cast<std::uint8_t>(character - L'A' + 10);
    }
    if (character >= L'a' && character <= L'f') {
        return static_cast<std::uint8_t>(character - L'a' + 10);
    }
    return std::nullopt;
}

std::optional<std::uint8_t> HexByteAt(std::wstring_view text, std::size_t position) {
    if (text.size() < 2 || position > text.size() - 2) return std::nullopt;
    const auto high = HexDigit(text[position]);
    const auto low = HexDigit(text[position + 1]);
    if (!high || !low) return std::nullopt;
    return static_cast<std::uint8_t>(*high << 4 | *low);
}

std::int32_t HexTextToNumber(std::wstring_view text) {
    if (text.empty()) return -1;
    const auto byte = HexByteAt(text, text.size() == 2 ? 0 : kDumpPosition);
    if (!byte) throw NumberError("no hexadecimal digits");
    return *byte;
}

std::wstring HexByte(std::int32_t& number) {
    if (number > 0xFF) number = 0xFF;
    return UpperHex(static_cast<std::uint32_t>(number));
}

std::wstring HexWord(std::int32_t& number) {
    if (number > 0xFFFF) number = 0xFFFF;
    std::int32_t high = number / 256;
    std::int32_t low = number % 256;
    return HexByte(high) + HexByte(low);
}

std::wstring TwoDigits(std::int32_t& number) {
    if (number > 99) number = 99;
    const std::wstring text = DecimalText(number);
    return text.size() == 1 ? L"0" + text : text;
}

std::int32_t FileCode(std::wstring_view code) {
    return LenientWhole(L"&H" + std::wstring(code));
}

}  // namespace quillon
