// A static text that can have the focus.
#pragma once

#include <windows.h>

namespace quillon::ui {

// From now on a click gives the label the focus, and a frame shows that it has it. Tab reaches it
// by its style WS_TABSTOP, clicks by SS_NOTIFY.
void MakeFocusable(HWND label);

}  // namespace quillon::ui
