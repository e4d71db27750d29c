// The colours in which a window wants its controls drawn, asked for as the system asks.
#pragma once

#include <windows.h>

namespace quillon::test {

// Of the "Value" cell of a list's row; CLR_DEFAULT: the usual one.
COLORREF ValueColor(HWND list, int row);
bool IsRowGreyed(HWND list, int row);
bool IsLabelGreyed(HWND label);

}  // namespace quillon::test
