#include "com/dual.h"

#include <optional>
#include <vector>

#include "com/variant.h"

namespace quillon::com {

namespace {

// The description of one member, given back to the type information that made it.
class FunctionDescription {
public:
    FunctionDescription(ITypeInfo* info, DISPID member, WORD flags) : m_info(info) {
        const WORD kinds = flags & (INVOKE_FUNC | INVOKE_PROPERTYGET);
        UINT index = 0;
        const auto details = m_info.As<ITypeInfo2>();
        const bool known =
            details &&
            (SUCCEEDED(details->GetFuncIndexOfMemId(member, INVOKE_FUNC, &index)) ||
             SUCCEEDED(details->GetFuncIndexOfMemId(member, INVOKE_PROPERTYGET, &index)));
        if (known && Take(index, member, kinds)) return;
        // Not every implementation counts the inherited members alike in both calls.
        for (index = 0; !Take(index, member, kinds); ++index)
            if (m_end) return;
    }
    FunctionDescription(const FunctionDescription&) = delete;
    FunctionDescription& operator=(const FunctionDescription&) = delete;
    ~FunctionDescription() {
        if (m_function) m_info->ReleaseFuncDesc(m_function);
    }

    // The type behind a typed in/out argument; VT_EMPTY for every other kind of argument.
    VARTYPE InOutType(UINT position) const {
        if (!m_function || position >= static_cast<UINT>(m_function->cParams)) return VT_EMPTY;
        const ELEMDESC& element = m_function->lprgelemdescParam[position];
        const USHORT flags = element.paramdesc.wParamFlags;
        const bool inOut = (flags & PARAMFLAG_FIN) && (flags & PARAMFLAG_FOUT);
        if (!inOut || element.tdesc.vt != VT_PTR) return VT_EMPTY;
        const TYPEDESC& target = *element.tdesc.lptdesc;
        // A pointer to a pointer is an object.
        const VARTYPE type = target.vt == VT_PTR ? VARTYPE{VT_DISPATCH} : target.vt;
        return type == VT_VARIANT ? VARTYPE{VT_EMPTY} : type;
    }

    // The interface that a typed in/out object argument must have; nullopt for IDispatch and the
    // rest.
    std::optional<IID> InOutInterface(UINT position) const {
        if (!m_function || InOutType(position) != VT_DISPATCH) return std::nullopt;
        const TYPEDESC& target = *m_function->lprgelemdescParam[position].tdesc.lptdesc;
        if (target.vt != VT_PTR || target.lptdesc->vt != VT_USERDEFINED) return std::nullopt;
        Ptr<ITypeInfo> named;
        Check(m_info->GetRefTypeInfo(target.lptdesc->hreftype, named.Out()));
        TYPEATTR* attributes = nullptr;
        Check(named->GetTypeAttr(&attributes));
        const IID iid = attributes->guid;
        named->ReleaseTypeAttr(attributes);
        return iid;
    }

    bool IsText(UINT position) const {
        return m_function && position < static_cast<UINT>(m_function->cParams) &&
               m_function->lprgelemdescParam[position].tdesc.vt == VT_BSTR;
    }

private:
    // Keeps the description at an index when it is the member's.
    bool Take(UINT index, DISPID member, WORD kinds) {
        FUNCDESC* function = nullptr;
        m_end = FAILED(m_info->GetFuncDesc(index, &function));
        if (m_end) return false;
        if (function->memid == member && (function->invkind & kinds)) {
            m_function = function;
            return true;
        }
        m_info->ReleaseFuncDesc(function);
        return false;
    }

