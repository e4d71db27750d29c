// How a room and its unit live: pure arithmetic, the same for the same seed, orders and time steps.
// Time runs faster than in a real room: one second here is a minute there.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace quorvex {

// As the network counts them.
enum class Occupancy { kNone = -1, kOccupied = 0, kUnoccupied = 1, kBypass = 2, kStandby = 3 };
enum class HvacMode { kNone = -1, kAuto = 0, kHeat = 1, kCool = 3, kOff = 6, kFanOnly = 9 };

// Heated below the one, cooled above the other; degrees Celsius.
struct Band {
    double heat = 0;
    double cool = 0;
};

// What the unit is told, by the network and by its settings. Temperatures in degrees Celsius,
// levels in percent.
struct RoomOrders {
    Band occupied{21, 23};
    Band standby{19, 25};
    Band unoccupied{16, 28};
    std::optional<double> setpoint;  // takes the middle of the band, except when unoccupied
    double setpointOffset = 0;
    Occupancy command = Occupancy::kNone;  // goes before the sensor
    Occupancy sensor = Occupancy::kNone;
    HvacMode mode = HvacMode::kAuto;  // any other than the named ones counts as kAuto
    bool holdOff = false;             // neither heats nor cools, for a window is open
    std::optional<double> fan;        // none: automatic
    double fanMaximum = 100;
    double outdoor = 10;
    std::optional<double> remoteSensor;  // replaces the unit's own
};

// What the unit reports.
struct RoomReadings {
    double temperature = 0;  // with the sensor's noise
    double setpoint = 0;     // of what it does now: heat, cool, or the middle
    Occupancy occupancy = Occupancy::kOccupied;
    HvacMode mode = HvacMode::kOff;
    double heat = 0;
    double cool = 0;
    double fan = 0;
    double discharge = 0;
    double load = 0;
    double humidity = 0;
    double carbonDioxide = 0;  // parts per million
    bool fanStarted = false;   // since the reading before
};

// The occupancy that counts: the command, then the sensor, then occupied.
Occupancy EffectiveOccupancy(const RoomOrders& orders);
// The band that counts, its lower edge never above its upper one.
Band EffectiveBand(const RoomOrders& orders, Occupancy occupancy);

// Random numbers from -1 to 1, those near 0 more often.
class Noise {
public:
    explicit Noise(std::uint32_t seed) : m_state(seed | 1U) {}
    double Next();

private:
    double Uniform();
    std::uint32_t m_state;
};

class RoomLife {
public:
    RoomLife(std::uint32_t seed, double temperature);

    // Lets time pass in steps of a second at most. A negative time is none.
    RoomReadings Advance(const RoomOrders& orders, std::chrono::milliseconds time);
    // Lets it pass for the room alone, the unit being off.
    void Rest(double outdoor, std::chrono::milliseconds time);

    // Without noise, as it is now.
    double Temperature() const { return m_temperature; }
    void SetTemperature(double temperature) { m_temperature = temperature; }

private:
    void Step(const RoomOrders& orders, double seconds);
    void ChooseMode(const RoomOrders& orders, const Band& band, double sensed);
    double FanTarget(const RoomOrders& orders, Occupancy occupancy, double demand);
    RoomReadings Read(const RoomOrders& orders);

    Noise m_noise;
    double m_temperature;
    double m_heat = 0;  // valves and fan: 0 to 1
    double m_cool = 0;
    double m_fan = 0;
    double m_discharge;
    double m_humidity;
    double m_carbonDioxide = 600;
    int m_fanStage = 0;
    HvacMode m_mode = HvacMode::kOff;
    bool m_fanStarted = false;
};

// The analogue input in calibration: one of two reference resistances, 1199 and 7352 ohms, behind
// 10 kilohms at a source of 21.95 V. The voltage across it is read by a converter that has small
// errors of its own, which the seed decides.
class AnalogInput {
public:
    static constexpr double kLowVolts = 2.35;
    static constexpr double kHighVolts = 9.30;

    explicit AnalogInput(std::uint32_t seed);

    bool high = false;                  // position of the calibration switch
    std::optional<std::int16_t> fixed;  // a count that stays; none: measured

    double Volts() const { return high ? kHighVolts : kLowVolts; }
    // Measured counts flicker from reading to reading.
    std::int16_t Read();

private:
    Noise m_noise;
    double m_gain;
    double m_offset;
};

}  // namespace quorvex
