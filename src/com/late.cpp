#include "com/late.h"

#include <algorithm>
#include <vector>

#include "com/error.h"

namespace quillon::com {

namespace {

DISPID IdOf(IDispatch* object, const wchar_t* member) {
    if (!object) throw Error(E_POINTER);
    DISPID id = DISPID_UNKNOWN;
    auto* name = const_cast<wchar_t*>(member);
    Check(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

[[noreturn]] void ThrowException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    const Bstr source = Bstr::Adopt(exception.bstrSource);
    const Bstr description = Bstr::Adopt(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    const HRESULT result = FAILED(exception.scode) ? exception.scode
                           : exception.wCode ? MAKE_HRESULT(1, FACILITY_CONTROL, exception.wCode)
                                             : E_FAIL;
    throw Error(result, MakeErrorRecord(source.View(), description.View()));
}

void Invoke(IDispatch* object, DISPID id, WORD flags, DISPPARAMS& params, VARIANT* result) {
    EXCEPINFO exception{};
    UINT badArgument = 0;
    const HRESULT called = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result,
                                          &exception, &badArgument);
    if (called == DISP_E_EXCEPTION) ThrowException(exception);
    Check(called);
}

}  // namespace

Variant Get(IDispatch* object, const wchar_t* member, std::initializer_list<Variant> arguments) {
    const DISPID id = IdOf(object, member);
    std::vector<VARIANT> reversed(arguments.begin(), arguments.end());
    std::reverse(reversed.begin(), reversed.end());
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    Variant result;
    Invoke(object, id, DISPATCH_PROPERTYGET | DISPATCH_METHOD, params, &result);
    return result;
}

std::wstring GetText(IDispatch* object, const wchar_t* member) {
    const Variant value = Get(object, member);
    return value.vt == VT_NULL ? std::wstring() : value.AsText();
}

void Put(IDispatch* object, const wchar_t* member, const Variant& value) {
    const DISPID id = IdOf(object, member);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{const_cast<Variant*>(&value), &named, 1, 1};
    Invoke(object, id, DISPATCH_PROPERTYPUT, params, nullptr);
}

Ptr<IEnumVARIANT> Enumerate(IDispatch* collection) {
    if (!collection) throw Error(E_POINTER);
    DISPPARAMS params{};
    Variant result;
    Invoke(collection, DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, params, &result);
    if ((result.vt != VT_UNKNOWN && result.vt != VT_DISPATCH) || !result.punkVal)
        throw Error(DISP_E_TYPEMISMATCH);
    Ptr<IEnumVARIANT> enumerator;
    Check(result.punkVal->QueryInterface(IID_IEnumVARIANT, enumerator.OutVoid()));
    return enumerator;
}

}  // namespace quillon::com
