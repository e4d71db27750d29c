#include "com/dual.h"

#include <vector>

#include "com/variant.h"

namespace quillon::com {

namespace {

// The description of one member, given back to the type information that made it.
class FunctionDescription {
public:
    FunctionDescription(ITypeInfo* info, DISPID member, WORD flags) : m_info(info) {
        Ptr<ITypeInfo2> details = m_info.As<ITypeInfo2>();
        UINT index = 0;
        const auto kind = static_cast<INVOKEKIND>(flags & (INVOKE_FUNC | INVOKE_PROPERTYGET));
        if (!details || kind == 0) return;
        if (FAILED(details->GetFuncIndexOfMemId(member, KindOf(kind), &index)) &&
            FAILED(details->GetFuncIndexOfMemId(member, INVOKE_PROPERTYGET, &index)))
            return;
        if (FAILED(m_info->GetFuncDesc(index, &m_function))) m_function = nullptr;
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

private:
    static INVOKEKIND KindOf(INVOKEKIND kind) {
        return (kind & INVOKE_FUNC) ? INVOKE_FUNC : INVOKE_PROPERTYGET;
    }

    Ptr<ITypeInfo> m_info;
    FUNCDESC* m_function = nullptr;
};

// Stands in for one argument during a call.
struct Substitute {
    UINT place = 0;               // in rgvarg
    VARIANT* original = nullptr;  // the caller's variable; null for a plain value
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

HRESULT Convert(const VARIANT& from, VARTYPE type, Variant& to) {
    // An empty variable given for an object or a text is "none", not a failure.
    if (type == VT_DISPATCH && (from.vt == VT_EMPTY || from.vt == VT_NULL)) {
        to = Variant(static_cast<IDispatch*>(nullptr));
        return S_OK;
    }
    return VariantChangeType(to.Out(), const_cast<VARIANT*>(&from), 0, type);
}

HRESULT InvokeConverted(ITypeInfo* info, void* object, DISPID member, WORD flags,
                        DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                        UINT* badArgument) {
    const FunctionDescription function(info, member, flags);
    std::vector<VARIANT> arguments(params->rgvarg, params->rgvarg + params->cArgs);
    std::vector<Substitute> substitutes;
    substitutes.reserve(params->cArgs);
    for (UINT position = 0; position < params->cArgs; ++position) {
        const UINT place = params->cArgs - 1 - position;
        VARIANT& argument = params->rgvarg[place];
        const VARTYPE type = function.InOutType(position);
        if (type == VT_EMPTY || IsTypedReference(argument, type)) continue;
        Substitute substitute;
        substitute.place = place;
        const bool variable = argument.vt == (VT_BYREF | VT_VARIANT);
        if (variable) substitute.original = argument.pvarVal;
        if (const HRESULT failed = Convert(argument, type, substitute.value); FAILED(failed)) {
            if (badArgument) *badArgument = place;
            return failed == E_OUTOFMEMORY ? failed : DISP_E_TYPEMISMATCH;
        }
        substitutes.push_back(std::move(substitute));
        arguments[place] = ReferenceTo(substitutes.back());
    }
    DISPPARAMS converted = *params;
    converted.rgvarg = arguments.data();
    const HRESULT called =
        info->Invoke(object, member, flags, &converted, result, exception, badArgument);
    for (Substitute& substitute : substitutes)
        if (substitute.original && SUCCEEDED(called))
            VariantCopyInd(substitute.original, &substitute.value);
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
