#include "plugin/clock.h"

#include <windows.h>

namespace quillon {

namespace {

std::optional<Date>& DayOfTest() {
    static std::optional<Date> s_day;
    return s_day;
}

}  // namespace

Date Today() {
    if (DayOfTest()) return *DayOfTest();
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay};
}

void SetToday(const std::optional<Date>& date) {
    DayOfTest() = date;
}

}  // namespace quillon
