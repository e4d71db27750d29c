#include "session.h"

#include <fstream>
#include <stdexcept>

#include "com/error.h"
#include "com/module.h"
#include "com/text.h"

namespace quillon::benchmarks {

namespace {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

std::filesystem::path CopyInto(const std::filesystem::path& folder, const wchar_t* name) {
    const auto from = std::filesystem::path(com::ModuleFolder()) / name;
    std::filesystem::copy_file(from, folder / name);
    return folder / name;
}

void Bind(IDevice* device, INetwork* network) {
    com::Check(device->putref_Network(network));
    com::Check(device->put_NeuronID(com::Bstr(kNeuron).Get()));
}

}  // namespace

LoadedDll::LoadedDll(const std::filesystem::path& file) : m_module(LoadLibraryW(file.c_str())) {
    if (!m_module) throw std::runtime_error(file.filename().string() + " cannot be loaded");
}

LoadedDll::~LoadedDll() {
    using CanUnload = HRESULT(STDAPICALLTYPE*)();
    const auto may = reinterpret_cast<CanUnload>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "DllCanUnloadNow")));
    if (may && may() == S_OK) FreeLibrary(m_module);
}

com::Ptr<IClassFactory> LoadedDll::Factory(REFCLSID clsid) const {
    const auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")));
    if (!get) throw std::runtime_error("a DLL has no DllGetClassObject");
    com::Ptr<IClassFactory> factory;
    com::Check(get(clsid, IID_IClassFactory, factory.OutVoid()));
    return factory;
}

Session::Apartment::Apartment() {
    com::Check(OleInitialize(nullptr));
}

Session::Apartment::~Apartment() {
    OleUninitialize();
}

Session::Place::Place()
    : path(std::filesystem::temp_directory_path() /
           (L"quillon-benchmarks-" + std::to_wstring(GetCurrentProcessId()))) {
    std::filesystem::create_directories(path);
}

Session::Place::~Place() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

Session::ClassObject::ClassObject(REFCLSID clsid, IUnknown* factory) {
    com::Check(
        CoRegisterClassObject(clsid, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
}

Session::ClassObject::~ClassObject() {
    CoRevokeClassObject(cookie);
}

Session::Session()
    : m_hostDll(CopyInto(m_place.path, L"Quorvex.dll")),
      m_plugin(CopyInto(m_place.path, L"Quillon.dll")),
      m_hostClass(CLSID_Device, m_hostDll.Factory(CLSID_Device).Get()),
      m_host(Make<ISimulator>(m_hostDll, CLSID_Simulator)) {
    com::Check(m_host->put_Recording(VARIANT_FALSE));
    std::ofstream settings(m_place.path / (std::wstring(kProgramId) + L".ini"));
    settings << "[Settings]\nDownLoadCPs=1\n";
}

Session::~Session() = default;

com::Ptr<IUnknown> Session::CreateObject(const LoadedDll& dll, REFCLSID clsid) {
    com::Ptr<IUnknown> object;
    com::Check(dll.Factory(clsid)->CreateInstance(nullptr, IID_IUnknown, object.OutVoid()));
    return object;
}

Room Session::OpenRoom(const RoomSize& size) const {
    const auto file = Folder() / L"network.json";
    WriteNetwork(file, size);
    Room room;
    com::Check(m_host->OpenNetwork(com::Bstr(file.native()).Get(), room.network.Out()));
    room.subject = BindDevice(room.network.Get());
    room.bare = Make<IDevice>(m_hostDll, CLSID_Device);
    Bind(room.bare.Get(), room.network.Get());
    return room;
}

com::Ptr<IDevice> Session::BindDevice(INetwork* network) const {
    com::Ptr<IDevice> device = Create<IDevice>(CLSID_CDevice);
    Bind(device.Get(), network);
    return device;
}

std::wstring Session::ExportApplication(const Room& room, const wchar_t* name) const {
    const std::filesystem::path file = Folder() / name;
    com::Bstr path(file.native());
    VARIANT_BOOL ignored = VARIANT_FALSE;
    com::Check(room.subject.As<IDeviceEx>()->AppExport(path.InOut(), &ignored));
    if (!std::filesystem::exists(file)) throw std::runtime_error("the export wrote no file");
    return file.native();
}

long Session::Calls(const wchar_t* member) const {
    long calls = 0;
    com::Check(m_host->Count(com::Bstr(member).Get(), &calls));
    return calls;
}

}  // namespace quillon::benchmarks
