#include "ui/focus_label.h"

#include <commctrl.h>

namespace quillon::ui {

namespace {

constexpr UINT_PTR kSubclass = 1;

// Into the context that was given for the drawing; null: on the screen.
void DrawFocus(HWND label, HDC given) {
    RECT rect{};
    GetClientRect(label, &rect);
    const HDC context = given ? given : GetDC(label);
    FrameRect(context, &rect, GetSysColorBrush(COLOR_HIGHLIGHT));
    if (!given) ReleaseDC(label, context);
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
        case WM_PRINTCLIENT:
            if (GetFocus() == label) DrawFocus(label, reinterpret_cast<HDC>(wParam));
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
