#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// The tabs of the device window by their numbers, which a tab keeps also when others are hidden.
inline constexpr int kTabHw = 0;
inline constexpr int kTabMain = 1;
inline constexpr int kTabTest = 2;
inline constexpr int kTabSetup = 3;
inline constexpr int kTabGeneralData = 4;
inline constexpr int kTabCalibration = 5;
inline constexpr int kTabTune = 6;
inline constexpr int kTabLabelPrint = 7;
inline constexpr int kTabCount = 8;

// The number of the device state from the host's hexadecimal state text; -1 for an empty text.
// nullopt for a text that cannot be read.
std::optional<std::int32_t> StateNumber(std::wstring_view stateText);

// What the state display shows.
struct StateView {
    std::wstring text;
    std::uint32_t color = 0;  // of the background, 0x00BBGGRR; never a system colour
    bool darkText = true;     // false: the text is written in white
};

// `systemColor` gives a colour of the system's scheme, 0x00BBGGRR, from its index; it is called
// only for a state that is shown in such a colour.
StateView ViewOfState(std::int32_t stateNumber,
                      const std::function<std::uint32_t(int index)>& systemColor);

// The contrast of two colours (0x00BBGGRR), from 1 (none) to 21 (black and white), by the formula
// of the web accessibility guidelines. Bits 24 to 31 are not looked at.
double Contrast(std::uint32_t color, std::uint32_t other);

// True when black text stands out better than white on a background (0x00BBGGRR). The contrast of
// the better one is at least 4.5 on any background.
bool WantsDarkText(std::uint32_t background);

// True when the setting "DisplayHW" asks for the tabs of the hardware: its lenient numeric value
// is not 0. A number too large to be read is not 0 either.
bool ShowsHardware(std::wstring_view displayHW);

// Whether a tab is shown; false for a number that is no tab.
bool ShowsTab(int tab, bool showsHardware);

}  // namespace quillon
