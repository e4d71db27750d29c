#include "editors/option_set.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

namespace quillon {

void PrintTo(const OptionValue& value, std::ostream* out) {
    *out << testing::PrintToString(value.level) << ' ' << testing::PrintToString(value.state);
}

namespace {

using Labels = std::vector<std::wstring>;
using Position = std::optional<std::size_t>;

Labels LabelsOf(const OptionSet& set) {
    Labels labels;
    for (const Option& option : set.Options()) labels.push_back(option.label);
    return labels;
}

std::vector<OptionValue> Written(const OptionSet& set) {
    std::vector<OptionValue> values;
    for (std::size_t i = 0; i < set.Options().size(); ++i) values.push_back(set.Encode(i));
    return values;
}

Position Pair(const OptionSet& set, const wchar_t* level, const wchar_t* state) {
    return set.PositionOf({level, state});
}

Position Code(const OptionSet& set, const wchar_t* code) {
    return set.PositionOf({code, L""});
}

// ---- codes

TEST(AppModeOptions, OffersAndWritesSixCodesWithGaps) {
    const OptionSet set = OptionSet::AppMode();
    EXPECT_EQ(set.Shape(), PointShape::kPlain);
    EXPECT_EQ(LabelsOf(set),
              (Labels{L"Auto", L"Heat", L"Cool", L"Off", L"Emerg_Heat", L"Fan_Only"}));
    EXPECT_EQ(Written(set),
              (std::vector<OptionValue>{
                  {L"0", L""}, {L"1", L""}, {L"3", L""}, {L"6", L""}, {L"8", L""}, {L"9", L""}}));
}

TEST(AppModeOptions, ValueIsTheCode) {
    const OptionSet set = OptionSet::AppMode();
    EXPECT_EQ(Code(set, L"0"), 0u);
    EXPECT_EQ(Code(set, L"3"), 2u);
    EXPECT_EQ(Code(set, L"9"), 5u);
    EXPECT_EQ(Code(set, L" 6 "), 3u);
}

TEST(AppModeOptions, CodesNotOfferedMatchNone) {
    const OptionSet set = OptionSet::AppMode();
    for (const wchar_t* code :
         {L"2", L"4", L"5", L"7", L"-1", L"10", L"", L" ", L"?", L"00", L"3.0", L"Heat", L"NaN"})
        EXPECT_EQ(Code(set, code), std::nullopt) << testing::PrintToString(code);
    EXPECT_EQ(set.PositionOf({std::wstring(100'000, L'3'), {}}), std::nullopt);
}

TEST(OccScheduleOptions, OffersAndWritesItsCodes) {
    const OptionSet set = OptionSet::OccSchedule();
    EXPECT_EQ(set.Shape(), PointShape::kPlainOrFirstField);
    EXPECT_EQ(LabelsOf(set), (Labels{L"Occupied", L"Unoccupied", L"StandBy", L"Invalid"}));
    EXPECT_EQ(set.Encode(3), (OptionValue{L"255", L""}));
    EXPECT_EQ(Code(set, L"255"), 3u);
    EXPECT_EQ(Code(set, L"2"), std::nullopt);
}

TEST(CodeOptions, FirstOfEqualCodesIsTheCurrentOne) {
    const OptionSet set = OptionSet::OfCodes(L"4,a;5,b;5,c;", PointShape::kPlain);
    EXPECT_EQ(Code(set, L"5"), 1u);
    EXPECT_EQ(set.Encode(2), (OptionValue{L"5", L""}));
}

TEST(CodeOptions, CodeThatIsNoNumberCountsAsZero) {
    const OptionSet set = OptionSet::OfCodes(L"x,a;-7,b;", PointShape::kPlain);
    EXPECT_EQ(Code(set, L"0"), 0u);
    EXPECT_EQ(Code(set, L"-7"), 1u);
}

TEST(CodeOptions, EmptyListOffersNothing) {
    const OptionSet set = OptionSet::OfCodes(L"", PointShape::kPlain);
    EXPECT_TRUE(set.Options().empty());
    EXPECT_EQ(Code(set, L"0"), std::nullopt);
}

TEST(CodeOptions, LongListIsOfferedInFull) {
    std::wstring list;
    for (int code = 0; code < 10'000; ++code) list += std::to_wstring(code) + L",x;";
    const OptionSet set = OptionSet::OfCodes(list, PointShape::kPlain);
    EXPECT_EQ(set.Options().size(), 10'000u);
    EXPECT_EQ(Code(set, L"9999"), 9'999u);
}

// ---- the fan

TEST(FanOptions, SpeedsChooseTheList) {
    const Labels kOne{L"Auto", L"Off", L"Low speed"};
    EXPECT_EQ(LabelsOf(OptionSet::Fan(2)),
              (Labels{L"Auto", L"Off", L"Low speed", L"Medium speed"}));
    EXPECT_EQ(LabelsOf(OptionSet::Fan(3)),
              (Labels{L"Auto", L"Off", L"Low speed", L"Medium speed", L"High speed"}));
    for (const std::int32_t speeds : {1, 0, -1, 4, 5, std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()})
        EXPECT_EQ(LabelsOf(OptionSet::Fan(speeds)), kOne) << speeds;
}

TEST(FanOptions, WritesLevelAndStateByPosition) {
    EXPECT_EQ(Written(OptionSet::Fan(3)),
              (std::vector<OptionValue>{
                  {L"1", L"255"}, {L"0", L"1"}, {L"30", L"1"}, {L"60", L"1"}, {L"90", L"1"}}));
}

TEST(FanOptions, ReadsLevelAndState) {
    const OptionSet set = OptionSet::Fan(3);
    EXPECT_EQ(set.Shape(), PointShape::kTwoFields);
    EXPECT_EQ(Pair(set, L"1", L"255"), 0u);
    EXPECT_EQ(Pair(set, L"0", L"255"), 0u) << "state 255 goes first";
    EXPECT_EQ(Pair(set, L"90", L"0"), 1u) << "state 0 goes before the level";
    EXPECT_EQ(Pair(set, L"0", L"1"), 1u);
    EXPECT_EQ(Pair(set, L"30", L"1"), 2u);
    EXPECT_EQ(Pair(set, L"60", L"1"), 3u);
    EXPECT_EQ(Pair(set, L"90", L"1"), 4u);
    EXPECT_EQ(Pair(set, L"90", L"-1"), 4u) << "every other state is a forced level";
}

TEST(FanOptions, NumbersHaveDecimalsWithEitherSeparator) {
    const OptionSet set = OptionSet::Fan(3);
    EXPECT_EQ(Pair(set, L"30.0", L"1"), 2u);
    EXPECT_EQ(Pair(set, L" 60,0 ", L"1.0"), 3u);
    EXPECT_EQ(Pair(set, L"0,5", L"1"), std::nullopt) << "not 0";
}

TEST(FanOptions, OtherLevelsMatchNone) {
    const OptionSet set = OptionSet::Fan(3);
    for (const wchar_t* level : {L"1", L"29.5", L"45", L"100", L"-30"})
        EXPECT_EQ(Pair(set, level, L"1"), std::nullopt) << testing::PrintToString(level);
}

TEST(FanOptions, TextsThatAreNoNumbersMatchNone) {
    const OptionSet set = OptionSet::Fan(3);
    EXPECT_EQ(Pair(set, L"?", L"?"), std::nullopt) << "a silent device is not one that is off";
    EXPECT_EQ(Pair(set, L"", L""), std::nullopt);
    EXPECT_EQ(Pair(set, L"30", L""), std::nullopt);
    EXPECT_EQ(Pair(set, L"", L"255"), std::nullopt);
    EXPECT_EQ(Pair(set, L"30%", L"1"), std::nullopt);
    EXPECT_EQ(Pair(set, L"30,0,0", L"1"), std::nullopt);
}

TEST(FanOptions, OneSpeedShowsAFasterFanAtItsHighest) {
    const OptionSet set = OptionSet::Fan(1);
    EXPECT_EQ(Pair(set, L"90", L"1"), 2u);
    EXPECT_EQ(Pair(set, L"60", L"1"), 2u);
    EXPECT_EQ(Pair(set, L"30", L"1"), 2u);
    EXPECT_EQ(Pair(OptionSet::Fan(2), L"90", L"1"), 3u);
}

TEST(FanOptions, NoSpeedsShowARunningFanOneAboveThem) {
    const OptionSet set = OptionSet::Fan(0);
    EXPECT_EQ(Pair(set, L"30", L"1"), 1u);
    EXPECT_EQ(Pair(set, L"90", L"1"), 1u);
    EXPECT_EQ(Pair(set, L"90", L"255"), 0u);
    EXPECT_EQ(Pair(OptionSet::Fan(-1), L"90", L"1"), 0u);
    EXPECT_EQ(Pair(OptionSet::Fan(-2), L"90", L"1"), std::nullopt);
}

TEST(FanOptions, FiveSpeedsOfferOneAndMatchNoFasterFan) {
    const OptionSet set = OptionSet::Fan(5);
    EXPECT_EQ(Pair(set, L"30", L"1"), 2u);
    EXPECT_EQ(Pair(set, L"60", L"1"), std::nullopt);
    EXPECT_EQ(Pair(set, L"90", L"1"), std::nullopt);
    EXPECT_EQ(Pair(OptionSet::Fan(std::numeric_limits<std::int32_t>::max()), L"90", L"1"),
              std::nullopt);
}

// ---- lighting and energy hold-off

TEST(LightingOptions, OffersWritesAndReads) {
    const OptionSet set = OptionSet::Lighting();
    EXPECT_EQ(LabelsOf(set), (Labels{L"Auto", L"Off", L"On"}));
    EXPECT_EQ(Written(set), (std::vector<OptionValue>{{L"1", L"255"}, {L"0", L"1"}, {L"1", L"1"}}));
    EXPECT_EQ(Pair(set, L"1", L"255"), 0u);
    EXPECT_EQ(Pair(set, L"50", L"0"), 1u);
    EXPECT_EQ(Pair(set, L"0.0", L"1"), 1u);
    EXPECT_EQ(Pair(set, L"1.0", L"1"), 2u);
    EXPECT_EQ(Pair(set, L"37.5", L"7"), 2u);
    EXPECT_EQ(Pair(set, L"?", L"?"), std::nullopt);
}

TEST(EnergyHoldOffOptions, OffersWritesAndReads) {
    const OptionSet set = OptionSet::EnergyHoldOff();
    EXPECT_EQ(LabelsOf(set), (Labels{L"Normal", L"Energy Hold Off"}));
    EXPECT_EQ(Written(set), (std::vector<OptionValue>{{L"0", L"1"}, {L"1", L"1"}}));
    EXPECT_EQ(Pair(set, L"1", L"255"), 0u);
    EXPECT_EQ(Pair(set, L"50", L"0"), 0u);
    EXPECT_EQ(Pair(set, L"0", L"1"), 0u);
    EXPECT_EQ(Pair(set, L"1.0", L"1"), 1u);
    EXPECT_EQ(Pair(set, L"x", L"1"), std::nullopt);
}

TEST(PairOptions, WhatIsWrittenIsReadAsTheSamePosition) {
    for (const OptionSet& set : {OptionSet::Fan(1), OptionSet::Fan(2), OptionSet::Fan(3),
                                 OptionSet::Lighting(), OptionSet::EnergyHoldOff()})
        for (std::size_t i = 0; i < set.Options().size(); ++i)
            EXPECT_EQ(set.PositionOf(set.Encode(i)), i);
}

}  // namespace
}  // namespace quillon
