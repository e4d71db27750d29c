#include "editors/ValueEditor.h"

#include "com/error.h"
#include "plugin/field_text.h"
#include "ui/message_box.h"

namespace quillon {

void ValueEditor::SetDataPoint(const DataPoint& point) {
    m_openingValue = point.Value();
    m_point = point;
}

void ValueEditor::Show(HWND owner) {
    try {
        Load();
        RunModal(m_dialog, owner);
    } catch (...) {
        Restore();
        throw;
    }
    Restore();
}

// The closing rule: a field that OK has not written goes back to what it was, where that is known.
void ValueEditor::Restore() noexcept {
    if (m_calledFramModif4 && m_openingValue != kUnread) {
        com::Quietly([&] { m_point.SetValue(m_openingValue); });
    }
    m_calledFramModif4 = false;
    m_point = DataPoint();
}

bool ValueEditor::OnCommand(int id, int, HWND) {
    if (id == IDOK) {
        Accept();
    } else if (id == IDCANCEL) {
        End(IDCANCEL);
    } else {
        return false;
    }
    return true;
}

// Messages are handled inside a message box and inside a host's call, so the window may be gone
// after either.
void ValueEditor::Accept() {
    if (!IsWindowEnabled(Item(IDOK))) return;
    try {
        const std::optional<std::wstring> text = TextToWrite();
        if (!text || !Handle()) return;
        Write(*text);
    } catch (...) {
        SetErrorInfo(0, nullptr);
        if (Handle()) ui::ShowMessage(m_failureText, MB_OK);
        return;
    }
    m_calledFramModif4 = false;
    End(IDOK);
}

}  // namespace quillon
