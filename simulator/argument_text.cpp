#include "argument_text.h"

#include "converted.h"

namespace quorvex {

std::wstring Quoted(std::wstring_view text) {
    std::wstring quoted = L"\"";
    for (const wchar_t c : text) {
        switch (c) {
            case L'"':
                quoted += L"\\\"";
                break;
            case L'\\':
                quoted += L"\\\\";
                break;
            case L'\r':
                quoted += L"\\r";
                break;
            case L'\n':
                quoted += L"\\n";
                break;
            default:
                quoted += c;
        }
    }
    return quoted + L'"';
}

std::wstring ArgumentText(const VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            return ArgumentText(value.bstrVal);
        case VT_BOOL:
            return ArgumentText(value.boolVal != VARIANT_FALSE);
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return ArgumentText(value.punkVal);
        case VT_EMPTY:
            return L"empty";
        case VT_NULL:
            return L"null";
        case VT_ERROR:
            return L"missing";
        case VT_BYREF | VT_VARIANT:
            return ArgumentText(*value.pvarVal);
        default:
            break;
    }
    const auto text = Converted(value, VT_BSTR);
    return text ? quillon::com::Text(text->bstrVal) : L"?";
}

}  // namespace quorvex
