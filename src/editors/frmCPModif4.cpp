#include "editors/frmCPModif4.h"
//
#include <commctrl.h>

#include <new>

#include "com/error.h"
#include "com/late.h"
#include "editors/EditPoint.h"
#include "editors/editors_resource.h"
#include "host_members.h"
#include "plugin/field_text.h"

namespace quillon {

namespace {

constexpr int kFieldColumn = 0;
constexpr int kValueColumn = 1;

FieldRow ReadRow(const DataPoint& field) {
    FieldRow row;
    row.key = field.Key();
    row.name = field.Name();
    row.shown = field.FormattedValue();
    row.value = field.Value();
    return row;
}

void AddColumn(HWND list, int place, const wchar_t* header, int width) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(header);
    column.cx = width;
    column.iSubItem = place;
    ListView_InsertColumn(list, place, &column);
}

void SetCell(HWND list, int row, int column, const std::wstring& text) {
    ListView_SetItemText(list, row, column, const_cast<wchar_t*>(text.c_str()));
}

// Enter opens the row's editor instead of pressing OK.
LRESULT CALLBACK KeepEnter(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR) noexcept {
    const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(list, KeepEnter, id);
    if (message != WM_GETDLGCODE || !lParam) return result;
    const bool enter = reinterpret_cast<const MSG*>(lParam)->wParam == VK_RETURN;
    return enter ? result | DLGC_WANTMESSAGE : result;
}

bool OpensField(const NMHDR& header, LPARAM lParam) {
    if (header.code == NM_DBLCLK) return true;
    if (header.code != LVN_KEYDOWN) return false;
    const WORD key = reinterpret_cast<const NMLVKEYDOWN*>(lParam)->wVKey;
    return key == VK_RETURN || key == VK_F2;
}

}  // namespace

frmCPModif4::frmCPModif4() : ValueEditor(IDD_CPMODIF4, kErrorInCpValue) {}

void frmCPModif4::Load() {
    m_name = Point().Name();
    m_fields = Point().Fields();
    for (const DataPoint& field : DataPoint::PointsOf(m_fields.Get()))
        m_rows.push_back(ReadRow(field));
}

bool frmCPModif4::OnInit() {
    const HWND list = Item(IDC_LVWMAIN);
    SetItemText(IDC_LBLNAME, m_name);
    SetWindowSubclass(list, KeepEnter, 1, 0);
    ListView_SetExtendedListViewStyle(list,
                                      LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER);
    RECT client{};
    GetClientRect(list, &client);
    const int half = (client.right - GetSystemMetrics(SM_CXVSCROLL)) / 2;
    AddColumn(list, kFieldColumn, L"Field", half);
    AddColumn(list, kValueColumn, L"Value", half);
    FillRows();
    SetFocus(list);
    ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    return false;
}

void frmCPModif4::FillRows() const {
    const HWND list = Item(IDC_LVWMAIN);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    int place = 0;
    for (const FieldRow& row : m_rows) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = place;
        item.pszText = const_cast<wchar_t*>(row.name.c_str());
        // A row that is left out would shift those after it to the fields of others.
        if (ListView_InsertItem(list, &item) != place) throw std::bad_alloc();
        SetCell(list, place++, kValueColumn, row.shown);
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

std::optional<INT_PTR> frmCPModif4::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_NOTIFY) return ValueEditor::OnMessage(message, wParam, lParam);
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.idFrom != IDC_LVWMAIN || !OpensField(header, lParam)) return std::nullopt;
    EditField();
    return TRUE;
}

DataPoint frmCPModif4::FieldOf(const std::wstring& key) const {
    const com::Variant item = com::Get(m_fields.Get(), host::points::kItem, {com::Variant(key)});
    return DataPoint(item.AsObject());
}

// The field gets the row's value first, for the host may have changed it since; not one that could
// not be read. A field that is gone, and a host that fails, open nothing.
void frmCPModif4::EditField() {
    const int selected = ListView_GetNextItem(Item(IDC_LVWMAIN), -1, LVNI_SELECTED);
    if (selected < 0 || Working()) return;
    const auto place = static_cast<std::size_t>(selected);
    const Work work(*this);
    com::Quietly([&] {
        const DataPoint field = FieldOf(m_rows[place].key);
        if (m_rows[place].value != kUnread) field.SetValue(m_rows[place].value);
        if (EditStructureField(field, Handle())) RefreshRow(place, field);
    });
}

// A value that cannot be read back must not look like the field's value, nor be written as it by
// OK.
void frmCPModif4::RefreshRow(std::size_t place, const DataPoint& field) {
    FieldRow& row = m_rows[place];
    row.shown = kUnread;
    row.value = kUnread;
    com::Quietly([&] {
        const std::wstring shown = field.FormattedValue();
        row.value = field.Value();
        row.shown = shown;
    });
    if (Handle()) SetCell(Item(IDC_LVWMAIN), static_cast<int>(place), kValueColumn, row.shown);
}

std::optional<std::wstring> frmCPModif4::TextToWrite() {
    auto text = StructureText(m_rows);
    if (!text) throw com::Error(E_FAIL);
    return text;
}

}  // namespace quillon
