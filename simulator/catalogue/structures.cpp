#include "tables.h"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace quorvex::tables {
namespace {

// Puts a structure together field by field; each field begins where the one before it ends.
class StructureMaker {
public:
    StructureMaker(std::wstring_view name, int index) {
        m_type.name = name;
        m_type.index = index;
        m_type.kind = Kind::Struct;
    }

    StructureMaker& Add(std::wstring_view name, const Number& number) {
        return Append(name, MakeNumber(name, 0, number));
    }
    StructureMaker& Add(std::wstring_view name, std::wstring_view members) {
        return Append(name, MakeEnum(name, 0, members));
    }
    StructureMaker& AddRaw(std::wstring_view name, std::size_t length) {
        Type type;
        type.name = name;
        type.kind = Kind::User;
        type.length = length;
        return Append(name, std::move(type));
    }
    // One-bit fields, the first in the most significant bit; a byte that is not used up stays
    // reserved.
    StructureMaker& AddFlags(std::initializer_list<std::wstring_view> names) {
        unsigned bit = 0;
        for (const auto name : names) {
            m_type.fields.push_back({.name = name,
                                     .type = MakeNumber(name, 0, UpTo(1)),
                                     .offset = m_type.length + bit / 8,
                                     .bitOffset = bit % 8,
                                     .bits = 1});
            ++bit;
        }
        m_type.length += (bit + 7) / 8;
        return *this;
    }
    StructureMaker& Reserve(std::size_t length) {
        m_type.length += length;
        return *this;
    }
    StructureMaker& AddTimeOfDay() {
        return Add(L"hour", UpTo(23)).Add(L"minute", UpTo(59)).Add(L"second", UpTo(59));
    }
    Type Done() { return std::move(m_type); }

private:
    StructureMaker& Append(std::wstring_view name, Type type) {
        const std::size_t length = type.length;
        m_type.fields.push_back({.name = name, .type = std::move(type), .offset = m_type.length});
        m_type.length += length;
        return *this;
    }

    Type m_type;
};

constexpr Number kDays{.maximum = 65534, .invalid = 65535};
constexpr Number kMilliseconds = UpTo(999, 2);
constexpr Number kStateFlag{.length = 1, .maximum = 1, .invalid = 255};

Type State() {
    return StructureMaker(L"SNVT_state", 83)
        .AddFlags({L"bit0", L"bit1", L"bit2", L"bit3", L"bit4", L"bit5", L"bit6", L"bit7", L"bit8",
                   L"bit9", L"bit10", L"bit11", L"bit12", L"bit13", L"bit14", L"bit15"})
        .Done();
}

Type TimeStamp() {
    constexpr Number year{.isSigned = true, .maximum = 3000, .invalid = -1};
    return StructureMaker(L"SNVT_time_stamp", 84)
        .Add(L"year", year)
        .Add(L"month", UpTo(12))
        .Add(L"day", UpTo(31))
        .AddTimeOfDay()
        .Done();
}

Type ElapsedTime() {
    return StructureMaker(L"SNVT_elapsed_tm", 87)
        .Add(L"day", kDays)
        .AddTimeOfDay()
        .Add(L"millisecond", kMilliseconds)
        .Done();
}

Type Alarm() {
    return StructureMaker(L"SNVT_alarm", 88)
        .AddRaw(L"location", 6)
        .Add(L"object_id", kWord)
        .Add(L"alarm_type", members::kAlarmType)
        .Add(L"priority_level", members::kPriority)
        .Add(L"index_to_SNVT", kWord)
        .AddRaw(L"value", 4)
        .Add(L"year", UpTo(3000, 2))
        .Add(L"month", UpTo(12))
        .Add(L"day", UpTo(31))
        .AddTimeOfDay()
        .Add(L"millisecond", kMilliseconds)
        .AddRaw(L"alarm_limit", 4)
        .Done();
}

Type ObjectRequest() {
    return StructureMaker(L"SNVT_obj_request", 92)
        .Add(L"object_id", kWord)
        .Add(L"object_request", members::kObjectRequest)
        .Done();
}

Type ObjectStatus() {
    return StructureMaker(L"SNVT_obj_status", 93)
        .Add(L"object_id", kWord)
        .AddFlags({L"invalid_id",       L"invalid_request",       L"disabled",
                   L"out_of_limits",    L"open_circuit",          L"out_of_service",
                   L"mechanical_fault", L"feedback_failure",      L"over_range",
                   L"under_range",      L"electrical_fault",      L"unable_to_measure",
                   L"comm_failure",     L"fail_self_test",        L"self_test_in_progress",
                   L"locked_out",       L"manual_control",        L"in_alarm",
                   L"in_override",      L"report_mask",           L"programming_mode",
                   L"programming_fail", L"alarm_notify_disabled", L"reset_complete"})
        .Reserve(1)
        .Done();
}

Type Preset() {
    return StructureMaker(L"SNVT_preset", 94)
        .Add(L"learn", members::kLearnMode)
        .Add(L"selector", kWord)
        .AddRaw(L"value", 4)
        .Add(L"day", kDays)
        .AddTimeOfDay()
        .Add(L"millisecond", kMilliseconds)
        .Done();
}

Type Switch() {
    return StructureMaker(L"SNVT_switch", 95)
        .Add(L"value", kLevelByte)
        .Add(L"state", kStateFlag)
        .Done();
}

Type Setpoints() {
    return StructureMaker(L"SNVT_temp_setpt", 106)
        .Add(L"occupied_cool", kTemperature)
        .Add(L"standby_cool", kTemperature)
        .Add(L"unoccupied_cool", kTemperature)
        .Add(L"occupied_heat", kTemperature)
        .Add(L"standby_heat", kTemperature)
        .Add(L"unoccupied_heat", kTemperature)
        .Done();
}

Type HvacOverride() {
    return StructureMaker(L"SNVT_hvac_overid", 111)
        .Add(L"state", members::kHvacOverride)
        .Add(L"percent", kPercent)
        .Add(L"flow", kFlow)
        .Done();
}

Type HvacStatus() {
    return StructureMaker(L"SNVT_hvac_status", 112)
        .Add(L"mode", members::kHvacMode)
        .Add(L"heat_output_primary", kPercent)
        .Add(L"heat_output_secondary", kPercent)
        .Add(L"cool_output", kPercent)
        .Add(L"econ_output", kPercent)
        .Add(L"fan_output", kPercent)
        .Add(L"in_alarm", kByte)
        .Done();
}

Type Scene() {
    constexpr Number number{.length = 1, .minimum = 1, .maximum = 255};
    return StructureMaker(L"SNVT_scene", 115)
        .Add(L"function", members::kScene)
        .Add(L"scene_number", number)
        .Done();
}

Type Setting() {
    auto level = kLevelByte;
    level.invalid = 255;
    return StructureMaker(L"SNVT_setting", 117)
        .Add(L"function", members::kSetting)
        .Add(L"setting", level)
        .Add(L"rotation", kAngle)
        .Done();
}

Type OccupancyEvent() {
    return StructureMaker(L"SNVT_tod_event", 128)
        .Add(L"current_state", members::kOccupancy)
        .Add(L"next_state", members::kOccupancy)
        .Add(L"time_to_next_state", kWord)
        .Done();
}

}  // namespace

void AppendStructures(std::vector<Type>& types) {
    for (const auto make :
         {State, TimeStamp, ElapsedTime, Alarm, ObjectRequest, ObjectStatus, Preset, Switch,
          Setpoints, HvacOverride, HvacStatus, Scene, Setting, OccupancyEvent}) {
        types.push_back(make());
    }
}

}  // namespace quorvex::tables
