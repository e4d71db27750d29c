#include "window/file_dialog.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/plugin_window.h"
#include "ui/file_dialog.h"

namespace quillon::test {
namespace {

constexpr int kFileName = 0x47C;
constexpr int kFileTypes = 0x470;

FileDialog* g_expected = nullptr;

HWND ShownDialog() {
    return FirstThreadWindow([](HWND window) { return GetDlgItem(window, kFileName) != nullptr; });
}

}  // namespace

FileDialog::FileDialog(std::wstring name, std::function<void()> before)
    : m_name(std::move(name)), m_before(std::move(before)) {
    g_expected = this;
    m_timer = SetTimer(nullptr, 0, 20, OnTimer);
}

FileDialog::~FileDialog() {
    KillTimer(nullptr, m_timer);
    g_expected = nullptr;
    EXPECT_TRUE(m_seen) << "no file dialog came up";
}

void CALLBACK FileDialog::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = ShownDialog();
    if (!dialog || !g_expected) return;
    KillTimer(nullptr, timer);
    g_expected->Answer(dialog);
}

void FileDialog::Answer(HWND dialog) {
    m_seen = true;
    m_title = WindowText(dialog);
    m_proposed = WindowText(GetDlgItem(dialog, kFileName));
    m_filter = WindowText(GetDlgItem(dialog, kFileTypes));
    if (m_before) m_before();
    if (!m_name.empty()) SetDlgItemTextW(dialog, kFileName, m_name.c_str());
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(m_name.empty() ? IDCANCEL : IDOK), 0);
}

NoFileDialog::NoFileDialog() : m_timer(SetTimer(nullptr, 0, 20, OnTimer)) {}

void CALLBACK NoFileDialog::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = ShownDialog();
    if (!dialog) return;
    KillTimer(nullptr, timer);
    ADD_FAILURE() << "a file dialog that nobody expected";
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

bool WarmUpFileDialogs(const std::wstring& file) {
    static bool s_opened = false;
    if (std::exchange(s_opened, true)) return false;
    for (const auto& name : {std::wstring(), file}) {
        const FileDialog dialog(name);
        ui::AskSaveFile(nullptr, L"first", {L"All", L"*.*"}, L"first", L"app");
    }
    return true;
}

}  // namespace quillon::test
