#include "editors/ValueEditor.h"

#include <utility>

#include "com/error.h"
#include "plugin/field_text.h"
#include "ui/keyboard.h"
#include "ui/message_box.h"

namespace quillon {

namespace {

// Takes the Enter keys that a held key repeats away from an editor while it is up, before they
// become OK: the key that opens an editor would write its value again and again. Where no hook can
// be had they still do.
class HeldEnter {
public:
    explicit HeldEnter(const ui::Dialog& editor)
        : m_editor(editor),
          m_outer(std::exchange(s_innermost, this)),
          m_hook(SetWindowsHookExW(WH_MSGFILTER, OnMessage, nullptr, GetCurrentThreadId())) {}
    HeldEnter(const HeldEnter&) = delete;
    HeldEnter& operator=(const HeldEnter&) = delete;
    ~HeldEnter() {
        if (m_hook) UnhookWindowsHookEx(m_hook);
        s_innermost = m_outer;
    }

private:
    static bool IsInAnEditor(HWND window) {
        const HWND root = GetAncestor(window, GA_ROOT);
        const HeldEnter* one = s_innermost;
        while (one && one->m_editor.Handle() != root) one = one->m_outer;
        return root && one;
    }
    static LRESULT CALLBACK OnMessage(int code, WPARAM wParam, LPARAM lParam) noexcept {
        if (code == MSGF_DIALOGBOX) {
            const auto& key = *reinterpret_cast<const MSG*>(lParam);
            const bool held =
                key.message == WM_KEYDOWN && key.wParam == VK_RETURN && ui::IsRepeated(key.lParam);
            if (held && IsInAnEditor(key.hwnd)) return TRUE;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HeldEnter* s_innermost = nullptr;

    const ui::Dialog& m_editor;
    HeldEnter* m_outer;
    HHOOK m_hook;
};

}  // namespace

void ValueEditor::SetDataPoint(const DataPoint& point) {
    m_openingValue = point.Value();
    m_point = point;
}

void ValueEditor::Show(HWND owner) {
    try {
        Load();
        const HeldEnter held(*this);
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
        if (!m_working) End(IDCANCEL);
    } else {
        return false;
    }
    return true;
}

// Messages are handled inside a message box and inside a host's call, so the window may be gone
// after either, and OK may be pressed again: a second choice would mix with the first.
void ValueEditor::Accept() {
    if (m_working || !IsWindowEnabled(Item(IDOK))) return;
    try {
        const Work work(*this);
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
