#include "member_call.h"

#include <cstring>

#include "com/error.h"
#include "com/text.h"

namespace quillon::test {

namespace {

Parameter ObjectOf(ITypeInfo* info, HREFTYPE reference) {
    Parameter parameter;
    parameter.type = VT_DISPATCH;
    com::Ptr<ITypeInfo> object;
    com::Check(info->GetRefTypeInfo(reference, object.Out()));
    TYPEATTR* attributes = nullptr;
    com::Check(object->GetTypeAttr(&attributes));
    parameter.object = attributes->guid;
    object->ReleaseTypeAttr(attributes);
    return parameter;
}

Parameter TypeOf(ITypeInfo* info, const TYPEDESC& type) {
    Parameter parameter;
    if (type.vt == VT_PTR && type.lptdesc->vt == VT_USERDEFINED)
        return ObjectOf(info, type.lptdesc->hreftype);
    if (type.vt == VT_PTR) {
        parameter = TypeOf(info, *type.lptdesc);
        parameter.byReference = true;
        return parameter;
    }
    parameter.type = type.vt;
    if (type.vt == VT_DISPATCH) parameter.object = IID_IDispatch;
    if (type.vt == VT_SAFEARRAY) parameter.type = static_cast<VARTYPE>(VT_ARRAY | type.lptdesc->vt);
    return parameter;
}

MemberDescription DescribeOne(ITypeInfo* info, const FUNCDESC& function) {
    MemberDescription member;
    member.kind = function.invkind;
    member.id = function.memid;
    member.slot = function.oVft;
    com::Bstr name;
    com::Check(info->GetDocumentation(function.memid, name.Out(), nullptr, nullptr, nullptr));
    member.name = name.Text();
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        Parameter parameter = TypeOf(info, element.tdesc);
        const USHORT flags = element.paramdesc.wParamFlags;
        parameter.in = (flags & PARAMFLAG_FIN) != 0;
        parameter.result = (flags & PARAMFLAG_FRETVAL) != 0;
        member.parameters.push_back(parameter);
    }
    return member;
}

// A reference to the payload of a variant.
VARIANT ReferenceTo(VARIANT& value, const Parameter& parameter) {
    VARIANT reference;
    std::memset(&reference, 0, sizeof reference);
    reference.vt = static_cast<VARTYPE>(VT_BYREF | parameter.type);
    reference.byref = parameter.type == VT_VARIANT ? static_cast<void*>(&value)
                                                   : static_cast<void*>(&value.byref);
    return reference;
}

std::wstring ValueLogText(const VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            return L"\"" + com::Text(value.bstrVal) + L"\"";
        case VT_BOOL:
            return value.boolVal ? L"True" : L"False";
        case VT_DISPATCH:
            return value.pdispVal ? L"object" : L"nothing";
        case VT_I2:
            return std::to_wstring(value.iVal);
        case VT_UI1:
            return std::to_wstring(value.bVal);
        default:
            return std::to_wstring(value.lVal);
    }
}

}  // namespace

const Parameter* MemberDescription::Result() const {
    return !parameters.empty() && parameters.back().result ? &parameters.back() : nullptr;
}

std::wstring MemberDescription::Line() const {
    const wchar_t* const word = kind == INVOKE_PROPERTYGET      ? L"get "
                                : kind == INVOKE_PROPERTYPUT    ? L"put "
                                : kind == INVOKE_PROPERTYPUTREF ? L"putref "
                                                                : L"method ";
    return word + name;
}

std::wstring MemberDescription::HostName(std::wstring_view interfaceName) const {
    const std::wstring full = std::wstring(interfaceName) + L"." + name;
    if (IsPut()) return full + L".put";
    return kind == INVOKE_PROPERTYGET ? full + L".get" : full;
}

std::vector<MemberDescription> Describe(ITypeInfo* slots) {
    TYPEATTR* attributes = nullptr;
    com::Check(slots->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    slots->ReleaseTypeAttr(attributes);
    std::vector<MemberDescription> members;
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        com::Check(slots->GetFuncDesc(i, &function));
        members.push_back(DescribeOne(slots, *function));
        slots->ReleaseFuncDesc(function);
    }
    return members;
}

