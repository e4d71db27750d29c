#include "support/plugin_window.h"

#include <utility>

namespace quillon::test {

namespace {

struct Search {
    int id = 0;
    HWND found = nullptr;
};

BOOL CALLBACK CompareId(HWND control, LPARAM argument) {
    auto& search = *reinterpret_cast<Search*>(argument);
    if (GetDlgCtrlID(control) != search.id) return TRUE;
    search.found = control;
    return FALSE;
}

struct CaptionSearch {
    const wchar_t* caption = nullptr;
    HWND found = nullptr;
};

BOOL CALLBACK CompareCaption(HWND window, LPARAM argument) {
    auto& search = *reinterpret_cast<CaptionSearch*>(argument);
    if (!IsWindowVisible(window) || TextOf(window) != search.caption) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

HWND ControlOf(HWND window, int id) {
    Search search{id, nullptr};
    EnumChildWindows(window, CompareId, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring TextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ChooseEntry(HWND window, int id) {
    SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, 0)), 0);
}

void PressButton(HWND button) {
    SendMessageW(button, BM_CLICK, 0, 0);
}

HWND ShownWindow(const wchar_t* caption) {
    CaptionSearch search{caption, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), CompareCaption, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace quillon::test
