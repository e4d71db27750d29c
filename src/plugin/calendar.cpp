#include "plugin/calendar.h"

#include <algorithm>

#include "plugin/hex_text.h"

namespace quillon {
namespace {

constexpr std::int32_t kDaysInWeek = 7;
constexpr std::int32_t kLastWeek = 52;

bool IsLeapYear(std::int32_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int32_t DaysSinceNewYear(const Date& date) {
    constexpr std::int32_t kDaysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    const std::int32_t month = std::clamp(date.month, 1, 12);
    const std::int32_t leapDay = month > 2 && IsLeapYear(date.year) ? 1 : 0;
    return kDaysBefore[month - 1] + leapDay + date.day - 1;
}

}  // namespace

std::int32_t WeekNumber(const Date& date) {
    const std::int32_t days = std::max(DaysSinceNewYear(date), 0);
    return std::min((days + kDaysInWeek - 1) / kDaysInWeek, kLastWeek);
}

std::wstring YearAndWeek(const Date& date) {
    std::int32_t year = date.year - (date.year >= 2000 ? 2000 : 1900);
    std::int32_t week = WeekNumber(date);
    return TwoDigits(year) + TwoDigits(week);
}

}  // namespace quillon
