#include "editors/frmCPModif3.h"

#include <new>

#include "editors/editors_resource.h"

namespace quillon {

frmCPModif3::frmCPModif3() : ValueEditor(IDD_CPMODIF3, kErrorInCpValue) {}

void frmCPModif3::Load() {
    m_name = Point().Name();
    m_enumeration.emplace(Point().SNVType().EnumDesc());
}

bool frmCPModif3::OnInit() {
    SetItemText(IDC_LBLNAME, m_name);
    FillEntries();
    if (const auto entry = m_enumeration->EntryOf(OpeningValue()))
        SendMessageW(Item(IDC_CBOENUM), CB_SETCURSEL, *entry, 0);
    return true;
}

// Entries keep their order, so an entry's place in the box is its place in the list.
void frmCPModif3::FillEntries() const {
    const HWND box = Item(IDC_CBOENUM);
    const std::vector<Option>& entries = m_enumeration->Entries();
    std::size_t characters = 0;
    for (const Option& entry : entries) characters += entry.label.size() + 1;
    SendMessageW(box, WM_SETREDRAW, FALSE, 0);
    const std::size_t bytes = characters * sizeof(wchar_t);
    SendMessageW(box, CB_INITSTORAGE, entries.size(), static_cast<LPARAM>(bytes));
    LRESULT place = 0;
    for (const Option& entry : entries) {
        const auto label = reinterpret_cast<LPARAM>(entry.label.c_str());
        if (SendMessageW(box, CB_ADDSTRING, 0, label) != place++) throw std::bad_alloc();
    }
    SendMessageW(box, WM_SETREDRAW, TRUE, 0);
}

std::optional<std::size_t> frmCPModif3::Shown() const {
    const LRESULT entry = SendMessageW(Item(IDC_CBOENUM), CB_GETCURSEL, 0, 0);
    if (entry == CB_ERR) return std::nullopt;
    return static_cast<std::size_t>(entry);
}

bool frmCPModif3::OnCommand(int id, int code, HWND control) {
    if (id != IDC_CBOENUM) return ValueEditor::OnCommand(id, code, control);
    if (code == CBN_SELCHANGE)
        if (const auto entry = Shown()) m_enumeration->Pick(*entry);
    return true;
}

std::optional<std::wstring> frmCPModif3::TextToWrite() {
    return m_enumeration->TextToWrite(Shown());
}

}  // namespace quillon
