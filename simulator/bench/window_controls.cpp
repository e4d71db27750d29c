#include "window_controls.h"

#include <commctrl.h>

#include <string>

#include "dialog_driver.h"

namespace quorvex::bench {
namespace {

using Windows = std::vector<HWND>;

BOOL CALLBACK OnWindow(HWND window, LPARAM windows) {
    if (IsWindowVisible(window)) reinterpret_cast<Windows*>(windows)->push_back(window);
    return TRUE;
}

}  // namespace

std::vector<HWND> ShownWindows() {
    Windows windows;
    EnumThreadWindows(GetCurrentThreadId(), OnWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND ShownControl(HWND window, std::wstring_view kind) {
    Windows controls;
    EnumChildWindows(window, OnWindow, reinterpret_cast<LPARAM>(&controls));
    for (const HWND control : controls)
        if (ClassOf(control) == kind) return control;
    throw Failure{L"the window shows no " + std::wstring(kind)};
}

void SelectTab(HWND window, std::wstring_view caption) {
    const HWND tabs = ShownControl(window, WC_TABCONTROLW);
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place) {
        wchar_t text[64] = {};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        TabCtrl_GetItem(tabs, place, &item);
        if (caption != item.pszText) continue;
        TabCtrl_SetCurSel(tabs, place);
        NMHDR header{tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)),
                     static_cast<UINT>(TCN_SELCHANGE)};
        SendMessageW(GetParent(tabs), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
        return;
    }
    throw Failure{L"the window shows no tab \"" + std::wstring(caption) + L"\""};
}

}  // namespace quorvex::bench
