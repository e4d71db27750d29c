#include "window/polling.h"

#include <limits>

#include "plugin/number_text.h"
#include "window/device_state.h"

namespace quillon {
namespace {

constexpr std::int32_t kLastRow = std::numeric_limits<std::int16_t>::max();

constexpr std::int32_t kAbsent = -1;
constexpr std::int32_t kApplicationless = 3;
constexpr std::int32_t kHardOffLine = 6;

}  // namespace

std::uint32_t PollingInterval(float rate) {
    if (!(rate > 0)) return 0;
    const double interval = static_cast<double>(rate) * kPollingUnit;
    if (interval >= kLongestInterval) return kLongestInterval;
    return static_cast<std::uint32_t>(RoundHalfEven(interval));
}

TabTimers TimersOfTab(int tab) {
    switch (tab) {
        case kTabHw:
            return {.nvs = 0, .hw = kHwInterval};
        case kTabCalibration:
            return {.nvs = 0, .hw = kCalibrationInterval};
        case kTabTest:
        case kTabTune:
            return {.nvs = kNvsInterval, .hw = 0};
        default:
            return {};
    }
}

void MainViewCycle::Advance() {
    m_index = (m_index + 1) % kLabels;
}

bool RestsWhileFrozen(std::int32_t stateNumber) {
    return stateNumber == kAbsent || stateNumber == kApplicationless || stateNumber == kHardOffLine;
}

std::int32_t NextRow(std::int32_t current, std::int32_t rowCount) {
    if (current < 1 || current >= rowCount || current >= kLastRow) return 1;
    return current + 1;
}

std::array<bool, 4> DigitalInputs(std::uint8_t inputByte) {
    return {(inputByte & 1) != 0, (inputByte & 2) != 0, (inputByte & 4) != 0, (inputByte & 8) != 0};
}

bool OutputFlag(std::uint8_t outputByte) {
    return (outputByte & 0x80) == 0;
}

}  // namespace quillon
