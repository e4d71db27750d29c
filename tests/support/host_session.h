// The plug-in's DLL and the simulated host's in one process, driven through COM as a host does it.
// Nothing is registered: class factories come from the DLLs' own entry points.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "com/error.h"
#include "com/platform.h"
#include "com/ptr.h"
#include "com/text.h"
#include "com/variant.h"
#include "quillon_h.h"
#include "quorvex_h.h"
#include "quorvexsim_h.h"

namespace quillon::test {

// A DLL with COM classes, loaded from a path.
class Library {
public:
    // Throws com::Error when it cannot be loaded.
    explicit Library(std::wstring path);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    // Leaves the DLL loaded: code of objects still alive must stay.
    ~Library() = default;

    const std::wstring& Path() const { return m_path; }
    // Null when the DLL has no such entry point.
    template <class F>
    F Entry(const char* name) const {
        return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }
    com::Ptr<IClassFactory> Factory(REFCLSID clsid) const;
    template <class I>
    com::Ptr<I> Make(REFCLSID clsid) const {
        com::Ptr<I> object;
        com::Check(Factory(clsid)->CreateInstance(nullptr, __uuidof(I), object.OutVoid()));
        return object;
    }
    bool CanUnload() const;
    // True when the DLL is gone from the process.
    bool Unload();

private:
    std::wstring m_path;
    HMODULE m_module = nullptr;
};

// The folder of Quillon.dll as built, with a backslash at its end.
std::wstring BuiltPlugin();

// Makes CLSID_Device creatable in this process by a factory; the simulated host's is there from the
// start, and again after the end of this object's life.
class HostClassReplaced {
public:
    // Null: nobody makes the class.
    explicit HostClassReplaced(IClassFactory* factory);
    HostClassReplaced(const HostClassReplaced&) = delete;
    HostClassReplaced& operator=(const HostClassReplaced&) = delete;
    ~HostClassReplaced();

private:
    DWORD m_cookie = 0;
};

using Lines = std::vector<std::wstring>;

inline constexpr HRESULT kFault = static_cast<HRESULT>(0x80041234);

// The simulator's control object, members named as quorvexsim.idl says.
class Simulator {
public:
    explicit Simulator(com::Ptr<ISimulator> control) : m_control(std::move(control)) {}

    com::Ptr<INetwork> OpenNetwork(const std::wstring& path);
    void SaveNetwork(INetwork* network, const std::wstring& path);
    void Fail(std::wstring_view member, long nth = 1, HRESULT result = kFault);
    void FailAlways(std::wstring_view member, HRESULT result = kFault);
    void Answer(std::wstring_view member, const VARIANT& value);
    void Answer(std::wstring_view member, std::wstring_view text);
    // The nth call from now fails, and all after it.
    void FailFrom(std::wstring_view member, long nth, HRESULT result = kFault);
    // Every call succeeds and answers nothing: no object, an empty text, 0.
    void AnswerNothing(std::wstring_view member) { Answer(member, com::Variant()); }
    // The nth call from now first runs the function.
    void Call(std::wstring_view member, long nth, std::function<void()> function);
    void Silence(std::wstring_view neuron, bool silent);
    void Restore() { com::Check(m_control->Restore()); }
    long Count(std::wstring_view member);
    Lines Log();
    // "80040322 0000000000A1"
    Lines Reports();
    Lines Misuse();
    void Record(bool on);
    void Clear() { com::Check(m_control->Clear()); }
    long LiveObjects();
    // Time passes in the rooms of a network.
    void Advance(INetwork* network, long milliseconds);
    // Pulls a unit's plug, or puts it in again.
    void Plug(INetwork* network, std::wstring_view neuron, bool in);
    // Writes to points since the last Clear.
    long WrittenCount();

private:
    com::Ptr<ISimulator> m_control;
};

// The process's one simulated host.
Simulator& Host();
// The simulated host's own device object, bound to nothing.
com::Ptr<IDevice> MakeHostDevice();

// Lines of a log that begin so.
Lines Only(const Lines& lines, std::wstring_view beginning);
// Lines of a log that change the device: puts, writes, state changes.
Lines Changes(const Lines& lines);

}  // namespace quillon::test
