#include "event_sink.h"

#include <utility>

#include "com/variant.h"

namespace quorvex::bench {
namespace {

constexpr std::wstring_view kEventNames[] = {
    L"ChangedName", L"ChangedStatus", L"ChangedApplication", L"NVCPChanged", L"ChangedXmitErr"};

class EventSink final : public com::Object<__CDevice> {
public:
    explicit EventSink(EventHandler handler) : m_handler(std::move(handler)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        if (event < 1 || event > static_cast<DISPID>(std::size(kEventNames))) {
            return DISP_E_MEMBERNOTFOUND;
        }
        try {
            std::wstring argument;
            if (params && params->cArgs > 0) argument = com::Variant(params->rgvarg[0]).AsText();
            m_handler(kEventNames[event - 1], argument);
            return S_OK;
        } catch (...) {
            return com::ResultOfCurrentException();
        }
    }

private:
    EventHandler m_handler;
};

}  // namespace

EventSubscription::EventSubscription(IUnknown* device, EventHandler handler) {
    const auto container = com::Ptr<IUnknown>(device).As<IConnectionPointContainer>();
    if (!container) return;
    com::Ptr<IConnectionPoint> point;
    if (FAILED(container->FindConnectionPoint(DIID___CDevice, point.Out()))) return;
    const auto sink = com::Make<EventSink>(std::move(handler));
    com::Check(point->Advise(sink.Get(), &m_cookie));
    m_point = std::move(point);
}

EventSubscription::EventSubscription(EventSubscription&& other) noexcept
    : m_point(std::move(other.m_point)), m_cookie(std::exchange(other.m_cookie, 0)) {}

EventSubscription& EventSubscription::operator=(EventSubscription&& other) noexcept {
    std::swap(m_point, other.m_point);
    std::swap(m_cookie, other.m_cookie);
    return *this;
}

EventSubscription::~EventSubscription() {
    if (m_point) m_point->Unadvise(m_cookie);
}

}  // namespace quorvex::bench
