// A window whose messages a test answers.
#pragma once

#include <windows.h>

#include <functional>

namespace quillon::test {

// Top-level, of this thread, not shown; destroyed at the end unless it already is.
class TestWindow {
public:
    using Handler = std::function<void(UINT message)>;

    // The handler gets the messages from WM_APP on.
    explicit TestWindow(Handler handler = {});
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow();

    HWND Get() const { return m_window; }
    void Post(UINT message = WM_APP) const { PostMessageW(m_window, message, 0, 0); }

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Handler m_handler;
    HWND m_window = nullptr;
};

}  // namespace quillon::test
