// The time at which the host is called.
#pragma once

#include "com/error.h"
#include "com/object.h"
#include "com/text.h"
#include "session.h"
#include "timing.h"

namespace quillon::benchmarks {

// Notes the time when the host calls it, which is before the host serves the call it was armed for.
class Stamp final : public com::Object<IDispatch> {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        m_time = Now();
        ++m_calls;
        return S_OK;
    }

    double Time() const { return m_time; }
    int Calls() const { return m_calls; }

private:
    double m_time = 0;
    int m_calls = 0;
};

// Arms a stamp for the nth call of a member from now.
inline void Arm(const Session& session, const wchar_t* member, long nth, Stamp* stamp) {
    com::Check(session.Host().Call(com::Bstr(member).Get(), nth, stamp));
}

}  // namespace quillon::benchmarks
