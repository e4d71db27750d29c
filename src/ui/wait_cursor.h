// The pointer during a call that the operator has to wait for.
#pragma once

#include <windows.h>

namespace quillon::ui {

// Shows the wait cursor while it lives, then the one before.
class WaitCursor {
public:
    WaitCursor() : m_before(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { SetCursor(m_before); }

private:
    HCURSOR m_before;
};

}  // namespace quillon::ui
