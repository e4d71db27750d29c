// Giving way to the window messages of this thread during a long loop.
#pragma once

namespace quillon::ui {

// Most messages that one call handles: a window that keeps posting to itself must not stop the loop
// that gave way.
inline constexpr int kMessagesAtOnce = 1000;

// Handles the messages that are pending. WM_QUIT is posted again for the host's own loop and ends
// the call. Anything can have happened when it returns: windows closed, objects let go of, members
// entered.
void PumpMessages();

}  // namespace quillon::ui
