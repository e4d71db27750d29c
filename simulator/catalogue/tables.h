// The parts that the catalogue is put together from; used by its own files only.
#pragma once

#include "catalogue.h"

namespace quorvex::tables {

// A whole number, big-endian; limits and invalid value are raw.
struct Number {
    std::size_t length = 2;
    bool isSigned = false;
    int multiplier = 1;
    int exponent = 0;
    int offset = 0;
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::optional<std::int64_t> invalid = std::nullopt;
    std::wstring_view units = {};
};

// Quantities that types and fields share.
inline constexpr std::wstring_view kDegrees = L"degrees Celsius";
inline constexpr std::wstring_view kLevel = L"% of full level";
inline constexpr Number kByte{.length = 1, .maximum = 255};
inline constexpr Number kWord{.maximum = 65535};
inline constexpr Number kLevelByte{
    .length = 1, .multiplier = 5, .exponent = -1, .maximum = 200, .units = kLevel};
inline constexpr Number kPercent{.isSigned = true,
                                 .multiplier = 5,
                                 .exponent = -3,
                                 .minimum = -32768,
                                 .maximum = 32766,
                                 .invalid = 32767,
                                 .units = kLevel};
inline constexpr Number kTemperature{.isSigned = true,
                                     .exponent = -2,
                                     .minimum = -27317,
                                     .maximum = 32766,
                                     .invalid = 32767,
                                     .units = kDegrees};
inline constexpr Number kFlow{.maximum = 65534, .invalid = 65535, .units = L"liters/second"};
inline constexpr Number kAngle{.isSigned = true,
                               .multiplier = 2,
                               .exponent = -2,
                               .minimum = -17999,
                               .maximum = 18000,
                               .invalid = 32767,
                               .units = L"degrees"};

constexpr Number UpTo(std::int64_t maximum, std::size_t length = 1) {
    return {.length = length, .maximum = maximum};
}

Type MakeNumber(std::wstring_view name, int index, const Number& number);
// One byte, unsigned where `members` has 255, which then is the invalid value; else signed, with -1
// as the invalid value where `members` has it.
Type MakeEnum(std::wstring_view name, int index, std::wstring_view members);

// "-1,HVAC_NUL;0,HVAC_AUTO;...": the members of one enumeration.
namespace members {
extern const std::wstring_view kAlarmType;
extern const std::wstring_view kConfigSource;
extern const std::wstring_view kDiscreteLevel;
extern const std::wstring_view kEmergency;
extern const std::wstring_view kHvacMode;
extern const std::wstring_view kHvacOverride;
extern const std::wstring_view kLearnMode;
extern const std::wstring_view kObjectRequest;
extern const std::wstring_view kOccupancy;
extern const std::wstring_view kPriority;
extern const std::wstring_view kScene;
extern const std::wstring_view kSetting;
}  // namespace members

void AppendScalars(std::vector<Type>& types);
void AppendEnumerations(std::vector<Type>& types);
void AppendStructures(std::vector<Type>& types);

}  // namespace quorvex::tables
