#include "window/DeviceEvents.h"

#include "com/error.h"
#include "com/text.h"
#include "quillon_h.h"

namespace quillon {

DeviceEvents::DeviceEvents(IUnknown* source, Handler handler)
    : m_handler(std::make_shared<const Handler>(std::move(handler))) {
    const auto container = com::Ptr<IUnknown>(source).As<IConnectionPointContainer>();
    if (!container) throw com::Error(CONNECT_E_NOCONNECTION);
    com::Check(container->FindConnectionPoint(DIID___CDevice, m_point.Out()));
    com::Check(m_point->Advise(this, &m_cookie));
}

void DeviceEvents::Stop() {
    m_handler = nullptr;
    if (m_point) m_point->Unadvise(m_cookie);
    m_point.Reset();
}

STDMETHODIMP DeviceEvents::GetTypeInfoCount(UINT* count) {
    if (count) *count = 0;
    return S_OK;
}

STDMETHODIMP DeviceEvents::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP DeviceEvents::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP DeviceEvents::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                  EXCEPINFO*, UINT*) {
    const com::Ptr<IDispatch> hold(this);
    com::Quietly([&] {
        std::wstring_view text;
        if (params && params->cArgs == 1 && params->rgvarg[0].vt == (VT_BYREF | VT_BSTR))
            if (const BSTR given = *params->rgvarg[0].pbstrVal) text = {given, SysStringLen(given)};
        // It may stop this subscription.
        const auto handler = m_handler;
        if (handler) (*handler)(static_cast<DeviceEvent>(member), text);
    });
    return S_OK;
}

}  // namespace quillon
