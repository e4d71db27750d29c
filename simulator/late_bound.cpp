#include "late_bound.h"

#include <algorithm>

#include "com/ptr.h"

namespace quorvex {

namespace {

constexpr WORD kGets = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

bool SameName(const wchar_t* left, const wchar_t* right) {
    return CompareStringOrdinal(left, -1, right, -1, TRUE) == CSTR_EQUAL;
}

// Failures of the member itself travel in the EXCEPINFO, as automation wants it; those of the
// dispatch are the result of Invoke.
HRESULT AsException(HRESULT result, EXCEPINFO* exception) {
    if (SUCCEEDED(result) || HRESULT_FACILITY(result) == FACILITY_DISPATCH) return result;
    if (!exception) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = result;
    com::Ptr<IErrorInfo> record;
    if (GetErrorInfo(0, record.Out()) == S_OK) {
        record->GetSource(&exception->bstrSource);
        record->GetDescription(&exception->bstrDescription);
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

const VARIANT& Unwrapped(const VARIANT& value) {
    return value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal ? *value.pvarVal : value;
}

STDMETHODIMP LateBound::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP LateBound::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP LateBound::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto members = Members();
    const auto found = std::find_if(members.begin(), members.end(), [&](const LateMember& member) {
        return SameName(member.name, names[0]);
    });
    if (found == members.end()) return DISP_E_UNKNOWNNAME;
    ids[0] = found->id;
    // Names behind the first would be those of arguments; none can be given by name.
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

STDMETHODIMP LateBound::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (!params) return E_POINTER;
    const auto members = Members();
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const LateMember& member) { return member.id == id; });
    if (found == members.end()) return DISP_E_MEMBERNOTFOUND;
    return AsException(Serve(*found, flags, *params, result), exception);
}

HRESULT LateBound::Serve(const LateMember& member, WORD flags, const DISPPARAMS& params,
                         VARIANT* result) {
    if (flags & kPuts) {
        if (member.put == LateMember::kNone) return DISP_E_MEMBERNOTFOUND;
        if (params.cArgs != 1) return DISP_E_BADPARAMCOUNT;
        return PutMember(member, Unwrapped(params.rgvarg[0]));
    }
    if (!(flags & kGets)) return DISP_E_MEMBERNOTFOUND;
    if (params.cNamedArgs != 0) return DISP_E_NONAMEDARGS;
    if (params.cArgs != (member.takesArgument ? 1u : 0u)) return DISP_E_BADPARAMCOUNT;
    com::Variant value;
    const HRESULT served = GetMember(
        member, member.takesArgument ? &Unwrapped(params.rgvarg[0]) : nullptr, value.Out());
    if (result && SUCCEEDED(served)) value.DetachTo(result);
    return served;
}

}  // namespace quorvex
