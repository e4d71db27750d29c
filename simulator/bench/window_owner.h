// What the bench gives a plug-in as the owner of its windows: an object with a property hWnd.
#pragma once

#include "com/object.h"
#include "com/ptr.h"
#include "output.h"

namespace quorvex::bench {

class WindowOwner final : public com::Object<IDispatch> {
public:
    explicit WindowOwner(HWND window) : m_window(window) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    HWND m_window;
};

}  // namespace quorvex::bench
