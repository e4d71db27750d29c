#include "support/plugin_window.h"

#include <commctrl.h>

namespace quillon::test {

namespace {

BOOL CALLBACK AddWindow(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

}  // namespace

std::vector<HWND> ThreadWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), AddWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND FirstThreadWindow(const std::function<bool(HWND)>& fits) {
    for (const HWND window : ThreadWindows())
        if (fits(window)) return window;
    return nullptr;
}

std::vector<HWND> Dialogs() {
    std::vector<HWND> windows = ThreadWindows();
    std::erase_if(windows, [](HWND window) { return ClassOf(window) != L"#32770"; });
    return windows;
}

HWND ShownWindow(const wchar_t* caption) {
    return FirstThreadWindow(
        [&](HWND window) { return IsWindowVisible(window) && WindowText(window) == caption; });
}

bool IsSystemWindow(HWND window) {
    const std::wstring kind = ClassOf(window);
    return kind == L"IME" || kind.starts_with(L"MSCTFIME") || kind.starts_with(L"Ole") ||
           kind.starts_with(L"CicMarshal");
}

std::vector<HWND> ControlsBelow(HWND window) {
    std::vector<HWND> controls;
    EnumChildWindows(window, AddWindow, reinterpret_cast<LPARAM>(&controls));
    return controls;
}

HWND ControlOf(HWND window, int id) {
    for (const HWND control : ControlsBelow(window))
        if (GetDlgCtrlID(control) == id) return control;
    return nullptr;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[257];  // no class has a longer name
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 257))};
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring CellText(HWND list, int row, int column) {
    std::wstring text(20'001, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    text.resize(static_cast<std::size_t>(SendMessageW(
        list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))));
    return text;
}

std::wstring PanelText(HWND bar, int place) {
    const auto part = static_cast<WPARAM>(place);
    std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, part, 0)) + 1u, L'\0');
    text.resize(
        LOWORD(SendMessageW(bar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

void PressButton(HWND button) {
    SendMessageW(button, BM_CLICK, 0, 0);
}

}  // namespace quillon::test
