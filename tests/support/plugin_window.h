// A window of the plug-in's DLL, reached by the numbers of its controls and commands.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::test {

// A control of the window or of one of its pages, shown or not; null when there is none.
HWND ControlOf(HWND window, int id);
std::wstring TextOf(HWND control);
// What a click on an entry of the menu does.
void ChooseEntry(HWND window, int id);
// What a click on a button does.
void PressButton(HWND button);
// A visible window of this thread with the caption; null when there is none.
HWND ShownWindow(const wchar_t* caption);

}  // namespace quillon::test