com::Variant DistinctValue(const Parameter& parameter, int seed, IUnknown* object) {
    com::Variant value;
    std::memset(static_cast<VARIANT*>(&value), 0, sizeof(VARIANT));
    value.vt = parameter.type;
    switch (parameter.type) {
        case VT_BSTR:
            value.bstrVal = com::NewBstr(L"text " + std::to_wstring(seed));
            break;
        case VT_BOOL:
            value.boolVal = VARIANT_TRUE;
            break;
        case VT_UI1:
            value.bVal = static_cast<unsigned char>(100 + seed % 100);
            break;
        case VT_I2:
            value.iVal = static_cast<short>(-3000 - seed);
            break;
        case VT_DISPATCH:
            com::Check(object->QueryInterface(parameter.object,
                                              reinterpret_cast<void**>(&value.pdispVal)));
            break;
        case VT_ARRAY | VT_UI1: {
            value.parray = SafeArrayCreateVector(VT_UI1, 0, 3);
            auto* bytes = static_cast<unsigned char*>(value.parray->pvData);
            for (int i = 0; i < 3; ++i) bytes[i] = static_cast<unsigned char>(seed + i * 80);
            break;
        }
        default:
            value.lVal = 0x01000000 + seed;
    }
    return value;
}

Arguments::Arguments(const MemberDescription& member, IUnknown* object) : m_member(member) {
    int seed = member.slot * 10;
    for (const Parameter& parameter : member.parameters)
        if (!parameter.result) m_values.push_back(DistinctValue(parameter, ++seed, object));
}

std::wstring Arguments::LogText() const {
    std::wstring text;
    for (const com::Variant& value : m_values)
        text += (text.empty() ? L"" : L", ") + ValueLogText(value);
    return text;
}

HRESULT Arguments::CallSlot(void* face) {
    std::vector<VARIANT> actual;
    for (std::size_t i = 0; i < m_values.size(); ++i)
        actual.push_back(m_member.parameters[i].byReference
                             ? ReferenceTo(m_values[i], m_member.parameters[i])
                             : static_cast<VARIANT&>(m_values[i]));
    m_result.Out();
    if (const Parameter* result = m_member.Result()) {
        std::memset(static_cast<VARIANT*>(&m_result), 0, sizeof(VARIANT));
        if (result->type != VT_VARIANT) m_result.vt = result->type;
        actual.push_back(ReferenceTo(m_result, *result));
    }
    std::vector<VARTYPE> types;
    std::vector<VARIANT*> pointers;
    for (VARIANT& one : actual) {
        types.push_back(one.vt);
        pointers.push_back(&one);
    }
    VARIANT returned;
    VariantInit(&returned);
    com::Check(DispCallFunc(face, static_cast<ULONG_PTR>(m_member.slot), CC_STDCALL, VT_ERROR,
                            static_cast<UINT>(actual.size()), types.data(), pointers.data(),
                            &returned));
    return returned.scode;
}

HRESULT Arguments::CallDispatch(IDispatch* face, EXCEPINFO* exception) {
    std::vector<VARIANT> actual;
    for (std::size_t i = m_values.size(); i-- > 0;)
        actual.push_back(m_member.parameters[i].byReference
                             ? ReferenceTo(m_values[i], m_member.parameters[i])
                             : static_cast<VARIANT&>(m_values[i]));
    DISPPARAMS params{actual.data(), nullptr, static_cast<UINT>(actual.size()), 0};
    DISPID named = DISPID_PROPERTYPUT;
    if (m_member.IsPut()) {
        params.rgdispidNamedArgs = &named;
        params.cNamedArgs = 1;
    }
    return face->Invoke(m_member.id, IID_NULL, LOCALE_USER_DEFAULT,
                        static_cast<WORD>(m_member.kind), &params,
                        m_member.Result() ? m_result.Out() : nullptr, exception, nullptr);
}

bool Same(const VARIANT& left, const VARIANT& right) {
    const auto isObject = [](const VARIANT& value) {
        return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
    };
    if (isObject(left) && isObject(right)) {
        com::Ptr<IUnknown> one;
        com::Ptr<IUnknown> other;
        if (left.punkVal) left.punkVal->QueryInterface(IID_IUnknown, one.OutVoid());
        if (right.punkVal) right.punkVal->QueryInterface(IID_IUnknown, other.OutVoid());
        return one.Get() == other.Get();
    }
    if (left.vt != right.vt) return false;
    switch (left.vt) {
        case VT_BSTR:
            return com::View(left.bstrVal) == com::View(right.bstrVal);
        case VT_BOOL:
        case VT_I2:
            return left.iVal == right.iVal;
        case VT_UI1:
            return left.bVal == right.bVal;
        case VT_ARRAY | VT_UI1:
            return left.parray && right.parray &&
                   left.parray->rgsabound[0].cElements == right.parray->rgsabound[0].cElements &&
                   std::memcmp(left.parray->pvData, right.parray->pvData,
                               left.parray->rgsabound[0].cElements) == 0;
        case VT_EMPTY:
            return true;
        default:
            return left.lVal == right.lVal;
    }
}

}  // namespace quillon::test
