#include "editors/frmCPModif1.h"

#include <cmath>
#include <limits>

#include "com/error.h"
#include "editors/editor_choice.h"
#include "editors/editors_resource.h"
#include "plugin/MMain.h"
#include "ui/message_box.h"

namespace quillon {

namespace {

std::optional<float> ReadByRegion(std::wstring_view text) {
    std::wstring copy(text);
    float number = 0;
    const HRESULT read = VarR4FromStr(copy.data(), LOCALE_USER_DEFAULT, 0, &number);
    if (read == DISP_E_OVERFLOW) {
        const float infinity = std::numeric_limits<float>::infinity();
        return TrimBlanks(text).starts_with(L'-') ? -infinity : infinity;
    }
    if (FAILED(read)) return std::nullopt;
    return number;
}

}  // namespace

frmCPModif1::frmCPModif1() : ValueEditor(IDD_CPMODIF1, kErrorInValue) {}

void frmCPModif1::Load() {
    const PointType& type = Point().SNVType();
    NumericField::Point point;
    point.isFloat = type.GenType() == kFloatType;
    const wchar_t separator = LocalDecimalSeparator().front();
    point.minimum = Point().MinOverride();
    point.maximum = Point().MaxOverride();
    m_name = Point().Name();
    m_units = type.Units();
    point.invalidValue = type.InvalidValue();
    if (!point.isFloat) point.bCoef = type.BCoef();
    m_field.emplace(std::move(point), separator, ReadByRegion);
}

bool frmCPModif1::OnInit() {
    m_box.Attach(Item(IDC_TXTNEWCPVALUE), *this);
    SetItemText(IDC_LBLNAME, m_name);
    SetItemText(IDC_LBLUNITS, L"[ " + m_units + L" ]");
    SetItemText(IDC_LBLMIN, m_field->MinimumShown());
    SetItemText(IDC_LBLMAX, m_field->MaximumShown());
    if (!m_field->HasInvalidValue())
        ShowWindow(Item(IDC_CHKINVALID), SW_HIDE);
    else if (m_field->IsInvalid(OpeningValue()))
        SetInvalid(true);
    m_box.SetText(m_field->Shown(OpeningValue()));
    if (!Invalid()) EnableOk(m_field->CanAccept(m_box.Text()));
    SetFocus(Item(Invalid() ? IDC_CHKINVALID : IDC_TXTNEWCPVALUE));
    m_box.SelectAll();
    return false;
}

bool frmCPModif1::OnCommand(int id, int code, HWND control) {
    if (id == IDC_TXTNEWCPVALUE && code == EN_CHANGE) {
        OnChanged();
        return true;
    }
    if (id == IDC_CHKINVALID && code == BN_CLICKED) {
        OnInvalidClicked();
        return true;
    }
    return ValueEditor::OnCommand(id, code, control);
}

bool frmCPModif1::Invalid() const {
    return IsDlgButtonChecked(Handle(), IDC_CHKINVALID) == BST_CHECKED;
}

void frmCPModif1::EnableOk(bool enabled) const {
    EnableWindow(Item(IDOK), enabled);
}

// A box that is checked by code tells nobody.
void frmCPModif1::SetInvalid(bool invalid) {
    CheckDlgButton(Handle(), IDC_CHKINVALID, invalid ? BST_CHECKED : BST_UNCHECKED);
    OnInvalidClicked();
}

void frmCPModif1::OnInvalidClicked() {
    if (Invalid()) {
        m_box.SetText(m_field->InvalidShown());
        EnableWindow(Item(IDC_TXTNEWCPVALUE), FALSE);
    } else {
        EnableWindow(Item(IDC_TXTNEWCPVALUE), TRUE);
        SetFocus(Item(IDC_TXTNEWCPVALUE));
        com::Quietly([&] { m_box.SetText(m_field->Shown(Point().Value())); });
        m_box.SelectAll();
    }
    EnableOk(true);
}

// The text is put in place of the limit after the message, in which the window may go.
void frmCPModif1::OnChanged() {
    const std::wstring text = m_box.Text();
    if (!Invalid() && m_field->ExceedsMaximum(text)) {
        const std::wstring limit = m_field->MaximumShown();
        if (IsWindowVisible(Handle())) ui::ShowMessage(kTooGreatText + limit, MB_OK);
        if (!Handle()) return;
        m_box.SetText(limit);
        m_box.PutCaret(0);
    }
    EnableOk(m_field->CanAccept(m_box.Text()));
}

KeyAnswer frmCPModif1::OnKey(std::wstring_view text, Selection selection, wchar_t key) {
    return OnNumberKey(m_field->Rules(), text, selection, key);
}

std::optional<TextEdit> frmCPModif1::OnPaste(std::wstring_view text, Selection selection,
                                             std::wstring_view pasted) {
    return PasteNumber(m_field->Rules(), text, selection, pasted);
}

void frmCPModif1::OnRestore() {
    com::Quietly([&] { m_box.SetText(m_field->Shown(Point().Value())); });
    m_box.PutCaret(m_box.Text().size());
}

std::optional<std::wstring> frmCPModif1::TextToWrite() {
    std::wstring text = m_field->TextToWrite(m_box.Text());
    const bool compared = !Invalid() || m_field->IsNumber(text);
    if (!compared || !m_field->BelowMinimum(text)) return text;
    RefuseTooSmall();
    return std::nullopt;
}

// The limit is a number to go on from, so the mark "Invalid" ends.
void frmCPModif1::RefuseTooSmall() {
    const std::wstring limit = m_field->MinimumShown();
    ui::ShowMessage(kTooSmallText + limit, MB_OK);
    if (!Handle()) return;
    CheckDlgButton(Handle(), IDC_CHKINVALID, BST_UNCHECKED);
    EnableWindow(Item(IDC_TXTNEWCPVALUE), TRUE);
    SetFocus(Item(IDC_TXTNEWCPVALUE));
    m_box.SetText(limit);
    m_box.SelectAll();
}

}  // namespace quillon
