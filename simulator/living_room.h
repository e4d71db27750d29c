// A room unit of the network and the room around it: what an operator in the room does to it, and
// what time does. Only what the unit measures and reports changes by itself; what was written to an
// input, a configuration variable or a property stays.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include "room_controller.h"

namespace quorvex {

// Lets time pass. An absent unit stands still; one that is not on line, or runs no application,
// reports nothing new while its room goes on.
void Advance(RoomController& controller, std::chrono::milliseconds time);

// Out: the state becomes absent. In: the state before; "04" when it was absent from the start.
void Plug(RoomController& controller, bool in);

// Of the entry FFFD, which is completed to 11 bytes; refused when the unit has none. `index`: 0 to
// 3, 1 is the MODE button.
void SetInput(RoomController& controller, long index, bool on);
void SetApplicationStatus(RoomController& controller, std::uint8_t status);
// These two show in the image at once.
void FixAnalog(RoomController& controller, std::optional<std::int16_t> counts);
void SetCalibrationSwitch(RoomController& controller, bool high);
// Refused outside -50 to 100 degrees Celsius.
void SetRoomTemperature(RoomController& controller, double celsius);

// What stands on the unit and in the room now. Without an image its part is 0.
struct RoomPanel {
    std::uint8_t applicationStatus = 0;
    std::array<bool, 4> inputs{};
    std::int16_t counts = 0;
    bool countsFixed = false;
    bool switchHigh = false;
    double volts = 0;
    double temperature = 0;
};
RoomPanel PanelOf(RoomController& controller);

}  // namespace quorvex
