#include "device_windows.h"

#include <algorithm>
#include <vector>

#include "com/object.h"
#include "window_controls.h"
#include "window_owner.h"

namespace quorvex::bench {
namespace {

constexpr long kPollingRate = 25;

// A window of a device has a menu bar, which the splash has not.
std::vector<HWND> ShownDeviceWindows() {
    std::vector<HWND> windows = ShownWindows();
    std::erase_if(windows, [](HWND window) { return !GetMenu(window); });
    return windows;
}

com::Ptr<IDeviceEx> Extended(const Room& room) {
    auto extended = room.device.As<IDeviceEx>();
    if (!extended) throw Failure{L"the plug-in has no IDeviceEx"};
    return extended;
}

}  // namespace

DeviceWindows::~DeviceWindows() {
    CloseAll();
}

HWND DeviceWindows::Find(const Room& room) const {
    const auto found = m_windows.find(room.neuron);
    return found != m_windows.end() && IsWindow(found->second) ? found->second : nullptr;
}

HWND DeviceWindows::Open(const Room& room) {
    const auto before = ShownDeviceWindows();
    auto owner = com::Ptr<IDispatch>::Adopt(com::Make<WindowOwner>(nullptr).Detach());
    IDispatch* argument = owner.Get();
    long rate = kPollingRate;
    com::Check(Extended(room)->ShowFocus(&argument, &rate));
    if (const HWND open = Find(room)) return open;
    for (const HWND window : ShownDeviceWindows()) {
        if (std::find(before.begin(), before.end(), window) != before.end()) continue;
        m_windows[room.neuron] = window;
        return window;
    }
    throw Failure{room.name + L" shows no window"};
}

void DeviceWindows::Close(const Room& room) {
    const HWND window = Find(room);
    m_windows.erase(room.neuron);
    com::Check(Extended(room)->CloseFocus());
    if (IsWindow(window)) SendMessageW(window, WM_CLOSE, 0, 0);
}

void DeviceWindows::CloseAll() {
    for (const auto& [neuron, window] : std::exchange(m_windows, {}))
        if (IsWindow(window)) SendMessageW(window, WM_CLOSE, 0, 0);
    PumpMessages();
}

}  // namespace quorvex::bench
