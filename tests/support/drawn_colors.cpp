#include "support/drawn_colors.h"

#include <commctrl.h>

namespace quillon::test {

COLORREF ValueColor(HWND list, int row) {
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)),
                     static_cast<UINT>(NM_CUSTOMDRAW)};
    draw.clrText = CLR_DEFAULT;
    draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
    const auto ask = [&](DWORD stage, int column) {
        draw.nmcd.dwDrawStage = stage;
        draw.iSubItem = column;
        return SendMessageW(GetParent(list), WM_NOTIFY, draw.nmcd.hdr.idFrom,
                            reinterpret_cast<LPARAM>(&draw));
    };
    if (ask(CDDS_PREPAINT, 0) != CDRF_NOTIFYITEMDRAW) return CLR_DEFAULT;
    if (ask(CDDS_ITEMPREPAINT, 0) != CDRF_NOTIFYSUBITEMDRAW) return CLR_DEFAULT;
    ask(CDDS_ITEMPREPAINT | CDDS_SUBITEM, 0);
    if (draw.clrText != CLR_DEFAULT) return CLR_INVALID;
    ask(CDDS_ITEMPREPAINT | CDDS_SUBITEM, 1);
    return draw.clrText;
}

bool IsRowGreyed(HWND list, int row) {
    return ValueColor(list, row) == GetSysColor(COLOR_GRAYTEXT);
}

bool IsLabelGreyed(HWND label) {
    const HDC context = GetDC(label);
    SetTextColor(context, RGB(1, 2, 3));
    SendMessageW(GetParent(label), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(label));
    const bool greyed = GetTextColor(context) == GetSysColor(COLOR_GRAYTEXT);
    ReleaseDC(label, context);
    return greyed;
}

}  // namespace quillon::test
