// Messages to the operator.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::ui {

// Title of a message that has none of its own.
inline constexpr const wchar_t* kDefaultTitle = L"Quillon";

// Shows a message box owned by the thread's active window and returns the button (IDOK, IDYES,
// ...), or 0 when it could not be shown. style: MB_ buttons and icon.
int ShowMessage(const std::wstring& text, UINT style, const wchar_t* title = kDefaultTitle);

}  // namespace quillon::ui
