#include "room_points.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace quorvex {

namespace {

constexpr int kDecimals = 4;  // finer than any type shows

std::wstring EditText(const Type& type, double number) {
    std::array<char, 64> digits{};
    const int decimals = type.kind == Kind::Enum ? 0 : kDecimals;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                       std::chars_format::fixed, decimals);
    return {digits.data(), written.ptr};
}

std::optional<double> NumberOf(const Type& type, std::span<const std::uint8_t> bytes) {
    const std::wstring text = ValueText(type, bytes);
    if (text == type.invalidValue) return std::nullopt;
    const std::string digits(text.begin(), text.end());
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return std::nullopt;
    return number;
}

// A value beyond the type's limits is brought to the nearer one.
std::optional<Bytes> BytesOf(const Type& type, double number) {
    if (type.kind == Kind::Text || type.kind == Kind::User || type.kind == Kind::Struct)
        return std::nullopt;
    if (auto bytes = BytesFromValueText(type, EditText(type, number))) return bytes;
    return BytesFromValueText(type, number < 0 ? type.minimum : type.maximum);
}

const Field* FindField(const Type& type, std::wstring_view name) {
    const auto found = std::find_if(type.fields.begin(), type.fields.end(),
                                    [&](const Field& field) { return field.name == name; });
    return found == type.fields.end() ? nullptr : &*found;
}

template <class Enumeration>
Enumeration EnumOf(std::optional<double> number) {
    return static_cast<Enumeration>(static_cast<int>(number.value_or(-1)));
}

Occupancy OccupancyOf(std::optional<double> number) {
    return number && *number >= 0 && *number <= 3 ? EnumOf<Occupancy>(number) : Occupancy::kNone;
}

bool Names(HvacMode mode) {
    return mode == HvacMode::kHeat || mode == HvacMode::kCool || mode == HvacMode::kOff ||
           mode == HvacMode::kFanOnly;
}

}  // namespace

DataPoint* RoomPoints::Find(std::wstring_view name) const {
    PointTable& points = m_controller.Points(PointKind::kVariable);
    for (std::size_t i = 0; i < points.Size(); ++i)
        if (points.At(i).name == name) return &points.At(i);
    return nullptr;
}

std::optional<double> RoomPoints::Number(std::wstring_view name, std::wstring_view field) const {
    const DataPoint* const point = Find(name);
    if (!point) return std::nullopt;
    if (field.empty())
        return point->type->kind == Kind::Struct ? std::nullopt
                                                 : NumberOf(*point->type, point->raw);
    const Field* const inner = FindField(*point->type, field);
    return inner ? NumberOf(inner->type, FieldBytes(*inner, point->raw)) : std::nullopt;
}

void RoomPoints::Put(std::wstring_view name, std::wstring_view field, double value) {
    DataPoint* const point = Find(name);
    if (!point || !point->output) return;
    const Field* const inner = field.empty() ? nullptr : FindField(*point->type, field);
    if (!field.empty() && !inner) return;
    const auto bytes = BytesOf(inner ? inner->type : *point->type, value);
    if (!bytes) return;
    if (inner)
        PutFieldBytes(*inner, point->raw, *bytes);
    else
        point->raw = *bytes;
}

