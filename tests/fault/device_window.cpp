#include "fault/device_window.h"

#include <commctrl.h>

#include "support/host_objects.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

// The first visible control of a class in a window or in one of its pages.
HWND Control(HWND window, std::wstring_view kind) {
    for (const HWND control : ControlsBelow(window))
        if (ClassOf(control) == kind && (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) &&
            (GetParent(control) == window || IsWindowVisible(GetParent(control))))
            return control;
    return nullptr;
}

}  // namespace

HWND FindDeviceWindow() {
    for (const HWND window : Dialogs())
        if (GetMenu(window)) return window;
    return nullptr;
}

void CalmDown(HWND window) {
    constexpr UINT_PTR kSplashTimer = 1;
    for (const HWND dialog : Dialogs())
        if (dialog != window) SendMessageW(dialog, WM_TIMER, kSplashTimer, 0);
    if (!window) return;
    for (UINT_PTR timer = 1; timer <= 5; ++timer) KillTimer(window, timer);
}

void PressKey(HWND window, WPARAM key) {
    PostMessageW(window, WM_KEYDOWN, key, 1);
    Poster::Drain();
}

void SelectTab(HWND window, std::wstring_view caption) {
    const HWND tabs = Control(window, WC_TABCONTROLW);
    const int count = TabCtrl_GetItemCount(tabs);
    for (int place = 0; place < count; ++place) {
        wchar_t text[64] = {};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(place),
                     reinterpret_cast<LPARAM>(&item));
        if (caption != item.pszText) continue;
        TabCtrl_SetCurSel(tabs, place);
        NMHDR change{tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)),
                     static_cast<UINT>(TCN_SELCHANGE)};
        SendMessageW(window, WM_NOTIFY, change.idFrom, reinterpret_cast<LPARAM>(&change));
        CalmDown(window);
        return;
    }
}

void ChooseCommand(HWND window, int command) {
    SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

bool OpenRow(HWND window, int list, std::wstring_view item) {
    const HWND control = ControlOf(window, list);
    for (int row = 0; row < ListView_GetItemCount(control); ++row) {
        if (CellText(control, row, 0) != item) continue;
        ListView_SetItemState(control, row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
        NMITEMACTIVATE click{};
        click.hdr = {control, static_cast<UINT_PTR>(list), static_cast<UINT>(NM_DBLCLK)};
        SendMessageW(GetParent(control), WM_NOTIFY, click.hdr.idFrom,
                     reinterpret_cast<LPARAM>(&click));
        return true;
    }
    return false;
}

void PrintFirstLabel(HWND window) {
    SelectTab(window, L"Label Print");
    const HWND models = ControlOf(window, IDC_NIMBRA_MODEL_LIST);
    if (SendMessageW(models, LB_SETCURSEL, 0, 0) == LB_ERR) return;
    SendMessageW(GetParent(models), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(IDC_NIMBRA_MODEL_LIST, LBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(models));
    PressButton(ControlOf(window, IDC_NIMBRA_PRINTBUTTON));
}

HWND TextBox(HWND window) {
    return Control(window, WC_EDITW);
}

void TickTimer(HWND window, Timer timer) {
    SendMessageW(window, WM_TIMER, static_cast<WPARAM>(timer), 0);
}

}  // namespace quillon::test
