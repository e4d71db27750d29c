#include "com/variant.h"

#include "com/error.h"

namespace quillon::com {

namespace {

Variant Converted(const VARIANT& value, VARTYPE type) {
    Variant result;
    Check(
        VariantChangeTypeEx(result.Out(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type));
    return result;
}

}  // namespace

void Variant::Assign(const VARIANT& other) {
    Check(VariantCopyInd(this, const_cast<VARIANT*>(&other)));
}

std::wstring Variant::AsText() const {
    if (vt == VT_BSTR) return com::Text(bstrVal);
    return com::Text(Converted(*this, VT_BSTR).bstrVal);
}

std::int32_t Variant::AsNumber() const {
    if (vt == VT_I4) return lVal;
    return Converted(*this, VT_I4).lVal;
}

bool Variant::AsBool() const {
    if (vt == VT_BOOL) return boolVal != VARIANT_FALSE;
    return Converted(*this, VT_BOOL).boolVal != VARIANT_FALSE;
}

Ptr<IDispatch> Variant::AsObject() const {
    switch (vt) {
        case VT_EMPTY:
        case VT_NULL:
            return nullptr;
        case VT_DISPATCH:
            return pdispVal;
        case VT_UNKNOWN: {
            Ptr<IDispatch> object;
            if (punkVal) Check(punkVal->QueryInterface(IID_IDispatch, object.OutVoid()));
            return object;
        }
        default:
            throw Error(DISP_E_TYPEMISMATCH);
    }
}

}  // namespace quillon::com
