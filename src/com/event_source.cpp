#include "com/event_source.h"

#include <algorithm>

#include "com/enumerator.h"
#include "com/error.h"

namespace quillon::com {

namespace {

struct Connection {
    DWORD cookie;
    Ptr<IDispatch> sink;
    Ptr<IUnknown> keepAlive;
};

struct ConnectionTraits {
    using Value = Connection;
    using Item = CONNECTDATA;
    static void Give(const Connection& value, CONNECTDATA* item) {
        item->dwCookie = value.cookie;
        item->pUnk = Ptr<IDispatch>(value.sink).Detach();
    }
    static void Take(CONNECTDATA* item) { Ptr<IUnknown>::Adopt(item->pUnk).Reset(); }
};

struct PointTraits {
    using Value = Ptr<IConnectionPoint>;
    using Item = IConnectionPoint*;
    static void Give(const Value& value, Item* item) { *item = Value(value).Detach(); }
    static void Take(Item* item) { Value::Adopt(*item).Reset(); }
};

// Holds its container, in which the subscribers live.
class ConnectionPoint final : public Object<IConnectionPoint> {
public:
    ConnectionPoint(IConnectionPointContainer* container, const GUID& events,
                    Subscribers& subscribers)
        : m_container(container), m_events(events), m_subscribers(subscribers) {}

    STDMETHODIMP GetConnectionInterface(IID* iid) override {
        if (!iid) return E_POINTER;
        *iid = m_events;
        return S_OK;
    }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override {
        if (!container) return E_POINTER;
        *container = Ptr<IConnectionPointContainer>(m_container).Detach();
        return S_OK;
    }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
        return m_subscribers.Add(m_events, sink, cookie);
    }
    STDMETHODIMP Unadvise(DWORD cookie) override { return m_subscribers.Remove(cookie); }
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override {
        if (!connections) return E_POINTER;
        *connections = nullptr;
        try {
            *connections = m_subscribers.Enumerate(m_container.Get()).Detach();
            return S_OK;
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

private:
    Ptr<IConnectionPointContainer> m_container;
    GUID m_events;
    Subscribers& m_subscribers;
};

}  // namespace

HRESULT Subscribers::Add(const GUID& events, IUnknown* subscriber, DWORD* cookie) noexcept {
    if (!subscriber || !cookie) return E_POINTER;
    *cookie = 0;
    try {
        Ptr<IDispatch> sink;
        if (FAILED(subscriber->QueryInterface(events, sink.OutVoid())) &&
            FAILED(subscriber->QueryInterface(IID_IDispatch, sink.OutVoid())))
            return CONNECT_E_CANNOTCONNECT;
        m_subscribers.push_back({++m_lastCookie, std::move(sink)});
        *cookie = m_lastCookie;
        return S_OK;
    } catch (...) {
        return ResultOfCurrentException();
    }
}

HRESULT Subscribers::Remove(DWORD cookie) noexcept {
    const auto found = std::find_if(m_subscribers.begin(), m_subscribers.end(),
                                    [&](const Subscriber& one) { return one.cookie == cookie; });
    if (found == m_subscribers.end()) return CONNECT_E_NOCONNECTION;
    // The sink is released last: that may call back in here.
    const Subscriber removed = std::move(*found);
    m_subscribers.erase(found);
    return S_OK;
}

const Subscribers::Subscriber* Subscribers::After(DWORD cookie) const {
    const auto found = std::ranges::upper_bound(m_subscribers, cookie, {},
                                                [](const auto& one) { return one.cookie; });
    return found == m_subscribers.end() ? nullptr : &*found;
}

Ptr<IEnumConnections> Subscribers::Enumerate(IUnknown* keepAlive) const {
    std::vector<Connection> connections;
    for (const Subscriber& one : m_subscribers)
        connections.push_back({one.cookie, one.sink, keepAlive});
    return Make<Enumerator<IEnumConnections, ConnectionTraits>>(std::move(connections));
}

void Subscribers::Raise(DISPID event, std::span<VARIANT> arguments) noexcept {
    std::ranges::reverse(arguments);
    DISPPARAMS params{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    const DWORD last = m_lastCookie;
    DWORD told = 0;
    for (const Subscriber* next; (next = After(told)) && next->cookie <= last;) {
        told = next->cookie;
        // The subscriber may let go from inside.
        const Ptr<IDispatch> sink = next->sink;
        Variant ignored;
        EXCEPINFO exception{};
        sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &ignored,
                     &exception, nullptr);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
    }
}

Ptr<IConnectionPoint> MakeConnectionPoint(IConnectionPointContainer* container, const GUID& events,
                                          Subscribers& subscribers) {
    return Make<ConnectionPoint>(container, events, subscribers);
}

Ptr<IEnumConnectionPoints> MakeConnectionPointEnumerator(Ptr<IConnectionPoint> point) {
    std::vector<Ptr<IConnectionPoint>> points{std::move(point)};
    return Make<Enumerator<IEnumConnectionPoints, PointTraits>>(std::move(points));
}

}  // namespace quillon::com
