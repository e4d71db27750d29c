// Receives the plug-in's events for one device.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "com/object.h"
#include "output.h"
#include "quillon_h.h"

namespace quorvex::bench {

// The event's name and its argument as text (empty for an event without one).
using EventHandler = std::function<void(std::wstring_view event, const std::wstring& argument)>;

// Subscribes at construction, where the device has such events, and unsubscribes at destruction.
class EventSubscription {
public:
    EventSubscription() = default;
    EventSubscription(IUnknown* device, EventHandler handler);
    EventSubscription(EventSubscription&& other) noexcept;
    EventSubscription& operator=(EventSubscription&& other) noexcept;
    ~EventSubscription();

    bool IsActive() const { return static_cast<bool>(m_point); }

private:
    com::Ptr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

}  // namespace quorvex::bench
