#include "window/RowList.h"

#include <algorithm>
#include <cstring>

namespace quillon {

namespace {

constexpr int kItemColumn = 0;
constexpr int kValueColumn = 1;

void AddColumn(HWND control, int place, const wchar_t* header) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(header);
    column.iSubItem = place;
    ListView_InsertColumn(control, place, &column);
}

// A width that is set lays the whole list out again, changed or not.
void SetWidth(HWND control, int place, int width) {
    if (ListView_GetColumnWidth(control, place) != width)
        ListView_SetColumnWidth(control, place, width);
}

// The clipboard takes the memory over.
void PutOnClipboard(HWND owner, const std::wstring& text) {
    if (!OpenClipboard(owner)) return;
    EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    if (const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes)) {
        std::memcpy(GlobalLock(memory), text.c_str(), bytes);
        GlobalUnlock(memory);
        if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
    }
    CloseClipboard();
}

}  // namespace

void RowList::Attach(HWND control) {
    m_control = control;
    ListView_SetExtendedListViewStyle(control,
                                      LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER);
    AddColumn(control, kItemColumn, L"Item");
    AddColumn(control, kValueColumn, L"Value");
    FitColumns();
}

void RowList::SetImages(HIMAGELIST images) {
    ListView_SetImageList(m_control, images, LVSIL_SMALL);
}

void RowList::Clear() {
    ListView_DeleteAllItems(m_control);
    m_rows.clear();
    m_stale.clear();
}

void RowList::Append(std::vector<ListRow> rows) {
    SendMessageW(m_control, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCount(m_control, static_cast<int>(m_rows.size() + rows.size()));
    m_stale.resize(m_rows.size() + rows.size());
    for (ListRow& row : rows) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
        item.iItem = static_cast<int>(m_rows.size());
        item.pszText = row.text.data();
        item.iImage = IconIndex(row.icon);
        item.lParam = static_cast<LPARAM>(m_rows.size());
        ListView_InsertItem(m_control, &item);
        ListView_SetItemText(m_control, item.iItem, kValueColumn, row.value.data());
        m_rows.push_back(std::move(row));
    }
    SendMessageW(m_control, WM_SETREDRAW, TRUE, 0);
    FitColumns();
}

bool RowList::SetValue(std::size_t place, const std::wstring& value) {
    if (place >= m_rows.size() || m_rows[place].value == value) return false;
    m_rows[place].value = value;
    ListView_SetItemText(m_control, static_cast<int>(place), kValueColumn,
                         m_rows[place].value.data());
    return true;
}

void RowList::SetStale(std::size_t place, bool stale) {
    if (place >= m_stale.size() || (m_stale[place] != 0) == stale) return;
    m_stale[place] = stale ? 1 : 0;
    ListView_RedrawItems(m_control, static_cast<int>(place), static_cast<int>(place));
}

void RowList::SetAllStale() {
    for (std::size_t place = 0; place < m_stale.size(); ++place) SetStale(place, true);
}

std::optional<std::size_t> RowList::PlaceOf(std::wstring_view key) const {
    for (std::size_t place = 0; place < m_rows.size(); ++place)
        if (m_rows[place].key == key) return place;
    return std::nullopt;
}

std::optional<std::size_t> RowList::Selected() const {
    int place = ListView_GetNextItem(m_control, -1, LVNI_SELECTED | LVNI_FOCUSED);
    if (place < 0) place = ListView_GetNextItem(m_control, -1, LVNI_SELECTED);
    if (place < 0) return std::nullopt;
    return static_cast<std::size_t>(place);
}

std::vector<ListRow> RowList::SelectedRows() const {
    std::vector<ListRow> rows;
    for (int place = -1; (place = ListView_GetNextItem(m_control, place, LVNI_SELECTED)) >= 0;)
        rows.push_back(m_rows[static_cast<std::size_t>(place)]);
    return rows;
}

void RowList::CopySelected() const {
    const std::vector<ListRow> rows = SelectedRows();
    if (!rows.empty()) PutOnClipboard(m_control, RowsAsText(rows));
}

void RowList::SelectAll() const {
    ListView_SetItemState(m_control, -1, LVIS_SELECTED, LVIS_SELECTED);
}

void RowList::SelectNone() const {
    ListView_SetItemState(m_control, -1, 0, LVIS_SELECTED);
}

void RowList::FitColumns() const {
    RECT client{};
    GetClientRect(m_control, &client);
    const int width = client.right;
    SetWidth(m_control, kItemColumn, width * 11 / 20);
    SetWidth(m_control, kValueColumn, width - width * 11 / 20);
}

LRESULT RowList::CustomDraw(const NMLVCUSTOMDRAW& draw) const {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return std::ranges::find(m_stale, 1) == m_stale.end() ? CDRF_DODEFAULT
                                                                  : CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return draw.nmcd.dwItemSpec < m_stale.size() && m_stale[draw.nmcd.dwItemSpec] != 0
                       ? CDRF_NOTIFYSUBITEMDRAW
                       : CDRF_DODEFAULT;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            if (draw.iSubItem != kValueColumn) return CDRF_DODEFAULT;
            const_cast<NMLVCUSTOMDRAW&>(draw).clrText = GetSysColor(COLOR_GRAYTEXT);
            return CDRF_NEWFONT;
        default:
            return CDRF_DODEFAULT;
    }
}

}  // namespace quillon
