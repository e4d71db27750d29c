#include "plugin/calendar.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillon {
namespace {

TEST(Calendar, FirstOfJanuaryIsWeek0AndAWeekEndsEverySevenDays) {
    EXPECT_EQ(WeekNumber({2026, 1, 1}), 0);
    EXPECT_EQ(WeekNumber({2026, 1, 2}), 1);
    EXPECT_EQ(WeekNumber({2026, 1, 8}), 1);
    EXPECT_EQ(WeekNumber({2026, 1, 9}), 2);
    EXPECT_EQ(WeekNumber({2026, 1, 15}), 2);
    EXPECT_EQ(WeekNumber({2026, 1, 16}), 3);
}

TEST(Calendar, TheYearsLastDaysAreWeek52) {
    EXPECT_EQ(WeekNumber({2025, 12, 31}), 52) << "day 364 of 365";
    EXPECT_EQ(WeekNumber({2024, 12, 30}), 52);
    EXPECT_EQ(WeekNumber({2024, 12, 31}), 52) << "day 365 would round up to 53";
}

TEST(Calendar, LeapDayCountsFromMarchOn) {
    // 59 days before 1 March, 60 in a leap year; week 9 begins on day 57.
    EXPECT_EQ(WeekNumber({2025, 2, 26}), 8);
    EXPECT_EQ(WeekNumber({2025, 3, 5}), 9);
    EXPECT_EQ(WeekNumber({2024, 3, 4}), 9);
    EXPECT_EQ(WeekNumber({2024, 3, 5}), 10);
    EXPECT_EQ(WeekNumber({2000, 3, 5}), 10) << "a century that is a leap year";
    EXPECT_EQ(WeekNumber({2100, 3, 5}), 9) << "a century that is none";
}

TEST(Calendar, WeeksNeverFallAndNeverPass52) {
    const int kLengths[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int days = 0;
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= kLengths[month - 1]; ++day, ++days) {
            const int expected = std::min((days + 6) / 7, 52);
            EXPECT_EQ(WeekNumber({2028, month, day}), expected) << month << "-" << day;
        }
}

TEST(Calendar, CodeIsYearAndWeekOfTwoDigitsEach) {
    EXPECT_EQ(YearAndWeek({2026, 1, 1}), L"2600");
    EXPECT_EQ(YearAndWeek({2026, 11, 21}), L"2647");
    EXPECT_EQ(YearAndWeek({2005, 1, 9}), L"0502");
    EXPECT_EQ(YearAndWeek({1999, 12, 31}), L"9952");
    EXPECT_EQ(YearAndWeek({2000, 2, 1}), L"0005");
}

TEST(Calendar, YearsWithoutTwoDigitsAreClamped) {
    EXPECT_EQ(YearAndWeek({2100, 1, 2}), L"9901");
}

}  // namespace
}  // namespace quillon
