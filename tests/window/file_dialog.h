<<<<<<< HEAD
// Answers the platform's file dialogs.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace quillon::test {

// Answers the next file dialog: with a name, or by Cancel when it is empty. `before` runs first. A
// dialog that never comes up fails the test. One at a time.
class FileDialog {
public:
    explicit FileDialog(std::wstring name, std::function<void()> before = {});
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;
    ~FileDialog();

=======
// Answers the platform's file dialogs as the operator does.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "ui/file_dialog.h"
#include "window/window_reading.h"

namespace quillon::test {

// Answers the next file dialog: with a name, or by Cancel when it is empty. `before` runs first.
// One at a time; a dialog that never comes fails the test.
class FileDialog {
public:
    explicit FileDialog(std::wstring name, std::function<void()> before = {})
        : m_name(std::move(name)), m_before(std::move(before)) {
        s_this = this;
        m_timer = SetTimer(nullptr, 0, 20, OnTimer);
    }
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;
    ~FileDialog() {
        KillTimer(nullptr, m_timer);
        s_this = nullptr;
        EXPECT_TRUE(m_seen) << "no file dialog came up";
    }
>>>>>>> main
    const std::wstring& Title() const { return m_title; }
    const std::wstring& Proposed() const { return m_proposed; }

private:
<<<<<<< HEAD
    static BOOL CALLBACK OnWindow(HWND window, LPARAM found);
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);
    void Answer(HWND dialog);

=======
    static constexpr int kFileName = 0x47C;

    static BOOL CALLBACK OnWindow(HWND window, LPARAM found) {
        if (!GetDlgItem(window, kFileName)) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), OnWindow, reinterpret_cast<LPARAM>(&dialog));
        if (!dialog || !s_this) return;
        KillTimer(nullptr, timer);
        s_this->Answer(dialog);
    }
    void Answer(HWND dialog) {
        m_seen = true;
        m_title = WindowText(dialog);
        m_proposed = WindowText(GetDlgItem(dialog, kFileName));
        if (m_before) m_before();
        if (!m_name.empty()) SetDlgItemTextW(dialog, kFileName, m_name.c_str());
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(m_name.empty() ? IDCANCEL : IDOK), 0);
    }

    static inline FileDialog* s_this = nullptr;
>>>>>>> main
    UINT_PTR m_timer = 0;
    std::wstring m_name;
    std::function<void()> m_before;
    std::wstring m_title;
    std::wstring m_proposed;
    bool m_seen = false;
};

<<<<<<< HEAD
// Makes what the system keeps after its first file dialogs, once; true when it did. The file is not
// written.
bool WarmUpFileDialogs(const std::wstring& file);
=======
// Opens a first one and a second one, so that what the system keeps for ever is made. True when
// this call did it.
inline bool WarmUpFileDialogs(const std::wstring& name) {
    static bool s_done = false;
    if (std::exchange(s_done, true)) return false;
    for (const auto& typed : {std::wstring(), name}) {
        const FileDialog dialog(typed);
        ui::AskSaveFile(nullptr, L"first", {L"All", L"*.*"}, L"first", L"app");
    }
    return true;
}
>>>>>>> main

}  // namespace quillon::test