    Ptr<ITypeInfo> m_info;
    FUNCDESC* m_function = nullptr;
    bool m_end = false;
};

// Stands in for one argument during a call.
struct Substitute {
    VARIANT* original = nullptr;   // the caller's variable, null for a plain value
    IDispatch** object = nullptr;  // the caller's object variable
    bool byValue = false;          // passed as it is, not by reference
    Variant value;
};

VARIANT ReferenceTo(Substitute& substitute) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = static_cast<VARTYPE>(substitute.value.vt | VT_BYREF);
    reference.byref = &substitute.value.byref;
    return reference;
}

bool IsTypedReference(const VARIANT& argument, VARTYPE type) {
    return argument.vt == (type | VT_BYREF);
}

// A number whose text depends on the locale: it becomes text in the invariant one, so that 1.5 is
// "1.5" on every machine.
bool IsFraction(const VARIANT& argument) {
    switch (argument.vt & ~VT_BYREF) {
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return true;
        case VT_VARIANT:
            return (argument.vt & VT_BYREF) && IsFraction(*argument.pvarVal);
        default:
            return false;
    }
}

HRESULT Convert(const VARIANT& given, VARTYPE type, Variant& to) {
    const VARIANT& from = given.vt == (VT_BYREF | VT_VARIANT) ? *given.pvarVal : given;
    // An empty variable given for an object or a text is "none", not a failure.
    if (type == VT_DISPATCH && (from.vt == VT_EMPTY || from.vt == VT_NULL)) {
        to = Variant(static_cast<IDispatch*>(nullptr));
        return S_OK;
    }
    return VariantChangeType(to.Out(), const_cast<VARIANT*>(&from), 0, type);
}

// An object argument is only handed on as the interface that the member expects: the one pointer
// passed for another would be called through the wrong table.
HRESULT ConvertObject(const VARIANT& from, const IID& iid, Variant& to) {
    Variant given;
    if (const HRESULT failed = Convert(from, VT_DISPATCH, given); FAILED(failed)) return failed;
    to = Variant(static_cast<IDispatch*>(nullptr));
    if (!given.pdispVal) return S_OK;
    return given.pdispVal->QueryInterface(iid, reinterpret_cast<void**>(&to.pdispVal));
}

// Makes a substitute for one argument where it needs one; false when it can be passed as it is.
bool Substituted(const FunctionDescription& function, UINT position, const VARIANT& argument,
                 Substitute& substitute) {
    if (function.IsText(position)) {
        if (!IsFraction(argument)) return false;
        substitute.value = Variant(Variant(argument).AsText());
        substitute.byValue = true;
        return true;
    }
    const VARTYPE type = function.InOutType(position);
    if (type == VT_EMPTY) return false;
    const auto iid = function.InOutInterface(position);
    if (!iid && IsTypedReference(argument, type)) return false;
    // What the member writes could not be given back to a variable of another type.
    const bool variable = argument.vt == (VT_BYREF | VT_VARIANT);
    if ((argument.vt & VT_BYREF) && !variable && !IsTypedReference(argument, type))
        throw Error(DISP_E_TYPEMISMATCH);
    if (variable) substitute.original = argument.pvarVal;
    if (iid && argument.vt == (VT_BYREF | VT_DISPATCH)) substitute.object = argument.ppdispVal;
    const HRESULT converted = iid ? ConvertObject(argument, *iid, substitute.value)
                                  : Convert(argument, type, substitute.value);
    if (FAILED(converted))
        throw Error(converted == E_OUTOFMEMORY ? converted : DISP_E_TYPEMISMATCH);
    return true;
}

// Gives the caller's variable what the member left.
void WriteBack(Substitute& substitute) {
    if (substitute.original) VariantCopyInd(substitute.original, &substitute.value);
    if (!substitute.object) return;
    Ptr<IDispatch>::Adopt(*substitute.object).Reset();
    *substitute.object = Ptr<IDispatch>(substitute.value.pdispVal).Detach();
}

HRESULT InvokeConverted(ITypeInfo* info, void* object, DISPID member, WORD flags,
                        DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                        UINT* badArgument) {
    const FunctionDescription function(info, member, flags);
    std::vector<VARIANT> arguments(params->rgvarg, params->rgvarg + params->cArgs);
    std::vector<Substitute> substitutes(params->cArgs);
    for (UINT position = 0; position < params->cArgs; ++position) {
        const UINT place = params->cArgs - 1 - position;
        Substitute& substitute = substitutes[place];
        try {
            if (Substituted(function, position, params->rgvarg[place], substitute))
                arguments[place] = substitute.byValue ? substitute.value : ReferenceTo(substitute);
        } catch (const Error& error) {
            if (badArgument) *badArgument = place;
            return error.Result();
        }
    }
    DISPPARAMS converted = *params;
    converted.rgvarg = arguments.data();
    const HRESULT called =
        info->Invoke(object, member, flags, &converted, result, exception, badArgument);
    if (SUCCEEDED(called))
        for (Substitute& substitute : substitutes) WriteBack(substitute);
    return called;
}

}  // namespace

HRESULT InvokeMember(ITypeInfo* info, void* object, DISPID member, WORD flags, DISPPARAMS* params,
                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    try {
        SetErrorInfo(0, nullptr);
        const bool mayBeInOut = params->cArgs > 0 &&
                                !(flags & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) &&
                                params->cNamedArgs == 0;
        if (mayBeInOut)
            return InvokeConverted(info, object, member, flags, params, result, exception,
                                   badArgument);
        return info->Invoke(object, member, flags, params, result, exception, badArgument);
    } catch (...) {
        return ResultOfCurrentException();
    }
}

}  // namespace quillon::com
