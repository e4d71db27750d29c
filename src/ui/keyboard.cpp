#include "ui/keyboard.h"

#include <algorithm>
#include <vector>

namespace quillon::ui {

namespace {

struct Registered {
    HWND window;
    KeyListener* listener;
};

struct Hook {
    HHOOK handle = nullptr;
    std::vector<Registered> windows;
};

Hook& TheHook() {
    static Hook hook;
    return hook;
}

// An open menu reads the keys itself, from the same queue.
bool InMenu() {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return GetGUIThreadInfo(GetCurrentThreadId(), &state) && (state.flags & GUI_INMENUMODE);
}

// True when the message was used up.
bool Handle(MSG& message) {
    if (InMenu()) return false;
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    const auto& windows = TheHook().windows;
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&](const Registered& one) { return one.window == root; });
    if (found == windows.end()) return false;
    if (found->listener && found->listener->OnKey(message)) return true;
    return IsDialogMessageW(root, &message) != FALSE;
}

LRESULT CALLBACK OnMessageTaken(int code, WPARAM wParam, LPARAM lParam) noexcept {
    auto* message = reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && message->message >= WM_KEYFIRST &&
        message->message <= WM_KEYLAST) {
        try {
            // What is used up must not reach the host's own loop.
            if (Handle(*message)) message->message = WM_NULL;
        } catch (...) {
            message->message = WM_NULL;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

KeyboardHandling::KeyboardHandling(HWND window, KeyListener* listener) : m_window(window) {
    Hook& hook = TheHook();
    hook.windows.push_back({window, listener});
    if (!hook.handle)
        hook.handle =
            SetWindowsHookExW(WH_GETMESSAGE, OnMessageTaken, nullptr, GetCurrentThreadId());
}

KeyboardHandling::~KeyboardHandling() {
    Hook& hook = TheHook();
    std::erase_if(hook.windows, [&](const Registered& one) { return one.window == m_window; });
    if (!hook.windows.empty() || !hook.handle) return;
    UnhookWindowsHookEx(hook.handle);
    hook.handle = nullptr;
}

}  // namespace quillon::ui
