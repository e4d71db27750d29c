#include "hosted.h"

#include "converted.h"

namespace quorvex {

namespace {

template <class Number>
void PutNumber(Number* target, const com::Variant& value) {
    if (const auto number = Converted(value, VT_I4)) *target = static_cast<Number>(number->lVal);
}

}  // namespace

void PutResult(SAFEARRAY** target, const ByteArray& array) {
    SAFEARRAY* made = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(array.bytes.size()));
    if (!made) throw com::Error(E_OUTOFMEMORY);
    std::copy(array.bytes.begin(), array.bytes.end(), static_cast<unsigned char*>(made->pvData));
    *target = made;
}

void PutAnswer(BSTR* target, const com::Variant& value) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) return;
    if (auto text = Converted(value, VT_BSTR)) *target = std::exchange(text->bstrVal, nullptr);
}

void PutAnswer(long* target, const com::Variant& value) {
    PutNumber(target, value);
}
void PutAnswer(short* target, const com::Variant& value) {
    PutNumber(target, value);
}
void PutAnswer(unsigned char* target, const com::Variant& value) {
    PutNumber(target, value);
}

void PutAnswer(SAFEARRAY** target, const com::Variant& value) {
    if (value.vt == (VT_ARRAY | VT_UI1)) com::Check(SafeArrayCopy(value.parray, target));
}

void PutAnswer(VARIANT* target, const com::Variant& value) {
    com::Variant(value).DetachTo(target);
}

}  // namespace quorvex
