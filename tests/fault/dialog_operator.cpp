#include "fault/dialog_operator.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "editors/editors_resource.h"
#include "model/frmCPDownload_ids.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

DialogOperator* g_operator = nullptr;

void Tell(HWND dialog, int id, int code) {
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, code)),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void TypeOver(HWND box, std::wstring_view text) {
    SendMessageW(box, EM_SETSEL, 0, -1);
    for (const wchar_t character : text) SendMessageW(box, WM_CHAR, character, 1);
}

void ChooseSecondEntry(HWND dialog, HWND entries) {
    SendMessageW(entries, CB_SETCURSEL, 1, 0);
    Tell(dialog, GetDlgCtrlID(entries), CBN_SELCHANGE);
}

void ChooseSecondOption(HWND buttons) {
    Tell(buttons, IDC_OPTBUTTON_FIRST + 1, BN_CLICKED);
}

void EditFirstField(HWND dialog, HWND fields) {
    const NMHDR click{fields, static_cast<UINT_PTR>(GetDlgCtrlID(fields)),
                      static_cast<UINT>(NM_DBLCLK)};
    SendMessageW(dialog, WM_NOTIFY, click.idFrom, reinterpret_cast<LPARAM>(&click));
}

void Work(HWND dialog) {
    if (const HWND box = GetDlgItem(dialog, IDC_TXTNEWCPVALUE)) TypeOver(box, L"5");
    if (const HWND entries = GetDlgItem(dialog, IDC_CBOENUM)) ChooseSecondEntry(dialog, entries);
    if (const HWND fields = GetDlgItem(dialog, IDC_LVWMAIN)) EditFirstField(dialog, fields);
    if (const HWND buttons = FindWindowExW(dialog, nullptr, L"#32770", nullptr))
        ChooseSecondOption(buttons);
    Tell(dialog, IDOK, BN_CLICKED);
    if (IsWindowVisible(dialog)) Tell(dialog, IDCANCEL, BN_CLICKED);
}

}  // namespace

DialogOperator::DialogOperator() {
    g_operator = this;
    m_timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
    EXPECT_NE(m_timer, 0u);
}

DialogOperator::~DialogOperator() {
    KillTimer(nullptr, m_timer);
    g_operator = nullptr;
}

void CALLBACK DialogOperator::OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    try {
        if (g_operator) g_operator->Look();
    } catch (...) {
        ADD_FAILURE() << "a dialog could not be worked";
    }
}

// A dialog that can be worked with: visible, not disabled by another on top of it, no message box.
bool DialogOperator::CanWork(HWND window) const {
    constexpr int kMarks[] = {IDC_LBLNAME, IDC_FRAME1, IDC_LSTCP_CHOICE};
    const auto has = [&](int id) { return GetDlgItem(window, id) != nullptr; };
    return IsWindowVisible(window) && IsWindowEnabled(window) && has(IDOK) &&
           std::ranges::any_of(kMarks, has) && !m_atWork.contains(window);
}

void DialogOperator::Look() {
    const HWND dialog = FirstThreadWindow([this](HWND window) { return CanWork(window); });
    if (!dialog) return;
    m_atWork.insert(dialog);
    Work(dialog);
    m_atWork.erase(dialog);
}

}  // namespace quillon::test
