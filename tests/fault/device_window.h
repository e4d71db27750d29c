// The device window of the plug-in's DLL, handled from outside as the system and the operator do.
#pragma once

#include <windows.h>

#include <string_view>

namespace quillon::test {

// The numbers of the window's timers.
enum class Timer : UINT_PTR { kPolling = 1, kAppStatus, kNvs, kHw, kOutputs };

// The device window that is open; null when there is none.
HWND FindDeviceWindow();
// The splash window goes and the timers stand still: what comes is what the test sends.
void CalmDown(HWND window);

// What a press of the key does that reaches the window through the host's message loop.
void PressKey(HWND window, WPARAM key);
void SelectTab(HWND window, std::wstring_view caption);
// What choosing an entry of the menu does.
void ChooseCommand(HWND window, int command);
// What a double click on the row of a list does whose item reads so; false when there is none.
bool OpenRow(HWND window, int list, std::wstring_view item);
// Chooses the first model of the label tab and presses the button; nothing when there is none.
void PrintFirstLabel(HWND window);
// The text box of the page that is shown; null when it has none.
HWND TextBox(HWND window);
void TickTimer(HWND window, Timer timer);

}  // namespace quillon::test
