#include "window/staleness.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

// Passes silent intervals; the number of those that said the value became stale.
int PassSilent(Staleness& staleness, int intervals) {
    int becameStale = 0;
    for (int interval = 0; interval < intervals; ++interval) {
        if (staleness.Pass(true)) ++becameStale;
    }
    return becameStale;
}

TEST(Staleness, ValueIsFreshAtFirst) {
    EXPECT_FALSE(Staleness().Stale());
}

TEST(Staleness, ValueIsStaleAtTheFifteenthSilentInterval) {
    Staleness staleness;
    EXPECT_EQ(PassSilent(staleness, 14), 0);
    EXPECT_FALSE(staleness.Stale());
    EXPECT_TRUE(staleness.Pass(true));
    EXPECT_TRUE(staleness.Stale());
}

TEST(Staleness, BecomingStaleIsToldOnceHoweverLongTheSilence) {
    Staleness staleness;
    EXPECT_EQ(PassSilent(staleness, 100000), 1);
    EXPECT_TRUE(staleness.Stale());
}

TEST(Staleness, ReadingMakesTheValueFreshAndStartsOver) {
    Staleness staleness;
    PassSilent(staleness, 15);
    EXPECT_TRUE(staleness.Read());
    EXPECT_FALSE(staleness.Stale());
    EXPECT_EQ(PassSilent(staleness, 14), 0);
    EXPECT_EQ(PassSilent(staleness, 1), 1);
}

TEST(Staleness, ReadingAFreshValueChangesNothingToShow) {
    Staleness staleness;
    EXPECT_FALSE(staleness.Read());
    PassSilent(staleness, 14);
    EXPECT_FALSE(staleness.Read());
    PassSilent(staleness, 14);
    EXPECT_FALSE(staleness.Stale());
}

TEST(Staleness, WaitingForItsTurnWhileTheDeviceAnswersDoesNotAgeAValue) {
    Staleness staleness;
    for (int interval = 0; interval < 1000; ++interval) EXPECT_FALSE(staleness.Pass(false));
    EXPECT_FALSE(staleness.Stale());
}

TEST(Staleness, StaleValueStaysSoUntilItIsReadItself) {
    Staleness staleness;
    PassSilent(staleness, 15);
    EXPECT_FALSE(staleness.Pass(false));
    EXPECT_TRUE(staleness.Stale());
}

TEST(Staleness, SilencesWithoutAReadingBetweenThemAddUp) {
    Staleness staleness;
    PassSilent(staleness, 10);
    staleness.Pass(false);
    EXPECT_EQ(PassSilent(staleness, 5), 1);
}

TEST(Staleness, FailedReadingMakesAValueStaleAtOnce) {
    Staleness staleness;
    EXPECT_TRUE(staleness.Fail());
    EXPECT_TRUE(staleness.Stale());
    EXPECT_FALSE(staleness.Fail()) << "it already is";
    EXPECT_FALSE(staleness.Pass(true));
    EXPECT_TRUE(staleness.Read());
    EXPECT_FALSE(staleness.Stale());
}

}  // namespace
}  // namespace quillon
