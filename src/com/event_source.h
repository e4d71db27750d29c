// The event side of an object: one outgoing dispatch interface and its subscribers.
#pragma once

#include <span>
#include <vector>

#include "com/error.h"
#include "com/object.h"
#include "com/platform.h"
#include "com/variant.h"

namespace quillon::com {

// The subscribers of one source. Not an object of its own: its owner is.
class Subscribers {
public:
    // What Advise, Unadvise and EnumConnections of the connection point do.
    HRESULT Add(const GUID& events, IUnknown* subscriber, DWORD* cookie) noexcept;
    HRESULT Remove(DWORD cookie) noexcept;
    Ptr<IEnumConnections> Enumerate(IUnknown* keepAlive) const;

    // Tells every subscriber. A subscriber's failure stops nobody; one that lets go (or is let go
    // of) while the event is on its way is not called any more, one that joins is not called yet.
    // Arguments are in the interface's order, are turned round in their place and may be written to
    // by subscribers. Takes no memory: who is not told would go on with what was.
    void Raise(DISPID event, std::span<VARIANT> arguments) noexcept;

private:
    struct Subscriber {
        DWORD cookie = 0;
        Ptr<IDispatch> sink;
    };

    // The first of the subscribers behind a cookie; null when there is none.
    const Subscriber* After(DWORD cookie) const;

    std::vector<Subscriber> m_subscribers;  // by growing cookies
    DWORD m_lastCookie = 0;
};

// IConnectionPointContainer over one Subscribers; the owner passes itself as the container's
// identity.
Ptr<IConnectionPoint> MakeConnectionPoint(IConnectionPointContainer* container, const GUID& events,
                                          Subscribers& subscribers);
Ptr<IEnumConnectionPoints> MakeConnectionPointEnumerator(Ptr<IConnectionPoint> point);

// The face to derive from: an object with one source interface, whose coclass is described in the
// module's type library.
template <class Derived>
class EventSource : public IConnectionPointContainer {
public:
    using Interface = IConnectionPointContainer;

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override {
        if (!points) return E_POINTER;
        *points = nullptr;
        try {
            *points = MakeConnectionPointEnumerator(Point()).Detach();
            return S_OK;
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (!point) return E_POINTER;
        *point = nullptr;
        if (!IsEqualIID(iid, Derived::kEvents)) return CONNECT_E_NOCONNECTION;
        try {
            *point = Point().Detach();
            return S_OK;
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

protected:
    ~EventSource() = default;

    Subscribers m_subscribers;

private:
    Ptr<IConnectionPoint> Point() {
        return MakeConnectionPoint(this, Derived::kEvents, m_subscribers);
    }
};

}  // namespace quillon::com
