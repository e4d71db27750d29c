// Loads the simulated host for one test, with a small network, and asks at the end that nothing of
// it is left.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <string_view>

#include "com/error.h"
#include "com/late.h"
#include "com/object.h"
#include "com/ptr.h"
#include "com/text.h"
#include "com/variant.h"
#include "host_members.h"
#include "quorvexsim_h.h"

namespace com = quillon::com;
namespace host = quillon::host;

using com::Bstr;
using com::Ptr;
using com::Variant;

inline constexpr const wchar_t* kFirst = L"0123456789AB";   // on line
inline constexpr const wchar_t* kSecond = L"0123456789AC";  // on line, no points
inline constexpr const wchar_t* kAbsent = L"0123456789AD";
inline constexpr const wchar_t* kAppless = L"0123456789AE";  // state 03
inline constexpr HRESULT kNoAnswer = static_cast<HRESULT>(0x80040301);
inline constexpr HRESULT kNotBound = static_cast<HRESULT>(0x80040302);
inline constexpr HRESULT kMisuse = static_cast<HRESULT>(0x80040303);
inline constexpr HRESULT kBadNetworkFile = static_cast<HRESULT>(0x80040304);

// The small network as a file's text.
std::string SmallNetwork();

// A folder of the test's own, with a trailing backslash, removed with its content at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    std::wstring File(std::wstring_view name) const { return m_path + std::wstring(name); }

private:
    std::wstring m_path;
};

void WriteFileText(const std::wstring& path, std::string_view text);
std::string ReadFileText(const std::wstring& path);

// A handler for ISimulator::Call.
class Handler final : public com::Object<IDispatch> {
public:
    explicit Handler(std::function<void()> action) : m_action(std::move(action)) {}
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override;

private:
    std::function<void()> m_action;
};

class Host : public testing::Test {
public:
    void SetUp() override;
    void TearDown() override;

    template <class I>
    Ptr<I> Create(REFCLSID clsid) const {
        Ptr<IClassFactory> factory;
        com::Check(m_getClassObject(clsid, IID_IClassFactory, factory.OutVoid()));
        Ptr<I> object;
        com::Check(factory->CreateInstance(nullptr, __uuidof(I), object.OutVoid()));
        return object;
    }
    bool CanUnload() const { return m_canUnload() == S_OK; }

    Ptr<INetwork> Open(const std::wstring& path) const;
    // A device object bound to the controller of the small network.
    Ptr<IDevice> Bound(const wchar_t* neuron) const;
    Ptr<IDispatch> Variable(const Ptr<IDevice>& device, const wchar_t* key) const;
    Ptr<IDispatch> Property(const Ptr<IDevice>& device, const wchar_t* key) const;
    // The entry at a place counted from 1.
    Ptr<IFile> Entry(const Ptr<IDevice>& device, long place) const;
    std::wstring EntryText(const Ptr<IDevice>& device, long place) const;

    long Count(const wchar_t* member) const;
    std::wstring Log() const;
    std::wstring Misuse() const;
    std::wstring Reports() const;

protected:
    TemporaryFolder folder;
    Ptr<ISimulator> control;
    Ptr<INetwork> network;

private:
    HMODULE m_module = nullptr;
    LPFNGETCLASSOBJECT m_getClassObject = nullptr;
    LPFNCANUNLOADNOW m_canUnload = nullptr;
};

// The text that a getter of a BSTR gives; a failure throws.
template <class I, class Getter>
std::wstring TextOf(const Ptr<I>& object, Getter getter) {
    Bstr text;
    com::Check((object.Get()->*getter)(text.Out()));
    return text.Text();
}
// The same for a number or truth.
template <class Number, class I, class Getter>
Number ValueOf(const Ptr<I>& object, Getter getter) {
    Number number{};
    com::Check((object.Get()->*getter)(&number));
    return number;
}
// A late-bound text.
std::wstring Late(const Ptr<IDispatch>& object, const wchar_t* member);
// The result of a late-bound put.
HRESULT LatePut(const Ptr<IDispatch>& object, const wchar_t* member, const wchar_t* text);
// The result and the description of a late-bound get.
HRESULT LateResult(const Ptr<IDispatch>& object, const wchar_t* member);
// What the thread's error record says: source, ": ", description.
std::wstring ErrorText();
