#include "living_room.h"

#include <utility>

#include "refusal.h"
#include "room_points.h"

namespace quorvex {

namespace {

constexpr long kImageEntry = -3;  // FFFD
constexpr std::size_t kImageLength = 11;
constexpr std::size_t kStatusByte = 0;
constexpr std::size_t kInputBytes[] = {2, 4, 7, 8};
constexpr std::size_t kAnalogByte = 9;  // high byte first

constexpr std::wstring_view kUnconfigured = L"02";
constexpr std::wstring_view kApplicationless = L"03";
constexpr std::wstring_view kOnLine = L"04";
constexpr std::wstring_view kBypass = L"8C";

constexpr double kUsualTemperature = 20;

// The same for every run, another for every unit.
std::uint32_t SeedOf(const RoomController& controller) {
    std::uint32_t seed = 2166136261U;
    for (const wchar_t c : controller.neuron) seed = (seed ^ c) * 16777619U;
    return seed;
}

Surroundings& SurroundingsOf(RoomController& controller) {
    if (!controller.surroundings) {
        const std::uint32_t seed = SeedOf(controller);
        const double temperature = RoomPoints(controller).Temperature().value_or(kUsualTemperature);
        controller.surroundings.emplace(
            Surroundings{RoomLife(seed, temperature), AnalogInput(~seed)});
    }
    return *controller.surroundings;
}

Bytes* Image(RoomController& controller) {
    FileEntry* const entry = controller.FindFile(kImageEntry);
    if (!entry) return nullptr;
    if (entry->value.size() < kImageLength) entry->value.resize(kImageLength, 0);
    return &entry->value;
}

Bytes& RequireImage(RoomController& controller) {
    if (Bytes* const image = Image(controller)) return *image;
    Refuse(E_INVALIDARG, L"Device " + controller.neuron + L" has no entry FFFD");
}

void Measure(Bytes& image, AnalogInput& analog) {
    const auto counts = static_cast<std::uint16_t>(analog.Read());
    image[kAnalogByte] = static_cast<std::uint8_t>(counts >> 8);
    image[kAnalogByte + 1] = static_cast<std::uint8_t>(counts & 0xFF);
}

std::array<bool, 4> InputsOf(const Bytes& image) {
    std::array<bool, 4> inputs{};
    for (std::size_t i = 0; i < inputs.size(); ++i) inputs[i] = image[kInputBytes[i]] == 1;
    return inputs;
}

}  // namespace

void Advance(RoomController& controller, std::chrono::milliseconds time) {
    if (!controller.IsPresent()) return;
    Surroundings& around = SurroundingsOf(controller);
    RoomPoints points(controller);
    const RoomOrders orders = points.Orders();
    if (controller.state == kUnconfigured || controller.state == kApplicationless) {
        around.life.Rest(orders.outdoor, time);
        return;
    }
    Bytes* const image = Image(controller);
    if (image) Measure(*image, around.analog);
    if (controller.state != kOnLine && controller.state != kBypass) {
        around.life.Rest(orders.outdoor, time);
        return;
    }
    points.Report(around.life.Advance(orders, time));
    if (image) points.ReportInputs(InputsOf(*image));
}

void Plug(RoomController& controller, bool in) {
    if (in == controller.IsPresent()) return;
    if (!in) {
        controller.stateWhenPlugged = std::exchange(controller.state, std::wstring());
        return;
    }
    controller.state =
        controller.stateWhenPlugged.empty() ? std::wstring(kOnLine) : controller.stateWhenPlugged;
}

void SetInput(RoomController& controller, long index, bool on) {
    if (index < 0 || index >= static_cast<long>(std::size(kInputBytes)))
        Refuse(E_INVALIDARG, L"A unit has the inputs 0 to 3");
    RequireImage(controller)[kInputBytes[index]] = on ? 1 : 0;
}

void SetApplicationStatus(RoomController& controller, std::uint8_t status) {
    RequireImage(controller)[kStatusByte] = status;
}

void FixAnalog(RoomController& controller, std::optional<std::int16_t> counts) {
    Bytes& image = RequireImage(controller);
    AnalogInput& analog = SurroundingsOf(controller).analog;
    analog.fixed = counts;
    Measure(image, analog);
}

void SetCalibrationSwitch(RoomController& controller, bool high) {
    Bytes& image = RequireImage(controller);
    AnalogInput& analog = SurroundingsOf(controller).analog;
    analog.high = high;
    Measure(image, analog);
}

void SetRoomTemperature(RoomController& controller, double celsius) {
    if (!(celsius >= -50 && celsius <= 100))
        Refuse(E_INVALIDARG, L"A room has -50 to 100 degrees Celsius");
    SurroundingsOf(controller).life.SetTemperature(celsius);
    RoomPoints(controller).ReportTemperature(celsius);
}

RoomPanel PanelOf(RoomController& controller) {
    const Surroundings& around = SurroundingsOf(controller);
    RoomPanel panel{.countsFixed = around.analog.fixed.has_value(),
                    .switchHigh = around.analog.high,
                    .volts = around.analog.Volts(),
                    .temperature = around.life.Temperature()};
    if (const FileEntry* const entry = controller.FindFile(kImageEntry)) {
        Bytes image = entry->value;
        if (image.size() < kImageLength) image.resize(kImageLength, 0);
        panel.applicationStatus = image[kStatusByte];
        panel.inputs = InputsOf(image);
        panel.counts =
            static_cast<std::int16_t>((image[kAnalogByte] << 8) | image[kAnalogByte + 1]);
    }
    return panel;
}

}  // namespace quorvex
