#include "support/test_window.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

const wchar_t* const kClassName = L"QuillonTestWindow";

}  // namespace

TestWindow::TestWindow(Handler handler) : m_handler(std::move(handler)) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = OnMessage;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = kClassName;
    RegisterClassW(&kind);
    m_window = CreateWindowExW(0, kClassName, L"test", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                               nullptr, kind.hInstance, nullptr);
    EXPECT_NE(m_window, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

TestWindow::~TestWindow() {
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    if (IsWindow(m_window)) DestroyWindow(m_window);
}

LRESULT CALLBACK TestWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message >= WM_APP && self->m_handler) {
        // The handler may end the window's owner.
        const Handler handler = self->m_handler;
        try {
            handler(message);
        } catch (...) {
            ADD_FAILURE() << "a handler of the test threw";
        }
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace quillon::test
