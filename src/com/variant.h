// A VARIANT that cleans up after itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "com/platform.h"
#include "com/ptr.h"
#include "com/text.h"

namespace quillon::com {

class Variant : public VARIANT {
public:
    Variant() { VariantInit(this); }
    Variant(const Variant& other) : Variant() { Assign(other); }
    Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    explicit Variant(const VARIANT& other) : Variant() { Assign(other); }
    explicit Variant(std::wstring_view text) : Variant() {
        bstrVal = NewBstr(text);
        vt = VT_BSTR;
    }
    explicit Variant(const wchar_t* text) : Variant(std::wstring_view(text)) {}
    explicit Variant(std::int32_t number) : Variant() {
        lVal = number;
        vt = VT_I4;
    }
    explicit Variant(bool truth) : Variant() {
        boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
        vt = VT_BOOL;
    }
    explicit Variant(IDispatch* object) : Variant() {
        pdispVal = Ptr<IDispatch>(object).Detach();
        vt = VT_DISPATCH;
    }
    ~Variant() { VariantClear(this); }

    Variant& operator=(Variant other) noexcept {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }

    // For an out argument: empties it first.
    VARIANT* Out() {
        VariantClear(this);
        return this;
    }
    // Hands the content to a VARIANT that the caller owns, whose old content is not freed.
    void DetachTo(VARIANT* target) {
        *target = *this;
        VariantInit(this);
    }

    // Converted readings; throw Error (DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW) when there is none.
    // Numbers become text and text numbers in the invariant locale, whatever the user's.
    std::wstring AsText() const;
    std::int32_t AsNumber() const;
    bool AsBool() const;
    // The object; empty for VT_EMPTY, VT_NULL and a null pointer, Error for anything else.
    Ptr<IDispatch> AsObject() const;

private:
    void Assign(const VARIANT& other);
};

}  // namespace quillon::com
