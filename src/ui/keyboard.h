// Keyboard handling of modeless windows: the host's message loop does not know them.
#pragma once

#include <windows.h>

namespace quillon::ui {

// Whether a key message, by its lParam, is repeated because the key is held down.
inline bool IsRepeated(LPARAM key) {
    return (HIWORD(key) & KF_REPEAT) != 0;
}

// A window that wants keys before its dialog handling sees them.
class KeyListener {
public:
    // True: the key is used up. Only key messages for the window or its descendants are shown.
    virtual bool OnKey(const MSG& message) = 0;

protected:
    ~KeyListener() = default;
};

// From construction to destruction the top-level window gets dialog keyboard handling (Tab, arrows,
// access keys). A thread message hook stands while there is at least one; user-interface thread
// only.
class KeyboardHandling {
public:
    KeyboardHandling(HWND window, KeyListener* listener);
    KeyboardHandling(const KeyboardHandling&) = delete;
    KeyboardHandling& operator=(const KeyboardHandling&) = delete;
    ~KeyboardHandling();

private:
    HWND m_window;
};

}  // namespace quillon::ui
