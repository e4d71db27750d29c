// Windows of the plug-in's DLL: what they show, and their buttons.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::test {

std::wstring TextOf(HWND control);
// What a click on a button does.
void PressButton(HWND button);
// A visible window of this thread with the caption; null when there is none.
HWND ShownWindow(const wchar_t* caption);

}  // namespace quillon::test
