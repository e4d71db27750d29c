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

    const std::wstring& Title() const { return m_title; }
    const std::wstring& Proposed() const { return m_proposed; }
    // What the shown files are called.
    const std::wstring& Filter() const { return m_filter; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);
    void Answer(HWND dialog);

    UINT_PTR m_timer = 0;
    std::wstring m_name;
    std::function<void()> m_before;
    std::wstring m_title;
    std::wstring m_proposed;
    std::wstring m_filter;
    bool m_seen = false;
};

// Cancels a file dialog that comes up while this lives; that fails the test.
class NoFileDialog {
public:
    NoFileDialog();
    NoFileDialog(const NoFileDialog&) = delete;
    NoFileDialog& operator=(const NoFileDialog&) = delete;
    ~NoFileDialog() { KillTimer(nullptr, m_timer); }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);

    UINT_PTR m_timer = 0;
};

// Makes what the system keeps after its first file dialogs, once; true when it did. The file is not
// written.
bool WarmUpFileDialogs(const std::wstring& file);

}  // namespace quillon::test
