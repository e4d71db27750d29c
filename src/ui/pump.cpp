#include "ui/pump.h"

#include <windows.h>

namespace quillon::ui {

void PumpMessages() {
    MSG message;
    for (int handled = 0; handled < kMessagesAtOnce; ++handled) {
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return;
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace quillon::ui
