#include "support/host_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "support/host_network.h"
#include "support/host_objects.h"

namespace quillon::test {

namespace {

Lines Split(const com::Bstr& text) {
    Lines lines;
    std::wstring_view rest = text.View();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\n'), rest.size());
        lines.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

// COM, the simulated host's DLL and its device class, for the life of the program.
class HostProcess : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        m_library.emplace(Wide(QUORVEX_DLL));
        m_simulator.emplace(m_library->Make<ISimulator>(CLSID_Simulator));
        RegisterDeviceClass();
    }

    void TearDown() override {
        if (!m_library) return;
        RevokeDeviceClass();
        m_simulator.reset();
        EXPECT_TRUE(m_library->CanUnload()) << "the simulated host is still held";
        EXPECT_TRUE(m_library->Unload());
        CoUninitialize();
    }

    void RegisterDeviceClass() {
        com::Check(CoRegisterClassObject(CLSID_Device, m_library->Factory(CLSID_Device).Get(),
                                         CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie));
    }
    void RevokeDeviceClass() const { CoRevokeClassObject(m_cookie); }

    Library& Own() { return *m_library; }
    Simulator& Control() { return *m_simulator; }

private:
    std::optional<Library> m_library;
    std::optional<Simulator> m_simulator;
    DWORD m_cookie = 0;
};

// GoogleTest owns it.
HostProcess* const g_process = static_cast<HostProcess*>(
    ::testing::AddGlobalTestEnvironment(std::make_unique<HostProcess>().release()));

com::Bstr B(std::wstring_view text) {
    return com::Bstr(text);
}

}  // namespace

Library::Library(std::wstring path) : m_path(std::move(path)) {
    std::replace(m_path.begin(), m_path.end(), L'/', L'\\');
    m_module = LoadLibraryW(m_path.c_str());
    if (!m_module) com::Check(HRESULT_FROM_WIN32(GetLastError()));
}

com::Ptr<IClassFactory> Library::Factory(REFCLSID clsid) const {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    com::Ptr<IClassFactory> factory;
    com::Check(
        Entry<GetClassObject>("DllGetClassObject")(clsid, IID_IClassFactory, factory.OutVoid()));
    return factory;
}

bool Library::CanUnload() const {
    return Entry<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")() == S_OK;
}

bool Library::Unload() {
    FreeLibrary(std::exchange(m_module, nullptr));
    return GetModuleHandleW(m_path.c_str()) == nullptr;
}

std::wstring BuiltPlugin() {
    return Wide(QUILLON_DLL);
}

HostClassReplaced::HostClassReplaced(IClassFactory* factory) {
    g_process->RevokeDeviceClass();
    if (factory)
        com::Check(CoRegisterClassObject(CLSID_Device, factory, CLSCTX_INPROC_SERVER,
                                         REGCLS_MULTIPLEUSE, &m_cookie));
}

HostClassReplaced::~HostClassReplaced() {
    if (m_cookie) CoRevokeClassObject(m_cookie);
    g_process->RegisterDeviceClass();
}

com::Ptr<INetwork> Simulator::OpenNetwork(const std::wstring& path) {
    com::Ptr<INetwork> network;
    com::Check(m_control->OpenNetwork(B(path).Get(), network.Out()));
    return network;
}

void Simulator::SaveNetwork(INetwork* network, const std::wstring& path) {
    com::Check(m_control->SaveNetwork(network, B(path).Get()));
}

void Simulator::Fail(std::wstring_view member, long nth, HRESULT result) {
    com::Check(m_control->Fail(B(member).Get(), nth, VARIANT_FALSE, result));
}

void Simulator::FailAlways(std::wstring_view member, HRESULT result) {
    FailFrom(member, 1, result);
}

void Simulator::FailFrom(std::wstring_view member, long nth, HRESULT result) {
    com::Check(m_control->Fail(B(member).Get(), nth, VARIANT_TRUE, result));
}

void Simulator::Answer(std::wstring_view member, const VARIANT& value) {
    com::Check(m_control->Answer(B(member).Get(), value));
}

void Simulator::Answer(std::wstring_view member, std::wstring_view text) {
    Answer(member, com::Variant(text));
}

void Simulator::Call(std::wstring_view member, long nth, std::function<void()> function) {
    com::Check(m_control->Call(B(member).Get(), nth, MakeHandler(std::move(function)).Get()));
}

void Simulator::Silence(std::wstring_view neuron, bool silent) {
    com::Check(m_control->Silence(B(neuron).Get(), silent ? VARIANT_TRUE : VARIANT_FALSE));
}

long Simulator::Count(std::wstring_view member) {
    long calls = 0;
    com::Check(m_control->Count(B(member).Get(), &calls));
    return calls;
}

Lines Simulator::Log() {
    com::Bstr text;
    com::Check(m_control->get_Log(text.Out()));
    return Split(text);
}

Lines Simulator::Reports() {
    com::Bstr text;
    com::Check(m_control->get_Reports(text.Out()));
    return Split(text);
}

Lines Simulator::Misuse() {
    com::Bstr text;
    com::Check(m_control->get_Misuse(text.Out()));
    return Split(text);
}

void Simulator::Record(bool on) {
    com::Check(m_control->put_Recording(on ? VARIANT_TRUE : VARIANT_FALSE));
}

long Simulator::LiveObjects() {
    long objects = 0;
    com::Check(m_control->get_LiveObjects(&objects));
    return objects;
}

void Simulator::Advance(INetwork* network, long milliseconds) {
    com::Check(m_control->Advance(network, milliseconds));
}

void Simulator::Plug(INetwork* network, std::wstring_view neuron, bool in) {
    com::Check(m_control->Plug(network, B(neuron).Get(), in ? VARIANT_TRUE : VARIANT_FALSE));
}

long Simulator::WrittenCount() {
    long writes = 0;
    com::Check(m_control->get_Written(&writes));
    return writes;
}

Simulator& Host() {
    return g_process->Control();
}

com::Ptr<IDevice> MakeHostDevice() {
    return g_process->Own().Make<IDevice>(CLSID_Device);
}

Lines Only(const Lines& lines, std::wstring_view beginning) {
    Lines chosen;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(chosen),
                 [&](const std::wstring& line) { return line.starts_with(beginning); });
    return chosen;
}

Lines Changes(const Lines& lines) {
    Lines chosen;
    for (const std::wstring& line : lines)
        if (line.find(L".put(") != std::wstring::npos || line.starts_with(L"IDevice.Go") ||
            line.starts_with(L"IDevice.Write") || line.starts_with(L"IDevice.Re") ||
            line.starts_with(L"IDevice.ParameterDownload"))
            chosen.push_back(line);
    // Reads whose names begin like those of writes.
    std::erase_if(chosen, [](const std::wstring& line) {
        return line.starts_with(L"IDevice.Read") || line.find(L".get(") != std::wstring::npos;
    });
    return chosen;
}

}  // namespace quillon::test
