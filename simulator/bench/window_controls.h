// Controls of a device's window, found and worked as the operator does.
#pragma once

#include <string_view>
#include <vector>

#include "com/platform.h"

namespace quorvex::bench {

// The windows that this thread shows, the topmost first.
std::vector<HWND> ShownWindows();
// The first control of a class that a window shows; throws Failure when it shows none.
HWND ShownControl(HWND window, std::wstring_view kind);
// Throws Failure when the window shows no such tab.
void SelectTab(HWND window, std::wstring_view caption);

}  // namespace quorvex::bench
