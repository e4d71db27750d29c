#include "soak/value_editor.h"

#include "editors/editors_resource.h"
#include "support/plugin_window.h"

namespace quillon::test {

namespace {

std::wstring g_value;
bool g_answered = true;

BOOL CALLBACK FindEditor(HWND window, LPARAM found) {
    if (!IsWindowVisible(window) || !GetDlgItem(window, IDC_TXTNEWCPVALUE)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

}  // namespace

void TypeIntoNextEditor(const std::wstring& value) {
    g_value = value;
    g_answered = false;
}

bool EditorAnswered() {
    return g_answered;
}

void CALLBACK AnswerValueEditor(HWND, UINT, UINT_PTR, DWORD) {
    if (g_answered) return;
    HWND editor = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindEditor, reinterpret_cast<LPARAM>(&editor));
    if (!editor) return;
    g_answered = true;
    SetWindowTextW(GetDlgItem(editor, IDC_TXTNEWCPVALUE), g_value.c_str());
    PressButton(GetDlgItem(editor, IDOK));
}

}  // namespace quillon::test
