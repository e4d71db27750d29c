// Base of the host's COM objects: counted as alive, every member call through the book of calls.
#pragma once

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>

#include "calls.h"
#include "catalogue/catalogue.h"
#include "com/error.h"
#include "com/gate.h"
#include "com/object.h"

namespace quorvex {

// How many of the host's objects are alive.
class LiveCount {
public:
    LiveCount() { InterlockedIncrement(&s_alive); }
    LiveCount(const LiveCount&) = delete;
    LiveCount& operator=(const LiveCount&) = delete;
    ~LiveCount() { InterlockedDecrement(&s_alive); }
    static long Alive() { return s_alive; }

private:
    static inline volatile LONG s_alive = 0;
};

// A result that is an array of bytes.
struct ByteArray {
    Bytes bytes;
};
void PutResult(SAFEARRAY** target, const ByteArray& array);

// An armed answer as a member's typed result: converted where it is convertible, else empty.
void PutAnswer(BSTR* target, const com::Variant& value);
void PutAnswer(long* target, const com::Variant& value);
void PutAnswer(short* target, const com::Variant& value);
void PutAnswer(unsigned char* target, const com::Variant& value);
void PutAnswer(SAFEARRAY** target, const com::Variant& value);
void PutAnswer(VARIANT* target, const com::Variant& value);

template <class I>
requires std::is_base_of_v<IUnknown, I>
void PutAnswer(I** target, const com::Variant& value) {
    if ((value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) && value.punkVal)
        value.punkVal->QueryInterface(__uuidof(I), reinterpret_cast<void**>(target));
}

template <class... Faces>
class Hosted : public com::Object<Faces...> {
protected:
    // Serves one call of a member with a result. The body gives the result or throws.
    template <class Result, class Body, class... Arguments>
    HRESULT Answer(MemberId member, Result* result, Body&& body,
                   const Arguments&... arguments) noexcept {
        return com::Gate([&] {
            if (!result) throw com::Error(E_POINTER);
            *result = Result{};
            using com::PutResult;
            if (!Calls::Process().Enter(member, arguments...)) [[likely]] {
                PutResult(result, body());
                return;
            }
            // A handler may let go of the last reference to this object.
            const com::Ptr<Hosted> self(this);
            if (const auto answer = Calls::Process().Meet(member))
                PutAnswer(result, *answer);
            else
                PutResult(result, body());
        });
    }

    // The same for a member without a result.
    template <class Body, class... Arguments>
    HRESULT Do(MemberId member, Body&& body, const Arguments&... arguments) noexcept {
        return com::Gate([&] {
            if (!Calls::Process().Enter(member, arguments...)) [[likely]] {
                body();
                return;
            }
            const com::Ptr<Hosted> self(this);
            if (!Calls::Process().Meet(member)) body();
        });
    }

private:
    LiveCount m_alive;
};

}  // namespace quorvex
