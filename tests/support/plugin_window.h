// The windows of this thread: which there are, what they show, and their buttons.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace quillon::test {

// All that are no control of another, shown or not.
std::vector<HWND> ThreadWindows();
// The first of them that fits; null when none does.
HWND FirstThreadWindow(const std::function<bool(HWND)>& fits);
// Those of them that are dialogs, shown or not.
std::vector<HWND> Dialogs();
// A visible one with the caption; null when there is none.
HWND ShownWindow(const wchar_t* caption);
// Windows that the system makes for a thread, once, belong to nobody.
bool IsSystemWindow(HWND window);

// The controls on a window and on its pages.
std::vector<HWND> ControlsBelow(HWND window);
// The first of them with this number; null when there is none.
HWND ControlOf(HWND window, int id);

std::wstring ClassOf(HWND window);
std::wstring WindowText(HWND window);
// Of a list view; the first 20,000 characters. Empty when there is no such row.
std::wstring CellText(HWND list, int row, int column);
// Of a status bar.
std::wstring PanelText(HWND bar, int place);
// What a click on a button does.
void PressButton(HWND button);

}  // namespace quillon::test
