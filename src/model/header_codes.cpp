#include "model/header_codes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "plugin/hex_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::size_t kCodeCharacters = 4;
constexpr std::size_t kDeviceIdPosition = 8;
constexpr std::size_t kCustomerIdPosition = 12;

std::wstring CodeAt(std::wstring_view text, std::size_t position) {
    return std::wstring(text.substr(std::min(position, text.size()), kCodeCharacters));
}

}  // namespace

HeaderCodes ReadHeaderCodes(std::wstring_view header) {
    return {CodeAt(header, kDeviceIdPosition), CodeAt(header, kCustomerIdPosition)};
}

std::wstring LeadingFour(std::wstring_view text) {
    return CodeAt(text, 0);
}

std::wstring TrailingFour(std::wstring_view text) {
    return CodeAt(text, text.size() - std::min(text.size(), kCodeCharacters));
}

std::wstring DeviceCodeAsWord(std::wstring_view deviceId) {
    std::int32_t code = LenientWhole(deviceId);
    return HexWord(code);
}

}  // namespace quillon
