// Objects for tests of the COM foundation: each counts how many of its kind are alive.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "com/class_info.h"
#include "com/dual.h"
#include "com/event_source.h"
#include "com/gate.h"
#include "com/object.h"
#include "probe_h.h"
#include "quillon_h.h"
#include "support/component_fixture.h"

namespace quillon::test {

// How many probes are alive.
inline int g_probes = 0;

// Ends with no probe alive; members of derived fixtures end before.
class ProbeTest : public ComponentTest {
protected:
    ~ProbeTest() override { EXPECT_EQ(g_probes, 0); }
};

// Implements IProbe, and besides it an interface with another IDispatch face.
class Probe final : public com::Object<com::Dual<IProbe>, com::Dual<_CNV>, com::ClassInfo<Probe>,
                                       com::ErrorInfoSupport> {
public:
    static inline const CLSID& kClass = ::CLSID_ProbeObject;

    Probe() { ++g_probes; }

    // IProbe
    STDMETHODIMP Lengthen(BSTR* text, long* length) override {
        return com::Gate(length, [&]() -> std::int32_t {
            com::Bstr longer(com::Text(*text) + L"!");
            com::Bstr::Adopt(*text);
            *text = longer.Detach();
            return static_cast<std::int32_t>(SysStringLen(*text));
        });
    }
    STDMETHODIMP Twice(long* number) override {
        *number *= 2;
        return S_OK;
    }
    STDMETHODIMP TwiceShort(short* number) override {
        *number = static_cast<short>(*number * 2);
        return S_OK;
    }
    STDMETHODIMP Flip(VARIANT_BOOL* truth) override {
        *truth = *truth ? VARIANT_FALSE : VARIANT_TRUE;
        return S_OK;
    }
    // Keeps what it is given and gives what it kept.
    STDMETHODIMP Swap(IDispatch** object) override {
        com::Ptr<IDispatch> given = com::Ptr<IDispatch>::Adopt(*object);
        *object = kept.Detach();
        kept = std::move(given);
        return S_OK;
    }
    STDMETHODIMP Fill(VARIANT* any) override {
        com::Variant(L"filled").DetachTo(any);
        return S_OK;
    }
    STDMETHODIMP Refuse(long code, BSTR text) override {
        SetErrorInfo(0, com::MakeErrorRecord(L"Probe", com::View(text)).Get());
        return code;
    }
    STDMETHODIMP get_Level(long* value) override {
        return com::Gate(value, [&] { return level; });
    }
    STDMETHODIMP put_Level(long value) override {
        level = value;
        return S_OK;
    }
    STDMETHODIMP Difference(long from, long of, long* result) override {
        return com::Gate(result, [&] { return static_cast<std::int32_t>(from - of); });
    }
    STDMETHODIMP RefuseAfterWriting(long* number) override {
        *number = -1;
        return E_FAIL;
    }

    // _CNV: only there to be a second face.
    STDMETHODIMP get_RawValue(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Length(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Name(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP putref_XMLDomNode(IDispatch*) override { return E_NOTIMPL; }
    STDMETHODIMP put_ConnectionIndex(long) override { return E_NOTIMPL; }
    STDMETHODIMP get_ConnectionIndex(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_IsNC(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Direction(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Name(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_SNVTType(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Address(long*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Address(long) override { return E_NOTIMPL; }

    com::Ptr<IDispatch> kept;
    std::int32_t level = 0;

private:
    ~Probe() override { --g_probes; }
};

inline com::Ptr<IDispatch> NewProbeDispatch() {
    return com::Make<Probe>().As<IDispatch>();
}

// A source of the device events, whose object ends when the last reference goes.
class Source final : public com::Object<com::EventSource<Source>, com::ClassInfo<Source>> {
public:
    static inline const CLSID& kClass = ::CLSID_CDevice;
    static inline const IID& kEvents = ::DIID___CDevice;

    Source() { ++g_probes; }

    void Raise(DISPID event, std::vector<VARIANT> arguments = {}) {
        const com::Ptr<IConnectionPointContainer> hold(this);
        m_subscribers.Raise(event, arguments);
    }

private:
    ~Source() override { --g_probes; }
};

// A subscriber: does what it is told at each event.
class Sink final : public com::Object<IDispatch> {
public:
    using Handler = std::function<HRESULT(DISPID event, DISPPARAMS& params)>;

    explicit Sink(Handler handler) : m_handler(std::move(handler)) { ++g_probes; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                        EXCEPINFO* exception, UINT*) override {
        const HRESULT result = m_handler(event, *params);
        if (result == DISP_E_EXCEPTION) {
            exception->scode = E_FAIL;
            exception->bstrDescription = com::NewBstr(L"the sink failed");
        }
        return result;
    }

private:
    ~Sink() override { --g_probes; }

    Handler m_handler;
};

}  // namespace quillon::test
