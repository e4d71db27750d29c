// Production dates as labels and factory data count them.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

// A day of the calendar; month and day from 1.
struct Date {
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;

    bool operator==(const Date&) const = default;
};

// Days since 1 January divided by 7 and rounded up, at most 52: 0 on 1 January, 1 from 2 to 8
// January. Not the week that calendars print.
std::int32_t WeekNumber(const Date& date);

// "YYWW": the year without its century, then the week, two digits each. A year from 2100 on, or
// before 1900, has no two digits and is written as TwoDigits writes it.
std::wstring YearAndWeek(const Date& date);

}  // namespace quillon
