// The one clock of the plug-in.
#pragma once

#include <optional>

#include "plugin/calendar.h"

namespace quillon {

// Today where the machine stands, or what a test has set.
Date Today();

// For tests: from now on it is this day; nullopt: the machine's clock again.
void SetToday(const std::optional<Date>& date);

}  // namespace quillon
