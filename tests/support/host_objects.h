// Objects that a test hands to the plug-in or to the simulated host: event sinks, handlers, posted
// work.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "com/object.h"
#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::test {

// An object reached through IDispatch::Invoke alone; the function gets the member and its
// arguments.
using OnInvoke = std::function<HRESULT(DISPID member, DISPPARAMS& arguments)>;
com::Ptr<IDispatch> MakeDispatch(OnInvoke onInvoke);

// An object whose default member runs the function; for ISimulator::Call.
com::Ptr<IDispatch> MakeHandler(std::function<void()> function);

// An event that a device object raised.
struct Event {
    DISPID id = 0;
    std::wstring argument;
    VARTYPE type = VT_EMPTY;  // of the argument; VT_EMPTY: there was none

    bool operator==(const Event&) const = default;
};

// Receives events from construction to destruction or Leave.
class Subscription {
public:
    Subscription(IUnknown* device, OnInvoke onEvent);
    // Collects what comes.
    explicit Subscription(IUnknown* device);
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { Leave(); }

    void Leave();
    const std::vector<Event>& Events() const { return m_events; }

private:
    com::Ptr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
    std::vector<Event> m_events;
};

Event EventOf(DISPID id, const DISPPARAMS& arguments);

// Runs functions from this thread's message queue: when the plug-in handles messages inside a loop,
// or when Drain is called.
class Poster {
public:
    Poster();
    Poster(const Poster&) = delete;
    Poster& operator=(const Poster&) = delete;
    ~Poster();

    void Post(std::function<void()> function);
    // How many posted functions have not run yet.
    int Waiting() const { return m_waiting; }
    // Forgets what has not run yet, so that nothing runs after what it refers to is gone.
    void Discard();
    static void Drain();

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
    int m_waiting = 0;
    int m_round = 0;  // posted work runs in its own round alone
};

}  // namespace quillon::test
