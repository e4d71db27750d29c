// A text box whose keys and pasted texts go through rules first.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "editors/edit_text.h"

namespace quillon {

// What an editor wants of its text box.
class FieldRules {
public:
    virtual KeyAnswer OnKey(std::wstring_view text, Selection selection, wchar_t key) = 0;
    // nullopt: nothing goes in.
    virtual std::optional<TextEdit> OnPaste(std::wstring_view text, Selection selection,
                                            std::wstring_view pasted) = 0;
    virtual void OnRestore() = 0;
    virtual void OnAccept() = 0;

protected:
    ~FieldRules() = default;
};

// Drives an edit control of a dialog. Esc and Enter are the control's, not the dialog's; cut, copy,
// paste, undo and select-all keys always work. Whatever changes the text ends in EN_CHANGE, in
// which messages may be handled: afterwards the control may be gone.
class FieldBox {
public:
    // The rules live as long as the control.
    void Attach(HWND control, FieldRules& rules);

    std::wstring Text() const;
    // Replaces the whole text; the caret goes to its start. Long texts are slow to lay out, so
    // nothing is drawn meanwhile.
    void SetText(const std::wstring& text);
    void SelectAll();
    void PutCaret(std::size_t place);

private:
    static LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR self) noexcept;
    std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnCharacter(wchar_t character, LPARAM lParam);
    void Paste();
    void Do(const TextEdit& edit);
    Selection Selected() const;

    HWND m_control = nullptr;
    FieldRules* m_rules = nullptr;
};

}  // namespace quillon
