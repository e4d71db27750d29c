// The device's values that the device window shows, against those that the device has.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "quorvex_h.h"

namespace quillon::test {

// Sends ticks of both polling timers until every polled value has been read, or has had the time
// to count as old.
void PollAll(HWND window);

// Each value that is shown as current, neither blank nor greyed, and is not what the device has:
// "nviSetpoint: 19.00 degrees Celsius". Empty when there is no window.
std::vector<std::wstring> OldValuesShown(HWND window, IDevice* host);

}  // namespace quillon::test