RoomOrders RoomPoints::Orders() const {
    RoomOrders orders;
    const auto band = [&](Band& target, std::wstring_view heat, std::wstring_view cool) {
        target.heat = Number(L"nciSetpoints", heat).value_or(target.heat);
        target.cool = Number(L"nciSetpoints", cool).value_or(target.cool);
    };
    band(orders.occupied, L"occupied_heat", L"occupied_cool");
    band(orders.standby, L"standby_heat", L"standby_cool");
    band(orders.unoccupied, L"unoccupied_heat", L"unoccupied_cool");
    orders.setpoint = Number(L"nviSetpoint");
    orders.setpointOffset = Number(L"nviSetptOffset").value_or(0);
    orders.command = OccupancyOf(Number(L"nviOccCmd"));
    orders.sensor = OccupancyOf(Number(L"nviOccSensor"));
    for (const auto* name : {L"nciApplicMode", L"nviHeatCool", L"nviApplicMode"})
        if (const auto mode = EnumOf<HvacMode>(Number(name)); Names(mode)) orders.mode = mode;
    orders.holdOff = Number(L"nviEnergyHldOff", L"state") == 1.0;
    const auto fan = Number(L"nviFanSpeedCmd", L"state");
    if (fan == 0.0) orders.fan = 0.0;
    if (fan == 1.0) orders.fan = Number(L"nviFanSpeedCmd", L"value");
    orders.fanMaximum = Number(L"nciFanMax").value_or(orders.fanMaximum);
    orders.outdoor = Number(L"nviOutdoorTemp").value_or(orders.outdoor);
    orders.remoteSensor = Number(L"nviSpaceTemp");
    return orders;
}

std::optional<double> RoomPoints::Temperature() const {
    return Number(L"nvoSpaceTemp");
}

void RoomPoints::Report(const RoomReadings& readings) {
    ReportTemperature(readings.temperature);
    Put(L"nvoEffectSetpt", readings.setpoint);
    Put(L"nvoSetpoint", readings.setpoint);
    Put(L"nvoEffectOccup", static_cast<int>(readings.occupancy));
    Put(L"nvoHeatCool", static_cast<int>(readings.mode));
    PutSwitch(L"nvoFanSpeed", readings.fan);
    Put(L"nvoHeatPrimary", readings.heat);
    Put(L"nvoCoolPrimary", readings.cool);
    Put(L"nvoDischAirTemp", readings.discharge);
    Put(L"nvoSpaceRH", readings.humidity);
    Put(L"nvoCO2", readings.carbonDioxide);
    Put(L"nvoTerminalLoad", readings.load);
    if (readings.fanStarted) {
        const auto starts = Number(L"nvoFanStarts");
        if (starts) Put(L"nvoFanStarts", *starts + 1);
    }
    PutStatus(readings);
    PutAirBox(readings);
}

void RoomPoints::ReportTemperature(double celsius) {
    Put(L"nvoSpaceTemp", celsius);
    Put(L"nvoSpaceTempF", celsius);
}

void RoomPoints::ReportInputs(const std::array<bool, 4>& inputs) {
    DataPoint* const point = Find(L"nvoDigitInState");
    if (!point || !point->output || point->raw.empty()) return;
    point->raw[0] &= 0x0F;
    for (std::size_t i = 0; i < inputs.size(); ++i)
        if (inputs[i]) point->raw[0] |= static_cast<std::uint8_t>(0x80U >> i);
}

void RoomPoints::PutSwitch(std::wstring_view name, double percent) {
    Put(name, L"value", percent);
    Put(name, L"state", percent >= 1 ? 1 : 0);
}

void RoomPoints::PutStatus(const RoomReadings& readings) {
    constexpr std::wstring_view name = L"nvoUnitStatus";
    Put(name, L"mode", static_cast<int>(readings.mode));
    Put(name, L"heat_output_primary", readings.heat);
    Put(name, L"cool_output", readings.cool);
    Put(name, L"fan_output", readings.fan);
}

// A box on an air duct has a damper in place of the fan.
void RoomPoints::PutAirBox(const RoomReadings& readings) {
    const double least = Number(L"nciMinFlow").value_or(0);
    const double most = std::max(least, Number(L"nciMaxFlow").value_or(least));
    const double flow = least + (most - least) * readings.cool / 100;
    Put(L"nvoBoxFlow", flow);
    Put(L"nvoBoxFlowP", flow);
    Put(L"nvoBoxFlowF", flow);
    Put(L"nvoDamper", most > 0 ? 100 * flow / most : 0);
    Put(L"nvoReheat", readings.heat);
}

}  // namespace quorvex
