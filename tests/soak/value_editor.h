// Types into the value editor that comes up, as soon as it is shown.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::test {

// What the next editor gets, ended by OK.
void TypeIntoNextEditor(const std::wstring& value);
// Whether an editor has been answered since.
bool EditorAnswered();
// For SetTimer.
void CALLBACK AnswerValueEditor(HWND window, UINT message, UINT_PTR timer, DWORD time);

}  // namespace quillon::test
