#include "editors/frmCPModif2.h"

#include "com/error.h"
#include "editors/editors_resource.h"
#include "editors/text_field.h"
#include "ui/message_box.h"

namespace quillon {

frmCPModif2::frmCPModif2() : ValueEditor(IDD_CPMODIF2, kErrorInCpValue) {}

void frmCPModif2::Load() {
    m_name = Point().Name();
}

bool frmCPModif2::OnInit() {
    m_box.Attach(Item(IDC_TXTNEWCPVALUE), *this);
    SetItemText(IDC_LBLNAME, m_name);
    const std::wstring allowed = Allowed(std::wstring(TrimBlanks(OpeningValue())));
    if (!Handle()) return false;
    m_box.SetText(allowed);
    SetFocus(Item(IDC_TXTNEWCPVALUE));
    m_box.SelectAll();
    return false;
}

bool frmCPModif2::OnCommand(int id, int code, HWND control) {
    if (id != IDC_TXTNEWCPVALUE || code != EN_CHANGE)
        return ValueEditor::OnCommand(id, code, control);
    OnChanged();
    return true;
}

void frmCPModif2::OnChanged() {
    const std::wstring text = m_box.Text();
    if (!IsTooLong(text)) return;
    const std::wstring allowed = Allowed(text);
    if (!Handle()) return;
    m_box.SetText(allowed);
    m_box.PutCaret(kLongestText);
}

// A value that is too long never gets into the box: very long ones take it too long to lay out. The
// window may go in the message.
std::wstring frmCPModif2::Allowed(const std::wstring& text) {
    if (!IsTooLong(text)) return text;
    ui::ShowMessage(kTooLongText, MB_OK | MB_ICONEXCLAMATION, kTooLongTitle);
    return Shortened(text);
}

KeyAnswer frmCPModif2::OnKey(std::wstring_view, Selection, wchar_t key) {
    return OnTextKey(key);
}

std::optional<TextEdit> frmCPModif2::OnPaste(std::wstring_view, Selection selection,
                                             std::wstring_view pasted) {
    std::wstring text = PastedText(pasted);
    if (text.empty()) return std::nullopt;
    const std::size_t caret = selection.from + text.size();
    return TextEdit{selection, std::move(text), caret};
}

void frmCPModif2::OnRestore() {
    com::Quietly([&] { m_box.SetText(Allowed(Point().Value())); });
    m_box.PutCaret(m_box.Text().size());
}

std::optional<std::wstring> frmCPModif2::TextToWrite() {
    return m_box.Text();
}

}  // namespace quillon
