#include "room_life.h"

#include <algorithm>
#include <cmath>

namespace quorvex {

namespace {

constexpr double kHoursPerSecond = 1.0 / 60;  // of the room, for one of ours
constexpr double kLongestStep = 1.0;          // seconds

constexpr double kThermalHours = 5;  // to follow the outdoor temperature
constexpr double kPeopleWarm = 1.2;  // kelvin an hour
constexpr double kDevicesWarm = 0.4;
constexpr double kHeatPower = 9;  // kelvin an hour, valve open and fan at full speed
constexpr double kCoolPower = 8;
constexpr double kStillAir = 0.15;     // share of that power without the fan
constexpr double kProportional = 1.2;  // kelvin from no demand to full demand
constexpr double kEarly = 0.3;         // kelvin before the set point at which demand begins
constexpr double kValveSeconds = 3;
constexpr double kFanSeconds = 1;
constexpr double kCoilSeconds = 2;
constexpr double kHeatedAir = 18;  // kelvin that the coil adds or takes
constexpr double kCooledAir = 10;
constexpr double kSensorNoise = 0.04;  // kelvin

constexpr double kSourceVolts = 21.95;
constexpr double kSourceCounts = 16000;  // of a converter without errors, above its zero
constexpr double kZeroCounts = 40;
constexpr double kFlicker = 2.5;

double Toward(double value, double target, double seconds, double timeConstant) {
    return value + (target - value) * std::min(1.0, seconds / timeConstant);
}

bool IsUsed(Occupancy occupancy) {
    return occupancy == Occupancy::kOccupied || occupancy == Occupancy::kBypass;
}

double Middle(const Band& band) {
    return (band.heat + band.cool) / 2;
}

// The coil's power and warmth depend on the air that the fan drives through it.
double Airflow(double fan) {
    return kStillAir + (1 - kStillAir) * fan;
}

}  // namespace

Occupancy EffectiveOccupancy(const RoomOrders& orders) {
    if (orders.command != Occupancy::kNone) return orders.command;
    return orders.sensor == Occupancy::kNone ? Occupancy::kOccupied : orders.sensor;
}

Band EffectiveBand(const RoomOrders& orders, Occupancy occupancy) {
    Band band = occupancy == Occupancy::kUnoccupied ? orders.unoccupied
                : occupancy == Occupancy::kStandby  ? orders.standby
                                                    : orders.occupied;
    if (band.cool < band.heat) band.heat = band.cool = Middle(band);
    if (occupancy == Occupancy::kUnoccupied) return band;
    const double half = (band.cool - band.heat) / 2;
    const double middle = orders.setpoint.value_or(Middle(band)) + orders.setpointOffset;
    return {middle - half, middle + half};
}

double Noise::Uniform() {
    m_state ^= m_state << 13;
    m_state ^= m_state >> 17;
    m_state ^= m_state << 5;
    return static_cast<double>(m_state) / 4294967296.0;
}

double Noise::Next() {
    const double first = Uniform();
    return first - Uniform();
}

RoomLife::RoomLife(std::uint32_t seed, double temperature)
    : m_noise(seed),
      m_temperature(temperature),
      m_discharge(temperature),
      m_humidity(46 + 5 * m_noise.Next()) {}

RoomReadings RoomLife::Advance(const RoomOrders& orders, std::chrono::milliseconds time) {
    m_fanStarted = false;
    double left = static_cast<double>(time.count()) / 1000;
    while (left > 0) {
        Step(orders, std::min(left, kLongestStep));
        left -= kLongestStep;
    }
    return Read(orders);
}

void RoomLife::Rest(double outdoor, std::chrono::milliseconds time) {
    RoomOrders off;
    off.mode = HvacMode::kOff;
    off.fan = 0.0;
    off.outdoor = outdoor;
    Advance(off, time);
}

void RoomLife::ChooseMode(const RoomOrders& orders, const Band& band, double sensed) {
    switch (orders.mode) {
        case HvacMode::kHeat:
        case HvacMode::kCool:
        case HvacMode::kFanOnly:
            m_mode = orders.mode;
            break;
        case HvacMode::kOff:
            m_mode = HvacMode::kOff;
            return;
        default: {
            const bool turns = m_mode != HvacMode::kHeat && m_mode != HvacMode::kCool;
            if (sensed < band.heat || (turns && sensed < Middle(band)))
                m_mode = HvacMode::kHeat;
            else if (sensed > band.cool || turns)
                m_mode = HvacMode::kCool;
        }
    }
    if (orders.holdOff) m_mode = HvacMode::kOff;
}

double RoomLife::FanTarget(const RoomOrders& orders, Occupancy occupancy, double demand) {
    if (orders.fan) return std::clamp(*orders.fan / 100, 0.0, 1.0);
    if (m_mode == HvacMode::kOff) return 0;
    // A stage is left a little below where it is entered, so that the fan does not hunt.
    constexpr double enter[] = {0.02, 0.35, 0.70};
    constexpr double leave = 0.05;
    while (m_fanStage < 3 && demand > enter[m_fanStage]) ++m_fanStage;
    while (m_fanStage > 0 && demand < enter[m_fanStage - 1] - leave) --m_fanStage;
    const int stage = IsUsed(occupancy) ? std::max(m_fanStage, 1) : m_fanStage;
    constexpr double speeds[] = {0, 0.35, 0.65, 1};
    return speeds[stage] * std::clamp(orders.fanMaximum / 100, 0.0, 1.0);
}

void RoomLife::Step(const RoomOrders& orders, double seconds) {
    const Occupancy occupancy = EffectiveOccupancy(orders);
    const Band band = EffectiveBand(orders, occupancy);
    const double sensed = orders.remoteSensor.value_or(m_temperature);
    ChooseMode(orders, band, sensed);
    const double missing = (band.heat + kEarly - sensed) / kProportional;
    const double excess = (sensed - band.cool + kEarly) / kProportional;
    const double heat = m_mode == HvacMode::kHeat ? std::clamp(missing, 0.0, 1.0) : 0;
    const double cool = m_mode == HvacMode::kCool ? std::clamp(excess, 0.0, 1.0) : 0;
    const double fan = FanTarget(orders, occupancy, std::max(heat, cool));
    const bool stood = m_fan < 0.01;
    m_heat = Toward(m_heat, heat, seconds, kValveSeconds);
    m_cool = Toward(m_cool, cool, seconds, kValveSeconds);
    m_fan = Toward(m_fan, fan, seconds, kFanSeconds);
    m_fanStarted |= stood && m_fan >= 0.01;

    const double air = Airflow(m_fan);
    const double hours = seconds * kHoursPerSecond;
    m_temperature += hours * ((orders.outdoor - m_temperature) / kThermalHours +
                              (IsUsed(occupancy) ? kPeopleWarm : kDevicesWarm) +
                              air * (m_heat * kHeatPower - m_cool * kCoolPower));
    m_discharge =
        Toward(m_discharge, m_temperature + air * (m_heat * kHeatedAir - m_cool * kCooledAir),
               seconds, kCoilSeconds);
    m_humidity = std::clamp(Toward(m_humidity, 46 - 8 * m_cool, hours, 1) + 0.2 * m_noise.Next(),
                            20.0, 80.0);
    m_carbonDioxide =
        Toward(m_carbonDioxide, IsUsed(occupancy) ? 820 : 430, hours, 1) + 3 * m_noise.Next();
}

RoomReadings RoomLife::Read(const RoomOrders& orders) {
    const Occupancy occupancy = EffectiveOccupancy(orders);
    const Band band = EffectiveBand(orders, occupancy);
    const double sensed = orders.remoteSensor.value_or(m_temperature);
    return {.temperature = sensed + (orders.remoteSensor ? 0 : kSensorNoise * m_noise.Next()),
            .setpoint = m_mode == HvacMode::kHeat   ? band.heat
                        : m_mode == HvacMode::kCool ? band.cool
                                                    : Middle(band),
            .occupancy = occupancy,
            .mode = m_mode,
            .heat = 100 * m_heat,
            .cool = 100 * m_cool,
            .fan = 100 * m_fan,
            .discharge = m_discharge + 2 * kSensorNoise * m_noise.Next(),
            .load = 100 * std::max(m_heat, m_cool),
            .humidity = m_humidity,
            .carbonDioxide = m_carbonDioxide,
            .fanStarted = m_fanStarted};
}

AnalogInput::AnalogInput(std::uint32_t seed)
    : m_noise(seed),
      m_gain(1 + 0.01 * m_noise.Next()),
      m_offset(kZeroCounts + 20 * m_noise.Next()) {}

std::int16_t AnalogInput::Read() {
    if (fixed) return *fixed;
    const double counts = kSourceCounts * Volts() / kSourceVolts * m_gain + m_offset;
    return static_cast<std::int16_t>(std::lround(counts + kFlicker * m_noise.Next()));
}

}  // namespace quorvex
