// Works the value editors as an operator does: by keys through the dialog's own handling, and by
// its buttons.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "editors/edit_text.h"

namespace quillon::test {

// The mark of a key message that a held key repeats.
inline constexpr LPARAM kRepeated = static_cast<LPARAM>(KF_REPEAT) << 16;

// A dialog that is up.
class Editor {
public:
    explicit Editor(HWND dialog) : m_dialog(dialog) {}

    HWND Window() const { return m_dialog; }
    HWND Item(int id) const { return GetDlgItem(m_dialog, id); }
    bool IsUp() const { return IsWindow(m_dialog) && IsWindowVisible(m_dialog); }
    std::wstring Text(int id) const;
    // The text box.
    std::wstring Text() const;
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    Selection Selected() const;
    void Select(std::size_t from, std::size_t to) const;

    // Characters, one key message each, to the control that has the focus.
    void Type(std::wstring_view characters) const;
    // A key by its virtual code.
    void Key(WPARAM key) const { Send(WM_KEYDOWN, key); }
    // The same as a key that is held down sends it again.
    void HeldKey(WPARAM key) const { Send(WM_KEYDOWN, key, kRepeated); }
    // A command, as its button or the dialog's own keys give it.
    void Command(int id) const { SendMessageW(m_dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    // Ctrl and a letter.
    void Control(wchar_t letter) const {
        Type(std::wstring(1, static_cast<wchar_t>(letter - L'A' + 1)));
    }
    void Click(int id) const { SendMessageW(Item(id), BM_CLICK, 0, 0); }
    void Ok() const { Click(IDOK); }
    void Cancel() const { Click(IDCANCEL); }

private:
    void Send(UINT message, WPARAM key, LPARAM flags = 0) const;

    HWND m_dialog;
};

using Steps = std::function<void(const Editor& editor)>;

// Runs the steps that are waiting, the first for the first editor that comes up, and so on; an
// editor that is left open is cancelled. One that nobody waits for fails the running test, and so
// do steps that no editor came up for. At most one at a time in a process.
class EditorDriver {
public:
    EditorDriver();
    EditorDriver(const EditorDriver&) = delete;
    ~EditorDriver();

    void Expect(Steps steps) { m_waiting.push_back(std::move(steps)); }
    int Waiting() const { return static_cast<int>(m_waiting.size()); }
    void Forget() { m_waiting.clear(); }
    int Shown() const { return m_shown; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
    void Look();

    UINT_PTR m_timer = 0;
    std::deque<Steps> m_waiting;
    std::set<HWND> m_seen;
    int m_shown = 0;
};

// The clipboard's text.
void PutOnClipboard(std::wstring_view text);
std::wstring TakeFromClipboard();

}  // namespace quillon::test
