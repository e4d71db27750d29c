#include "editors/FieldBox.h"
//
#include <commctrl.h>

#include "ui/keyboard.h"

namespace quillon {

namespace {

// Characters by which Ctrl+letter reaches a text box.
constexpr wchar_t kControlA = 1;
constexpr wchar_t kControlC = 3;
constexpr wchar_t kControlV = 22;
constexpr wchar_t kControlX = 24;
constexpr wchar_t kControlZ = 26;

std::wstring ClipboardText(HWND owner) {
    if (!OpenClipboard(owner)) return {};
    std::wstring text;
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* characters = static_cast<const wchar_t*>(GlobalLock(memory))) {
            const std::size_t room = GlobalSize(memory) / sizeof(wchar_t);
            const std::wstring_view whole(characters, room);
            text = whole.substr(0, whole.find(L'\0'));
            GlobalUnlock(memory);
        }
    }
    CloseClipboard();
    return text;
}

bool IsOwnKey(LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (!message) return false;
    return message->wParam == VK_RETURN || message->wParam == VK_ESCAPE;
}

}  // namespace

void FieldBox::Attach(HWND control, FieldRules& rules) {
    m_control = control;
    m_rules = &rules;
    SendMessageW(control, EM_SETLIMITTEXT, 0, 0);
    SetWindowSubclass(control, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
}

std::wstring FieldBox::Text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(m_control)) + 1, L'\0');
    const int length = GetWindowTextW(m_control, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void FieldBox::SetText(const std::wstring& text) {
    SendMessageW(m_control, WM_SETREDRAW, FALSE, 0);
    SetWindowTextW(m_control, text.c_str());
    SendMessageW(m_control, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_control, nullptr, TRUE);
}

void FieldBox::SelectAll() {
    SendMessageW(m_control, EM_SETSEL, 0, -1);
}

void FieldBox::PutCaret(std::size_t place) {
    SendMessageW(m_control, EM_SETSEL, place, static_cast<LPARAM>(place));
    SendMessageW(m_control, EM_SCROLLCARET, 0, 0);
}

Selection FieldBox::Selected() const {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageW(m_control, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    return {from, to};
}

// By the control's own replacing, so that it can be undone. The caret stays where a change of the
// text by EN_CHANGE has put it.
void FieldBox::Do(const TextEdit& edit) {
    const std::wstring expected = Applied(Text(), edit);
    SendMessageW(m_control, EM_SETSEL, edit.range.from, static_cast<LPARAM>(edit.range.to));
    SendMessageW(m_control, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(edit.text.c_str()));
    if (IsWindow(m_control) && Text() == expected) PutCaret(edit.caret);
}

void FieldBox::Paste() {
    const std::wstring pasted = ClipboardText(m_control);
    if (const auto edit = m_rules->OnPaste(Text(), Selected(), pasted)) Do(*edit);
}

std::optional<LRESULT> FieldBox::OnCharacter(wchar_t character, LPARAM lParam) {
    switch (character) {
        case kControlA:
            SelectAll();
            return 0;
        case kControlC:
            return SendMessageW(m_control, WM_COPY, 0, 0);
        case kControlV:
            return SendMessageW(m_control, WM_PASTE, 0, 0);
        case kControlX:
            return SendMessageW(m_control, WM_CUT, 0, 0);
        case kControlZ:
            return SendMessageW(m_control, WM_UNDO, 0, 0);
        default:
            break;
    }
    const KeyAnswer answer = m_rules->OnKey(Text(), Selected(), character);
    switch (answer.act) {
        case KeyAct::kPass:
            return DefSubclassProc(m_control, WM_CHAR, answer.key, lParam);
        case KeyAct::kEdit:
            Do(answer.edit);
            return 0;
        case KeyAct::kRestore:
            m_rules->OnRestore();
            return 0;
        case KeyAct::kAccept:
            // A loop that is no dialog's hands over the keys that a held one repeats.
            if (!ui::IsRepeated(lParam)) m_rules->OnAccept();
            return 0;
        case KeyAct::kDrop:
            break;
    }
    return 0;
}

std::optional<LRESULT> FieldBox::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE: {
            const LRESULT code = DefSubclassProc(m_control, message, wParam, lParam);
            return IsOwnKey(lParam) ? code | DLGC_WANTMESSAGE : code;
        }
        case WM_CHAR:
            return OnCharacter(static_cast<wchar_t>(wParam), lParam);
        case WM_PASTE:
            Paste();
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT CALLBACK FieldBox::Procedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR self) noexcept {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(control, Procedure, id);
    try {
        if (const auto result = reinterpret_cast<FieldBox*>(self)->Handle(message, wParam, lParam))
            return *result;
    } catch (...) {
        return 0;
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

}  // namespace quillon
