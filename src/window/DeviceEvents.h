// The device window's subscription to its device object.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "com/object.h"
#include "com/platform.h"
#include "com/ptr.h"

namespace quillon {

enum class DeviceEvent : DISPID {
    kChangedName = 1,
    kChangedStatus = 2,
    kChangedApplication = 3,
    kNVCPChanged = 4,
    kChangedXmitErr = 5,
};

// Subscribed from construction to Stop. The object may outlive its window: after Stop nothing is
// called.
class DeviceEvents final : public com::Object<IDispatch> {
public:
    using Handler = std::function<void(DeviceEvent event, std::wstring_view text)>;

    // Throws com::Error when the source has no such events.
    DeviceEvents(IUnknown* source, Handler handler);
    void Stop();

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                        UINT*) override;

private:
    com::Ptr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
    std::shared_ptr<const Handler> m_handler;
};

}  // namespace quillon
