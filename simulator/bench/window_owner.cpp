#include "window_owner.h"

#include <cstdint>

#include "com/variant.h"

namespace quorvex::bench {
namespace {

constexpr DISPID kWindow = DISPID_VALUE;

}  // namespace

STDMETHODIMP WindowOwner::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP WindowOwner::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP WindowOwner::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    if (count != 1 || CompareStringOrdinal(names[0], -1, L"hWnd", -1, TRUE) != CSTR_EQUAL)
        return DISP_E_UNKNOWNNAME;
    ids[0] = kWindow;
    return S_OK;
}

STDMETHODIMP WindowOwner::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                 VARIANT* result, EXCEPINFO*, UINT*) {
    if (id != kWindow || !(flags & DISPATCH_PROPERTYGET)) return DISP_E_MEMBERNOTFOUND;
    if (params && params->cArgs != 0) return DISP_E_BADPARAMCOUNT;
    if (!result) return E_POINTER;
    // Window handles have 32 significant bits in either bitness.
    const auto handle = static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(m_window));
    com::Variant(handle).DetachTo(result);
    return S_OK;
}

}  // namespace quorvex::bench
