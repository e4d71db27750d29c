#include "window/pages.h"

#include <uxtheme.h>
#include <windowsx.h>

#include <algorithm>

#include "ui/focus_label.h"
#include "window/polling.h"
#include "window/resource.h"

namespace quillon {

namespace {

bool IsEditedLabel(int id) {
    return id >= IDC_LBLNV_FIRST && id < IDC_LBLNV_FIRST + MainViewCycle::kLabels;
}

}  // namespace

void Page::SetGreyed(int id, bool greyed) {
    const auto place = std::find(m_greyed.begin(), m_greyed.end(), id);
    if (greyed == (place != m_greyed.end())) return;
    if (greyed)
        m_greyed.push_back(id);
    else
        m_greyed.erase(place);
    InvalidateRect(Item(id), nullptr, TRUE);
}

bool Page::OnInit() {
    m_layout.Start(Handle());
    for (const Anchored& one : m_anchored) m_layout.Add(one.id, one.anchors);
    for (int label = 0; label < MainViewCycle::kLabels; ++label)
        if (const HWND control = Item(IDC_LBLNV_FIRST + label)) ui::MakeFocusable(control);
    return true;
}

std::optional<INT_PTR> Page::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            m_layout.Apply();
            return TRUE;
        case WM_CTLCOLORSTATIC: {
            const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
            if (std::find(m_greyed.begin(), m_greyed.end(), id) == m_greyed.end())
                return std::nullopt;
            const HDC context = reinterpret_cast<HDC>(wParam);
            SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
            SetBkMode(context, TRANSPARENT);
            return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
        }
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<const NMHDR*>(lParam), lParam);
        case WM_CONTEXTMENU: {
            const HWND control = reinterpret_cast<HWND>(wParam);
            if (!m_actions.listOf(control)) return std::nullopt;
            m_actions.listMenu(control, POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            return TRUE;
        }
        default:
            return Dialog::OnMessage(message, wParam, lParam);
    }
}

std::optional<INT_PTR> Page::OnNotify(const NMHDR& header, LPARAM lParam) {
    RowList* const list = m_actions.listOf(header.hwndFrom);
    if (!list) return std::nullopt;
    switch (header.code) {
        case NM_DBLCLK:
            m_actions.editRow(header.hwndFrom);
            return TRUE;
        case NM_CUSTOMDRAW:
            SetWindowLongPtrW(Handle(), DWLP_MSGRESULT,
                              list->CustomDraw(*reinterpret_cast<const NMLVCUSTOMDRAW*>(lParam)));
            return TRUE;
        default:
            return std::nullopt;
    }
}

bool Page::OnCommand(int id, int code, HWND control) {
    if (code == STN_DBLCLK && IsEditedLabel(id)) {
        m_actions.editLabel(id - IDC_LBLNV_FIRST);
        return true;
    }
    if ((code != BN_CLICKED && code != LBN_SELCHANGE) || !control) return false;
    m_actions.command(id, control);
    return true;
}

}  // namespace quillon
