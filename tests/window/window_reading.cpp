#include "window/window_reading.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "window/list_rows.h"

namespace quillon::test {

void PrintTo(const ShownRow& row, std::ostream* out) {
    *out << testing::PrintToString(Lines{row.text, row.value, row.icon});
}

HWND PageItem(const frmVantor& window, int tab, int id) {
    return GetDlgItem(window.PageWindow(tab), id);
}

std::wstring PageText(const frmVantor& window, int tab, int id) {
    return WindowText(PageItem(window, tab, id));
}

Lines FixedTexts(const frmVantor& window, int tab) {
    Lines texts;
    for (HWND child = GetWindow(window.PageWindow(tab), GW_CHILD); child;
         child = GetWindow(child, GW_HWNDNEXT))
        if (static_cast<std::int16_t>(GetDlgCtrlID(child)) == -1)
            texts.push_back(WindowText(child));
    return texts;
}

namespace {

TCITEMW TabAt(HWND tabs, int place, wchar_t* text, int size) {
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = text;
    item.cchTextMax = size;
    TabCtrl_GetItem(tabs, place, &item);
    return item;
}

}  // namespace

Lines ShownTabs(const frmVantor& window) {
    const HWND tabs = window.Item(IDC_SSTAB1);
    Lines captions;
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place) {
        wchar_t text[64] = {};
        TabAt(tabs, place, text, 64);
        captions.emplace_back(text);
    }
    return captions;
}

std::vector<int> ShownTabNumbers(const frmVantor& window) {
    const HWND tabs = window.Item(IDC_SSTAB1);
    std::vector<int> numbers;
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place) {
        wchar_t text[64] = {};
        numbers.push_back(static_cast<int>(TabAt(tabs, place, text, 64).lParam));
    }
    return numbers;
}

Lines Headers(HWND list) {
    Lines headers;
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int place = 0; place < count; ++place) {
        wchar_t text[64] = {};
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = text;
        column.cchTextMax = 64;
        ListView_GetColumn(list, place, &column);
        headers.emplace_back(text);
    }
    return headers;
}

std::vector<ShownRow> Rows(HWND list) {
    std::vector<ShownRow> rows;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        ListView_GetItem(list, &item);
        const auto image = static_cast<std::size_t>(item.iImage);
        rows.push_back({CellText(list, row, 0), CellText(list, row, 1),
                        image < kImageKeys.size() ? std::wstring(kImageKeys[image]) : L"(none)"});
    }
    return rows;
}

Lines ListBoxEntries(HWND listBox) {
    Lines entries;
    const LRESULT count = SendMessageW(listBox, LB_GETCOUNT, 0, 0);
    for (LRESULT place = 0; place < count; ++place) {
        wchar_t text[256] = {};
        SendMessageW(listBox, LB_GETTEXT, static_cast<WPARAM>(place),
                     reinterpret_cast<LPARAM>(text));
        entries.emplace_back(text);
    }
    return entries;
}

std::wstring Panel(const frmVantor& window, int place) {
    return PanelText(window.Item(IDC_STATUSBAR1), place);
}

Lines MenuEntries(HMENU menu) {
    Lines entries;
    const int count = GetMenuItemCount(menu);
    for (int place = 0; place < count; ++place) {
        wchar_t text[64] = {};
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = 64;
        GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info);
        std::wstring entry = (info.fType & MFT_SEPARATOR) ? L"-" : text;
        if (info.fState & (MFS_GRAYED | MFS_DISABLED)) entry += L" (greyed)";
        entries.push_back(entry);
    }
    return entries;
}

namespace {

Lines g_contextMenu;

void CALLBACK ReadContextMenu(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    if (!menu) return;
    KillTimer(nullptr, timer);
    constexpr UINT kGetMenu = 0x01E1;
    g_contextMenu = MenuEntries(reinterpret_cast<HMENU>(SendMessageW(menu, kGetMenu, 0, 0)));
    EndMenu();
}

}  // namespace

Lines ContextMenu(HWND list) {
    g_contextMenu.clear();
    SetTimer(nullptr, 0, 10, ReadContextMenu);
    SendMessageW(GetParent(list), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list),
                 MAKELPARAM(-1, -1));
    return g_contextMenu;
}

HMENU ActionMenu(const frmVantor& window) {
    return GetSubMenu(GetMenu(window.Handle()), 1);
}

bool ActionMenuEnabled(const frmVantor& window) {
    return (GetMenuState(GetMenu(window.Handle()), 1, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED)) ==
           0;
}

void Choose(const frmVantor& window, int command) {
    SendMessageW(window.Handle(), WM_COMMAND, static_cast<WPARAM>(MAKELONG(command, 0)), 0);
}

void Press(const frmVantor& window, int tab, int button) {
    SendMessageW(PageItem(window, tab, button), BM_CLICK, 0, 0);
}

bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > milliseconds) return false;
        MSG message;
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        else
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return true;
}

}  // namespace quillon::test
