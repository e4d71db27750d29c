#include "late_call.h"

#include "com/error.h"

namespace quillon::benchmarks {

namespace {

DISPID IdOf(IDispatch* object, const wchar_t* member) {
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    com::Check(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

}  // namespace

com::Variant BareGet(IDispatch* object, const wchar_t* member, VARIANT* argument) {
    DISPPARAMS params{argument, nullptr, argument ? 1u : 0u, 0};
    com::Variant result;
    com::Check(object->Invoke(IdOf(object, member), IID_NULL, LOCALE_USER_DEFAULT,
                              DISPATCH_PROPERTYGET | DISPATCH_METHOD, &params, &result, nullptr,
                              nullptr));
    return result;
}

void BarePut(IDispatch* object, const wchar_t* member, VARIANT& value) {
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value, &named, 1, 1};
    com::Check(object->Invoke(IdOf(object, member), IID_NULL, LOCALE_USER_DEFAULT,
                              DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr));
}

void BarePump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace quillon::benchmarks
