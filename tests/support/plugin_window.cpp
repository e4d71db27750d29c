#include "support/plugin_window.h"

namespace quillon::test {

namespace {

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

std::wstring TextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return text;
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
