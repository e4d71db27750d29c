// The windows that the plug-in shows for devices, as the bench has opened them.
#pragma once

#include <map>
#include <string>

#include "host.h"

namespace quorvex::bench {

class DeviceWindows {
public:
    explicit DeviceWindows(Host& host) : m_host(host) {}
    DeviceWindows(const DeviceWindows&) = delete;
    DeviceWindows& operator=(const DeviceWindows&) = delete;
    ~DeviceWindows();

    // Asks the device for its window, or for the one that is open. Throws Failure when it shows
    // none.
    HWND Open(const Room& room);
    // Ends the focus as the host does, which leaves the window, and closes the window as its
    // operator does.
    void Close(const Room& room);
    // Null when it is not open.
    HWND Find(const Room& room) const;
    void CloseAll();

private:
    Host& m_host;
    std::map<std::wstring, HWND> m_windows;  // by Neuron ID
};

}  // namespace quorvex::bench
