// Common controls of version 6, whatever the host's own manifest says.
#pragma once

#include <windows.h>

namespace quillon::ui {

// While it lives, windows that this thread creates get the controls that our module's manifest
// (resource 2) asks for.
class ActivationScope {
public:
    ActivationScope();
    ActivationScope(const ActivationScope&) = delete;
    ActivationScope& operator=(const ActivationScope&) = delete;
    ~ActivationScope();

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

}  // namespace quillon::ui
