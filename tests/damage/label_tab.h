// The label tab of a device window.
#pragma once

#include <windows.h>

namespace quillon::test {

// Chooses the first model and presses the button; nothing when the list is empty.
void PrintFirstLabel(HWND window);

}  // namespace quillon::test
