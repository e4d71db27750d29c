#pragma once

#include <array>
#include <cstdint>

namespace quillon {

// Intervals of the window's timers in milliseconds; 0 means that the timer does not run.
inline constexpr std::uint32_t kAppStatusInterval = 1000;
inline constexpr std::uint32_t kNvsInterval = 500;
inline constexpr std::uint32_t kHwInterval = 500;
inline constexpr std::uint32_t kCalibrationInterval = 300;
inline constexpr std::uint32_t kOutputInterval = 500;

// Milliseconds per unit of the polling rate.
inline constexpr double kPollingUnit = 20.0;

// The longest interval that the system's timers take; a longer one would be cut to the shortest.
inline constexpr std::uint32_t kLongestInterval = 0x7FFFFFFF;

// The interval of the main-view timer: rate x kPollingUnit as a whole number of milliseconds,
// halves to the even one. 0 for a rate of 0, a negative one, NaN, and one so small that its
// interval rounds to 0; kLongestInterval for a rate beyond it, infinity included.
std::uint32_t PollingInterval(float rate);

// The timers that belong to the shown tab; both are stopped at every tab change first.
struct TabTimers {
    std::uint32_t nvs = 0;
    std::uint32_t hw = 0;

    bool operator==(const TabTimers&) const = default;
};

// Both 0 for a tab that starts none and for a number that is no tab.
TabTimers TimersOfTab(int tab);

// The main-view label to poll next. The sixth label is never polled.
class MainViewCycle {
public:
    static constexpr int kLabels = 5;

    // 0 to kLabels - 1; 0 at first.
    int Index() const { return m_index; }
    void Advance();

private:
    int m_index = 0;
};

// True for the device states in which the main view is not polled while the window is frozen. In
// every other state polling goes on, for that is how the window notices that the device answers
// again.
bool RestsWhileFrozen(std::int32_t stateNumber);

// The row of the test list to read next, counted from 1: the one after `current`, or 1 when there
// is none. It is a 16-bit number, so after 32767 comes 1 as well. With no rows it is 1, and there
// is nothing to read.
std::int32_t NextRow(std::int32_t current, std::int32_t rowCount);

// The state of the digital inputs 0 to 3, from bits 0 to 3 of the input byte.
std::array<bool, 4> DigitalInputs(std::uint8_t inputByte);

// The window's output flag: true when bit 7 of the output byte is clear.
bool OutputFlag(std::uint8_t outputByte);

}  // namespace quillon
