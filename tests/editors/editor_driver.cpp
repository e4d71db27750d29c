#include "editors/editor_driver.h"

#include <gtest/gtest.h>

#include <cstring>

#include "editors/editors_resource.h"
#include "support/plugin_window.h"

namespace quillon::test {

namespace {

EditorDriver* g_driver = nullptr;

// An editor that can be worked with: visible, and not disabled by a dialog on top of it.
bool IsEditor(HWND window) {
    return IsWindowVisible(window) && IsWindowEnabled(window) && GetDlgItem(window, IDC_LBLNAME);
}

}  // namespace

std::wstring Editor::Text(int id) const {
    return WindowText(Item(id));
}

std::wstring Editor::Text() const {
    return Text(IDC_TXTNEWCPVALUE);
}

Selection Editor::Selected() const {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageW(Item(IDC_TXTNEWCPVALUE), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    return {from, to};
}

void Editor::Select(std::size_t from, std::size_t to) const {
    SendMessageW(Item(IDC_TXTNEWCPVALUE), EM_SETSEL, from, static_cast<LPARAM>(to));
}

// As a modal dialog's own loop takes it from the queue, with the characters that a key makes.
void Editor::Send(UINT message, WPARAM key, LPARAM flags) const {
    const LPARAM scan =
        static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), 0)) << 16 | 1 | flags;
    ASSERT_TRUE(PostMessageW(GetFocus(), message, key, message == WM_CHAR ? 1 : scan));
    MSG taken{};
    while (IsUp() && PeekMessageW(&taken, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        if (IsDialogMessageW(m_dialog, &taken)) continue;
        TranslateMessage(&taken);
        DispatchMessageW(&taken);
    }
}

void Editor::Type(std::wstring_view characters) const {
    for (const wchar_t character : characters) Send(WM_CHAR, character);
}

EditorDriver::EditorDriver() {
    g_driver = this;
    m_timer = SetTimer(nullptr, 0, 1, OnTimer);
    EXPECT_NE(m_timer, 0u);
}

EditorDriver::~EditorDriver() {
    KillTimer(nullptr, m_timer);
    g_driver = nullptr;
    if (!m_waiting.empty()) ADD_FAILURE() << m_waiting.size() << " editors never came up";
}

void CALLBACK EditorDriver::OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    try {
        if (g_driver) g_driver->Look();
    } catch (...) {
        ADD_FAILURE() << "the steps for an editor failed";
    }
}

void EditorDriver::Look() {
    const HWND dialog = FirstThreadWindow(IsEditor);
    if (!dialog || !m_seen.insert(dialog).second) return;
    ++m_shown;
    if (m_waiting.empty()) {
        ADD_FAILURE() << "an editor that nobody expected";
    } else {
        const Steps steps = std::move(m_waiting.front());
        m_waiting.pop_front();
        steps(Editor(dialog));
    }
    m_seen.erase(dialog);
    if (!IsWindow(dialog) || !IsWindowVisible(dialog)) return;
    m_seen.insert(dialog);
    SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

void PutOnClipboard(std::wstring_view text) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    auto* characters = static_cast<wchar_t*>(GlobalLock(memory));
    std::memcpy(characters, text.data(), text.size() * sizeof(wchar_t));
    characters[text.size()] = L'\0';
    GlobalUnlock(memory);
    EXPECT_NE(SetClipboardData(CF_UNICODETEXT, memory), nullptr);
    CloseClipboard();
}

std::wstring TakeFromClipboard() {
    std::wstring text;
    if (!OpenClipboard(nullptr)) return text;
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
        text = static_cast<const wchar_t*>(GlobalLock(memory));
        GlobalUnlock(memory);
    }
    EmptyClipboard();
    CloseClipboard();
    return text;
}

}  // namespace quillon::test
