// What all device objects and windows of one process share.
#pragma once

#include <string>

namespace quillon {

struct ProcessState {
    // Full path of the per-program settings file. Empty until the first reader that knows a program
    // ID sets it; then it stays, also for devices of another program ID.
    std::wstring settingsPath;
    // Whether the host may offer application download; refreshed from the settings.
    bool applicationDownloadAvailable = true;
    // Set while the device polled last does not answer: device windows then rest.
    bool freeze = false;
};

// The one copy. User-interface thread only.
ProcessState& Process();

}  // namespace quillon
