// The IDispatch half of one dual interface, served from the module's own type library.
#pragma once

#include "com/error.h"
#include "com/module.h"
#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::com {

// ITypeInfo::Invoke with what scripts need besides: a VT_BYREF|VT_VARIANT, or a plain value, given
// for a typed in/out argument is converted before the call and, where it is a reference, written
// back after it.
HRESULT InvokeMember(ITypeInfo* info, void* object, DISPID member, WORD flags, DISPPARAMS* params,
                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

template <class I>
class Dual : public I {
public:
    using Interface = I;

    STDMETHODIMP GetTypeInfoCount(UINT* count) final {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) final {
        if (!info) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return WithInfo([&](Ptr<ITypeInfo>& own) {
            *info = own.Detach();
            return S_OK;
        });
    }

    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) final {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        return WithInfo([&](Ptr<ITypeInfo>& own) { return own->GetIDsOfNames(names, count, ids); });
    }

    STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) final {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        if (!params) return E_POINTER;
        return WithInfo([&](Ptr<ITypeInfo>& own) {
            return InvokeMember(own.Get(), static_cast<I*>(this), member, flags, params, result,
                                exception, badArgument);
        });
    }

private:
    template <class F>
    HRESULT WithInfo(F&& f) noexcept {
        try {
            Ptr<ITypeInfo> own = TypeInfoOf(__uuidof(I));
            return f(own);
        } catch (...) {
            return ResultOfCurrentException();
        }
    }
};

}  // namespace quillon::com
