#include "ui/focus_label.h"

#include <commctrl.h>

namespace quillon::ui {

namespace {

constexpr UINT_PTR kSubclass = 1;

void DrawFocus(HWND label) {
    RECT rect{};
    GetClientRect(label, &rect);
    const HDC context = GetDC(label);
    FrameRect(context, &rect, GetSysColorBrush(COLOR_HIGHLIGHT));
    ReleaseDC(label, context);
}

LRESULT CALLBACK OnLabel(HWND label, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                         DWORD_PTR) noexcept {
    const LRESULT result = DefSubclassProc(label, message, wParam, lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
            SetFocus(label);
            break;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_SETTEXT:
            InvalidateRect(label, nullptr, TRUE);
            break;
        case WM_PAINT:
            if (GetFocus() == label) DrawFocus(label);
            break;
        case WM_NCDESTROY:
            RemoveWindowSubclass(label, OnLabel, kSubclass);
            break;
        default:
            break;
    }
    return result;
}

}  // namespace

void MakeFocusable(HWND label) {
    SetWindowSubclass(label, OnLabel, kSubclass, 0);
}

}  // namespace quillon::ui
