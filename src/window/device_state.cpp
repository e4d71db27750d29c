#include "window/device_state.h"

#include <algorithm>
#include <cmath>

#include "plugin/hex_text.h"
#include "plugin/number_text.h"
#include "plugin/status_text.h"

namespace quillon {
namespace {

constexpr std::uint32_t kSystemColorBit = 0x80000000;
constexpr std::uint32_t kColorBits = 0x00FFFFFF;
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kWhite = 0xFFFFFF;

double Linear(std::uint32_t channel) {
    const double part = (channel & 0xFF) / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(std::uint32_t color) {
    return 0.2126 * Linear(color) + 0.7152 * Linear(color >> 8) + 0.0722 * Linear(color >> 16);
}

}  // namespace

std::optional<std::int32_t> StateNumber(std::wstring_view stateText) {
    try {
        return HexTextToNumber(stateText);
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

StateView ViewOfState(std::int32_t stateNumber,
                      const std::function<std::uint32_t(int index)>& systemColor) {
    std::uint32_t color = StatusColor(stateNumber);
    if ((color & kSystemColorBit) != 0) color = systemColor(static_cast<int>(color & 0xFF));
    color &= kColorBits;
    return {.text = StatusText(stateNumber), .color = color, .darkText = WantsDarkText(color)};
}

double Contrast(std::uint32_t color, std::uint32_t other) {
    const auto [darker, lighter] = std::minmax({Luminance(color), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

bool WantsDarkText(std::uint32_t background) {
    return Contrast(background, kBlack) >= Contrast(background, kWhite);
}

bool ShowsHardware(std::wstring_view displayHW) {
    try {
        return LenientNumber(displayHW) != 0;
    } catch (const NumberError&) {
        return true;
    }
}

bool ShowsTab(int tab, bool showsHardware) {
    if (tab < 0 || tab >= kTabCount) return false;
    const bool isHardware = tab == kTabHw || tab == kTabCalibration || tab == kTabLabelPrint;
    return !isHardware || showsHardware;
}

}  // namespace quillon
