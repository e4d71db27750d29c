// A face that is reached by member names alone: IDispatch without a type library.
#pragma once

#include <span>

#include "com/platform.h"
#include "com/variant.h"
#include "members.h"

namespace quorvex {

namespace com = quillon::com;

// A member of a late-bound object; kNone where there is no such half.
struct LateMember {
    static constexpr MemberId kNone = static_cast<MemberId>(-1);

    const wchar_t* name;
    DISPID id;
    MemberId get;
    MemberId put = kNone;
    bool takesArgument = false;
};

class LateBound : public IDispatch {
public:
    using Interface = IDispatch;

    STDMETHODIMP GetTypeInfoCount(UINT* count) final;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) final;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) final;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) final;

protected:
    ~LateBound() = default;

    virtual std::span<const LateMember> Members() const = 0;
    // Serve one call. `argument` is there exactly when the member takes one. A failure's text goes
    // into the thread's error record.
    virtual HRESULT GetMember(const LateMember& member, const VARIANT* argument,
                              VARIANT* result) noexcept = 0;
    virtual HRESULT PutMember(const LateMember& member, const VARIANT& value) noexcept = 0;

private:
    HRESULT Serve(const LateMember& member, WORD flags, const DISPPARAMS& params, VARIANT* result);
};

// What a VT_BYREF|VT_VARIANT refers to; any other value as it is.
const VARIANT& Unwrapped(const VARIANT& value);

}  // namespace quorvex
