#include "tables.h"

namespace quorvex::tables {
namespace {

struct NumberRow {
    std::wstring_view name;
    int index;
    Number number;
};

constexpr Number Unsigned16(int exponent, std::wstring_view units) {
    return {.exponent = exponent, .maximum = 65535, .units = units};
}

constexpr Number Signed16(int exponent, std::wstring_view units) {
    return {.isSigned = true,
            .exponent = exponent,
            .minimum = -32768,
            .maximum = 32767,
            .units = units};
}

// The largest raw number means invalid.
constexpr Number WithInvalid(Number number) {
    number.invalid = number.maximum;
    --number.maximum;
    return number;
}

constexpr NumberRow kElectricAndCounts[] = {
    {L"SNVT_amp", 1, Signed16(-1, L"Amperes")},
    {L"SNVT_amp_mil", 2, Signed16(-1, L"milliAmperes")},
    {L"SNVT_count", 8, Unsigned16(0, L"units")},
    {L"SNVT_count_inc", 9, Signed16(0, L"")},
    {L"SNVT_elec_kwh", 13, Unsigned16(0, L"kiloWatt-hours")},
    {L"SNVT_power", 27, Unsigned16(-1, L"Watts")},
    {L"SNVT_volt", 44, Signed16(-1, L"Volts")},
    {L"SNVT_volt_mil", 47, Signed16(-1, L"milliVolts")},
    {L"SNVT_freq_hz", 76, Unsigned16(-1, L"Hertz")},
    {L"SNVT_multiplier", 82, {.multiplier = 5, .exponent = -4, .maximum = 65535}},
    {L"SNVT_elec_kwh_l", 146,
     WithInvalid({.length = 4,
                  .isSigned = true,
                  .exponent = -1,
                  .minimum = -2147483648LL,
                  .maximum = 2147483647LL,
                  .units = L"kiloWatt-hours"})},
    {L"SNVT_count_32", 183, WithInvalid({.length = 4, .maximum = 4294967295LL, .units = L"units"})},
};

constexpr NumberRow kClimate[] = {
    {L"SNVT_flow", 15, kFlow},
    {L"SNVT_lev_cont", 21, kLevelByte},
    {L"SNVT_ppm", 29, Unsigned16(0, L"ppm")},
    {L"SNVT_speed_mil", 35, Unsigned16(-3, L"meters/second")},
    {L"SNVT_temp", 39, {.exponent = -1, .offset = -2740, .maximum = 65535, .units = kDegrees}},
    {L"SNVT_lux", 79, Unsigned16(0, L"lux")},
    {L"SNVT_lev_percent", 81, kPercent},
    {L"SNVT_angle_deg", 104, kAngle},
    {L"SNVT_temp_p", 105, kTemperature},
    {L"SNVT_time_sec", 107, WithInvalid(Unsigned16(-1, L"seconds"))},
    {L"SNVT_press_p", 113, WithInvalid(Signed16(0, L"Pascals"))},
    {L"SNVT_time_min", 123, Unsigned16(0, L"minutes")},
    {L"SNVT_time_hour", 124, Unsigned16(0, L"hours")},
    {L"SNVT_temp_ror", 131,
     WithInvalid({.isSigned = true,
                  .multiplier = 5,
                  .exponent = -1,
                  .minimum = -32768,
                  .maximum = 32767,
                  .units = L"degrees Celsius/minute"})},
    {L"SNVT_temp_diff_p", 147, WithInvalid(Signed16(-2, kDegrees))},
    {L"SNVT_abs_humid", 160, WithInvalid(Unsigned16(-2, L"gram/kilogram"))},
    {L"SNVT_flow_p", 161, WithInvalid(Unsigned16(-2, L"cubic meters/hour"))},
};

Type MakeFloat(std::wstring_view name, int index, std::wstring_view minimum,
               std::wstring_view units) {
    Type type;
    type.name = name;
    type.index = index;
    type.kind = Kind::Float;
    type.length = 4;
    type.units = units;
    type.minimum = minimum;
    type.invalidValue = L"NaN";
    return type;
}

Type MakeText(std::wstring_view name, int index, std::size_t length) {
    Type type;
    type.name = name;
    type.index = index;
    type.kind = Kind::Text;
    type.length = length;
    return type;
}

}  // namespace

void AppendScalars(std::vector<Type>& types) {
    for (const auto& row : kElectricAndCounts) {
        types.push_back(MakeNumber(row.name, row.index, row.number));
    }
    for (const auto& row : kClimate) types.push_back(MakeNumber(row.name, row.index, row.number));
    types.push_back(MakeFloat(L"SNVT_count_f", 51, L"0", L"units"));
    types.push_back(MakeFloat(L"SNVT_temp_f", 63, L"-273.17", kDegrees));
    types.push_back(MakeText(L"SNVT_str_asc", 36, 31));
}

}  // namespace quorvex::tables
