#include "window/polling.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace quillon {
namespace {

using Limits = std::numeric_limits<float>;

TEST(PollingInterval, RateOf25Is500Milliseconds) {
    EXPECT_EQ(PollingInterval(25), 500u);
}

TEST(PollingInterval, IsTwentyMillisecondsAUnit) {
    EXPECT_EQ(PollingInterval(1), 20u);
    EXPECT_EQ(PollingInterval(0.5f), 10u);
    EXPECT_EQ(PollingInterval(1000), 20000u);
}

TEST(PollingInterval, HalvesGoToTheEvenMillisecond) {
    EXPECT_EQ(PollingInterval(1.125f), 22u);
    EXPECT_EQ(PollingInterval(1.375f), 28u);
    EXPECT_EQ(PollingInterval(1.6f), 32u);
}

TEST(PollingInterval, NoTimerForARateThatIsNotPositive) {
    for (const float rate : {0.0f, -0.0f, -1.0f, -Limits::infinity(), Limits::lowest(),
                             Limits::quiet_NaN(), Limits::signaling_NaN()}) {
        EXPECT_EQ(PollingInterval(rate), 0u) << rate;
    }
}

TEST(PollingInterval, NoTimerForARateThatRoundsToNothing) {
    EXPECT_EQ(PollingInterval(0.025f), 1u);
    EXPECT_EQ(PollingInterval(0.0249f), 0u);
    EXPECT_EQ(PollingInterval(0.02f), 0u);
    EXPECT_EQ(PollingInterval(Limits::denorm_min()), 0u);
}

TEST(PollingInterval, RateBeyondATimerGetsTheLongestOne) {
    EXPECT_EQ(PollingInterval(107374176.0f), 2147483520u);
    EXPECT_EQ(PollingInterval(107374184.0f), kLongestInterval);
    EXPECT_EQ(PollingInterval(Limits::max()), kLongestInterval);
    EXPECT_EQ(PollingInterval(Limits::infinity()), kLongestInterval);
}

TEST(TimerIntervals, OfTheTimersThatNoTabTouches) {
    EXPECT_EQ(kAppStatusInterval, 1000u);
    EXPECT_EQ(kOutputInterval, 500u);
}

TEST(TimersOfTab, HardwareAndCalibrationReadTheInputs) {
    EXPECT_EQ(TimersOfTab(0), (TabTimers{.nvs = 0, .hw = 500}));
    EXPECT_EQ(TimersOfTab(5), (TabTimers{.nvs = 0, .hw = 300}));
}

TEST(TimersOfTab, TestAndTuneReadTheTestList) {
    EXPECT_EQ(TimersOfTab(2), (TabTimers{.nvs = 500, .hw = 0}));
    EXPECT_EQ(TimersOfTab(6), (TabTimers{.nvs = 500, .hw = 0}));
}

TEST(TimersOfTab, OtherTabsStartNone) {
    for (const int tab : {1, 3, 4, 7, 8, -1}) EXPECT_EQ(TimersOfTab(tab), TabTimers{}) << tab;
}

TEST(MainViewCycle, PollsLabelsZeroToFourAndNeverTheSixth) {
    MainViewCycle cycle;
    std::vector<int> polled;
    for (int tick = 0; tick < 12; ++tick) {
        polled.push_back(cycle.Index());
        cycle.Advance();
    }
    EXPECT_EQ(polled, (std::vector{0, 1, 2, 3, 4, 0, 1, 2, 3, 4, 0, 1}));
}

TEST(MainViewCycle, StaysAtItsLabelUntilAdvanced) {
    MainViewCycle cycle;
    cycle.Advance();
    EXPECT_EQ(cycle.Index(), 1);
    EXPECT_EQ(cycle.Index(), 1);
}

TEST(RestsWhileFrozen, WhenAbsentApplicationlessOrHardOffLine) {
    for (const std::int32_t state : {-1, 3, 6}) EXPECT_TRUE(RestsWhileFrozen(state)) << state;
}

TEST(RestsWhileFrozen, EveryOtherStateIsPolledOnToNoticeTheRecovery) {
    for (const std::int32_t state : {-2, 0, 1, 2, 4, 5, 7, 12, 140, 255}) {
        EXPECT_FALSE(RestsWhileFrozen(state)) << state;
    }
}

TEST(NextRow, CyclesOverAllRows) {
    std::vector<std::int32_t> rows;
    std::int32_t row = 0;
    for (int tick = 0; tick < 7; ++tick) rows.push_back(row = NextRow(row, 3));
    EXPECT_EQ(rows, (std::vector<std::int32_t>{1, 2, 3, 1, 2, 3, 1}));
}

TEST(NextRow, EmptyListFallsBackToOneEveryTick) {
    EXPECT_EQ(NextRow(0, 0), 1);
    EXPECT_EQ(NextRow(1, 0), 1);
}

TEST(NextRow, SingleRowIsReadEveryTick) {
    EXPECT_EQ(NextRow(0, 1), 1);
    EXPECT_EQ(NextRow(1, 1), 1);
}

TEST(NextRow, ListThatBecameShorterStartsOver) {
    EXPECT_EQ(NextRow(40, 3), 1);
}

TEST(NextRow, StaysASixteenBitNumber) {
    EXPECT_EQ(NextRow(32766, 40000), 32767);
    EXPECT_EQ(NextRow(32767, 40000), 1);
    EXPECT_EQ(NextRow(std::numeric_limits<std::int32_t>::max(), 40000), 1);
}

TEST(NextRow, NegativeNumbersStartOver) {
    EXPECT_EQ(NextRow(std::numeric_limits<std::int32_t>::min(), 3), 1);
    EXPECT_EQ(NextRow(1, -1), 1);
}

TEST(DigitalInputs, AreTheFourLowBits) {
    using Inputs = std::array<bool, 4>;
    EXPECT_EQ(DigitalInputs(0x01), (Inputs{true, false, false, false}));
    EXPECT_EQ(DigitalInputs(0x02), (Inputs{false, true, false, false}));
    EXPECT_EQ(DigitalInputs(0x04), (Inputs{false, false, true, false}));
    EXPECT_EQ(DigitalInputs(0x08), (Inputs{false, false, false, true}));
    EXPECT_EQ(DigitalInputs(0xF0), Inputs{});
    EXPECT_EQ(DigitalInputs(0xFF), (Inputs{true, true, true, true}));
}

TEST(OutputFlag, IsSetWhenBitSevenIsClear) {
    EXPECT_TRUE(OutputFlag(0x00));
    EXPECT_TRUE(OutputFlag(0x7F));
    EXPECT_FALSE(OutputFlag(0x80));
    EXPECT_FALSE(OutputFlag(0xFF));
}

}  // namespace
}  // namespace quillon
