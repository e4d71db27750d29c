#include "plugin/factory_data.h"

#include <algorithm>
#include <cstddef>

#include "plugin/hex_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::int32_t kFirstYear = 1998;
constexpr std::size_t kYearByte = 7;
constexpr std::size_t kWeekByte = 8;

std::int16_t Word(std::uint8_t high, std::uint8_t low) {
    return static_cast<std::int16_t>(high << 8 | low);
}

}  // namespace

std::optional<FactoryData> ParseFactoryData(std::wstring_view hexText) {
    FactoryData data;
    for (std::size_t i = 0; i < data.bytes.size(); ++i) {
        const auto byte = HexByteAt(hexText, 2 * i);
        if (!byte) return std::nullopt;
        data.bytes[i] = *byte;
    }
    bool hasOverflowed = false;
    std::size_t position = 0;
    for (std::int16_t* word : {&data.high, &data.low, &data.offset}) {
        const std::uint8_t first = data.bytes[position];
        const std::uint8_t second = data.bytes[position + 1];
        hasOverflowed = hasOverflowed || first >= 0x80;
        *word = hasOverflowed ? Word(second, first) : Word(first, second);
        position += 2;
    }
    return data;
}

bool IsFactoryText(std::wstring_view text) {
    return text.size() == 2 * FactoryData().bytes.size() &&
           std::all_of(text.begin(), text.end(), [](wchar_t one) { return HexDigit(one); });
}

std::wstring_view FactoryDigits(std::wstring_view entryText) {
    const std::wstring_view digits = entryText.substr(0, 2 * FactoryData().bytes.size());
    return IsFactoryText(digits) ? digits : std::wstring_view();
}

std::wstring ProductionYear(const FactoryData& data) {
    return DecimalText(kFirstYear + data.bytes[kYearByte]);
}

std::wstring ProductionWeek(const FactoryData& data) {
    return DecimalText(data.bytes[kWeekByte]);
}

}  // namespace quillon
