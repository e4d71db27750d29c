// The points of a room unit by the names under which its programs know them. A program has some of
// them only; what it lacks is neither read nor written, and neither is a point of another shape.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "room_controller.h"

namespace quorvex {

class RoomPoints {
public:
    explicit RoomPoints(RoomController& controller) : m_controller(controller) {}

    // What the unit is told now. An invalid value counts as none.
    RoomOrders Orders() const;
    // What it last reported as the room's temperature.
    std::optional<double> Temperature() const;

    // Writes its outputs, and nothing else.
    void Report(const RoomReadings& readings);
    void ReportTemperature(double celsius);
    void ReportInputs(const std::array<bool, 4>& inputs);

private:
    DataPoint* Find(std::wstring_view name) const;
    // A whole point, or with a field name a field of it.
    std::optional<double> Number(std::wstring_view name, std::wstring_view field = {}) const;
    void Put(std::wstring_view name, double value) { Put(name, {}, value); }
    void Put(std::wstring_view name, std::wstring_view field, double value);
    void PutSwitch(std::wstring_view name, double percent);
    void PutStatus(const RoomReadings& readings);
    void PutAirBox(const RoomReadings& readings);

    RoomController& m_controller;
};

}  // namespace quorvex
