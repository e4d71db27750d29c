// The gate around a COM member: nothing C++ crosses it. A result that the member owns ([out,
// retval]) is cleared first and filled last; in/out arguments are the member's own business.
#pragma once

#include <cstdint>
#include <string_view>

#include "com/error.h"
#include "com/ptr.h"
#include "com/text.h"
#include "com/variant.h"

namespace quillon::com {

// One overload for each kind of result that a member can give.
inline void PutResult(BSTR* target, std::wstring_view text) {
    *target = NewBstr(text);
}
inline void PutResult(VARIANT_BOOL* target, bool truth) {
    *target = truth ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void PutResult(long* target, std::int32_t number) {
    *target = number;
}
inline void PutResult(unsigned char* target, std::uint8_t number) {
    *target = number;
}
inline void PutResult(short* target, std::int16_t number) {
    *target = number;
}
inline void PutResult(VARIANT* target, Variant value) {
    value.DetachTo(target);
}
template <class T, class U>
void PutResult(T** target, Ptr<U> object) {
    *target = object.Detach();
}

template <class F>
HRESULT Gate(F&& member) noexcept {
    try {
        SetErrorInfo(0, nullptr);
        member();
        return S_OK;
    } catch (...) {
        return ResultOfCurrentException();
    }
}

template <class T, class F>
HRESULT Gate(T* result, F&& member) noexcept {
    if (!result) return E_POINTER;
    *result = T{};
    return Gate([&] { PutResult(result, member()); });
}

}  // namespace quillon::com
