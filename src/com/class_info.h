// Faces that describe an object: its class, and that its failures carry an error record.
#pragma once

#include "com/error.h"
#include "com/module.h"
#include "com/platform.h"

namespace quillon::com {

// Derived::kClass is the coclass; Derived::kEvents, where there is one, its default source
// interface.
template <class Derived>
class ClassInfo : public IProvideClassInfo2 {
public:
    using Interface = IProvideClassInfo2;

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        try {
            *info = TypeInfoOf(Derived::kClass).Detach();
            return S_OK;
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override {
        if (!guid) return E_POINTER;
        *guid = GUID{};
        if constexpr (requires { Derived::kEvents; }) {
            if (kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
                *guid = Derived::kEvents;
                return S_OK;
            }
        }
        return E_INVALIDARG;
    }

protected:
    ~ClassInfo() = default;
};

// Every dual interface of an object tells its failures through IErrorInfo.
class ErrorInfoSupport : public ISupportErrorInfo {
public:
    using Interface = ISupportErrorInfo;

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
        Ptr<IUnknown> face;
        if (FAILED(QueryInterface(iid, face.OutVoid()))) return S_FALSE;
        return Quietly([&] { return static_cast<bool>(TypeInfoOf(iid)); }) ? S_OK : S_FALSE;
    }

protected:
    ~ErrorInfoSupport() = default;
};

}  // namespace quillon::com
