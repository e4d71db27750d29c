#include "editors/option_set.h"

#include <algorithm>

#include "plugin/blanks.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::wstring_view kAppModes = L"0,Auto;1,Heat;3,Cool;6,Off;8,Emerg_Heat;9,Fan_Only;";
constexpr std::wstring_view kOccupancies = L"0,Occupied;1,Unoccupied;3,StandBy;255,Invalid;";
constexpr std::wstring_view kLightings = L"0,Auto;1,Off;2,On;";
constexpr std::wstring_view kHoldOffs = L"0,Normal;1,Energy Hold Off;";
constexpr std::wstring_view kOneSpeed = L"0,Auto;1,Off;2,Low speed;";
constexpr std::wstring_view kTwoSpeeds = L"0,Auto;1,Off;2,Low speed;3,Medium speed;";
constexpr std::wstring_view kThreeSpeeds = L"0,Auto;1,Off;2,Low speed;3,Medium speed;4,High speed;";

constexpr double kAutomaticState = 255;

std::optional<double> NumberOf(std::wstring text) {
    if (const std::size_t comma = text.find(L','); comma != std::wstring::npos) text[comma] = L'.';
    try {
        return StrictNumber(text);
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

std::optional<std::int32_t> FanPosition(double level) {
    if (level == 30) return 2;
    if (level == 60) return 3;
    if (level == 90) return 4;
    return std::nullopt;
}

std::optional<std::int32_t> LightingPosition(double) {
    return 2;
}

std::optional<std::int32_t> HoldOffPosition(double) {
    return 1;
}

}  // namespace

OptionSet OptionSet::OfCodes(std::wstring_view list, PointShape shape) {
    OptionSet set;
    set.m_options = ParseOptionList(list);
    set.m_shape = shape;
    return set;
}

OptionSet OptionSet::OfPairs(std::wstring_view list, std::span<const Pair> pairs,
                             ForcedPosition forced) {
    OptionSet set = OfCodes(list, PointShape::kTwoFields);
    set.m_pairs = pairs;
    set.m_forced = forced;
    return set;
}

OptionSet OptionSet::AppMode() {
    return OfCodes(kAppModes, PointShape::kPlain);
}

OptionSet OptionSet::OccSchedule() {
    return OfCodes(kOccupancies, PointShape::kPlainOrFirstField);
}

OptionSet OptionSet::Lighting() {
    static constexpr Pair kPairs[] = {{L"1", L"255"}, {L"0", L"1"}, {L"1", L"1"}};
    return OfPairs(kLightings, kPairs, LightingPosition);
}

OptionSet OptionSet::EnergyHoldOff() {
    static constexpr Pair kPairs[] = {{L"0", L"1"}, {L"1", L"1"}};
    OptionSet set = OfPairs(kHoldOffs, kPairs, HoldOffPosition);
    set.m_off = 0;
    return set;
}

OptionSet OptionSet::Fan(std::int32_t speeds) {
    static constexpr Pair kPairs[] = {
        {L"1", L"255"}, {L"0", L"1"}, {L"30", L"1"}, {L"60", L"1"}, {L"90", L"1"}};
    const std::wstring_view list = speeds == 2   ? kTwoSpeeds
                                   : speeds == 3 ? kThreeSpeeds
                                                 : kOneSpeed;
    OptionSet set = OfPairs(list, kPairs, FanPosition);
    // One more would be out of range for the largest number, which no position reaches anyway.
    set.m_highest = std::min<std::int32_t>(speeds, std::size(kPairs)) + 1;
    return set;
}

std::optional<std::int32_t> OptionSet::PairPosition(const OptionValue& value) const {
    const auto level = NumberOf(value.level);
    const auto state = NumberOf(value.state);
    if (!level || !state) return std::nullopt;
    if (*state == kAutomaticState) return m_automatic;
    if (*state == 0 || *level == 0) return m_off;
    return m_forced(*level);
}

std::optional<std::size_t> OptionSet::PositionOf(const OptionValue& value) const {
    if (m_pairs.empty()) {
        const std::wstring_view code = WithoutBlanks(value.level);
        const auto found =
            std::find_if(m_options.begin(), m_options.end(),
                         [&](const Option& option) { return DecimalText(option.code) == code; });
        if (found == m_options.end()) return std::nullopt;
        return static_cast<std::size_t>(found - m_options.begin());
    }
    auto position = PairPosition(value);
    if (!position) return std::nullopt;
    if (m_highest) position = std::min(*position, *m_highest);
    if (*position < 0 || static_cast<std::size_t>(*position) >= m_options.size())
        return std::nullopt;
    return static_cast<std::size_t>(*position);
}

OptionValue OptionSet::Encode(std::size_t position) const {
    if (m_pairs.empty()) return {DecimalText(m_options.at(position).code), {}};
    const Pair& pair = m_pairs[position];
    return {std::wstring(pair.level), std::wstring(pair.state)};
}

}  // namespace quillon
