#include "soak/value_editor.h"

#include "editors/editors_resource.h"
#include "support/plugin_window.h"

namespace quillon::test {

namespace {

std::wstring g_value;
bool g_answered = true;

bool IsEditor(HWND window) {
    return IsWindowVisible(window) && GetDlgItem(window, IDC_TXTNEWCPVALUE);
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
    const HWND editor = FirstThreadWindow(IsEditor);
    if (!editor) return;
    g_answered = true;
    SetWindowTextW(GetDlgItem(editor, IDC_TXTNEWCPVALUE), g_value.c_str());
    PressButton(GetDlgItem(editor, IDOK));
}

}  // namespace quillon::test
