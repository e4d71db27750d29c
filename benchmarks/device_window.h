// The plug-in's device window, opened and looked at as a host can: by its interfaces and messages.
#pragma once

#include <string>
#include <vector>

#include "session.h"

namespace quillon::benchmarks {

// Rows of the Test list (network variables 0, 1, ...) and of the Setup list (properties 0, 1, ...).
struct WindowRows {
    int variables = 0;
    int properties = 0;
};

// A settings file with these rows in place of the session's own, while this lives.
class WindowSettings {
public:
    WindowSettings(const Session& session, const WindowRows& rows);
    WindowSettings(const WindowSettings&) = delete;
    WindowSettings& operator=(const WindowSettings&) = delete;
    ~WindowSettings();

    const std::string& File() const { return m_file; }

private:
    std::string m_file;
    std::string m_before;
};

// Opens the device's window, whose timers may tick once a second and slower only. Throws when none
// comes up.
HWND OpenDeviceWindow(const Room& room);
// Closes every window of this thread that the plug-in shows.
void CloseDeviceWindows();
// A control on the window or one of its pages, by its identifier in window/resource.h. Throws when
// there is none.
HWND ControlOf(HWND window, int id);
// All calls of the host since the last Clear, whatever their member.
long AllCalls(const Session& session);

}  // namespace quillon::benchmarks
