#include "host_fixture.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::wstring DllPath() {
    std::wstring path = QUORVEX_DLL;
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

}  // namespace

std::string SmallNetwork() {
    const std::string location(62, '0');
    return R"({"name": "Small", "devices": [
{"neuron": "0123456789AB", "name": "First", "displayName": "First room",
 "programId": "9FFFFF0512040410", "sisd": "ABC;0102030405060708", "state": "04",
 "userCpFile": "first.cp", "manufacturer": "Nimbra", "deviceClass": "Fan coil", "model": 7,
 "files": [
  {"id": "FFFA", "address": 16384, "value": "0001002A0000"},
  {"id": "FFFD", "address": 16640, "value": "05AA"},
  {"id": "1", "address": 0, "value": "0A280102"}],
 "nvs": [
  {"index": 0, "name": "nviSetpoint", "type": "SNVT_temp_p", "output": false, "config": false,
   "selfDoc": "@0|1", "raw": "0834", "min": "10.00", "max": "30.00"},
  {"index": 3, "name": "nvoSpaceTemp", "type": "SNVT_temp_p", "output": true, "config": false,
   "selfDoc": "@0|2", "raw": "0A28", "min": "", "max": ""},
  {"index": 12, "name": "nciSwitch", "type": "SNVT_switch", "output": false, "config": true,
   "selfDoc": "&1", "raw": "C801", "min": "", "max": ""},
  {"index": 13, "name": "nciLocation", "type": "SNVT_str_asc", "output": false, "config": true,
   "selfDoc": "&2", "raw": ")" +
           location + R"(", "min": "", "max": ""},
  {"index": 14, "name": "nvoUnitStatus", "type": "SNVT_hvac_status", "output": true,
   "config": false, "selfDoc": "@0|3", "raw": "012710000000007FFF138800", "min": "", "max": ""}],
 "cps": [
  {"index": 0, "name": "cpLimit", "type": "SNVT_temp_p", "selfDoc": "&3", "raw": "0A28",
   "min": "", "max": ""},
  {"index": 1, "name": "cpMode", "type": "SNVT_count", "selfDoc": "&4", "raw": "0102",
   "min": "", "max": ""}]},
{"neuron": "0123456789AC", "name": "Second", "displayName": "Second room",
 "programId": "9FFFFF0512040411", "sisd": "", "state": "04", "userCpFile": "",
 "manufacturer": "", "deviceClass": "", "model": 1, "files": [], "nvs": [], "cps": []},
{"neuron": "0123456789AD", "name": "Absent", "displayName": "Absent room",
 "programId": "9FFFFF0512040410", "sisd": "", "state": "", "userCpFile": "",
 "manufacturer": "", "deviceClass": "", "model": 1,
 "files": [{"id": "FFFA", "address": 16384, "value": "0000"}],
 "nvs": [{"index": 0, "name": "nviSetpoint", "type": "SNVT_temp_p", "output": false,
  "config": false, "selfDoc": "", "raw": "0834", "min": "", "max": ""}], "cps": []},
{"neuron": "0123456789AE", "name": "Appless", "displayName": "Appless room",
 "programId": "9FFFFF0512040410", "sisd": "", "state": "03", "userCpFile": "",
 "manufacturer": "", "deviceClass": "", "model": 1, "files": [], "nvs": [], "cps": []}]})";
}

TemporaryFolder::TemporaryFolder() {
    static std::atomic<unsigned> number{0};
    const auto base =
        std::filesystem::temp_directory_path() /
        (L"quorvex-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number));
    std::filesystem::create_directories(base);
    m_path = base.wstring() + L"\\";
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void WriteFileText(const std::wstring& path, std::string_view text) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file << text;
    ASSERT_TRUE(file.flush());
}

std::string ReadFileText(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

STDMETHODIMP Handler::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

STDMETHODIMP Handler::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                             UINT*) {
    if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
    m_action();
    return S_OK;
}

void Host::SetUp() {
    ASSERT_HRESULT_SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    m_module = LoadLibraryW(DllPath().c_str());
    ASSERT_NE(m_module, nullptr) << GetLastError();
    const auto find = [&](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(m_module, name));
    };
    m_getClassObject = reinterpret_cast<LPFNGETCLASSOBJECT>(find("DllGetClassObject"));
    m_canUnload = reinterpret_cast<LPFNCANUNLOADNOW>(find("DllCanUnloadNow"));
    ASSERT_NE(m_getClassObject, nullptr);
    ASSERT_NE(m_canUnload, nullptr);
    control = Create<ISimulator>(__uuidof(Simulator));
    WriteFileText(folder.File(L"small.json"), SmallNetwork());
    network = Open(folder.File(L"small.json"));
}

void Host::TearDown() {
    network.Reset();
    if (control) {
        EXPECT_EQ(ValueOf<long>(control, &ISimulator::get_LiveObjects), 0);
        com::Check(control->Restore());
        control.Reset();
    }
    SetErrorInfo(0, nullptr);
    if (m_module) {
        EXPECT_TRUE(CanUnload());
        FreeLibrary(m_module);
        EXPECT_EQ(GetModuleHandleW(L"Quorvex.dll"), nullptr);
    }
    CoUninitialize();
}

Ptr<INetwork> Host::Open(const std::wstring& path) const {
    Ptr<INetwork> opened;
    com::Check(control->OpenNetwork(Bstr(path).Get(), opened.Out()));
    return opened;
}

Ptr<IDevice> Host::Bound(const wchar_t* neuron) const {
    auto device = Create<IDevice>(__uuidof(Device));
    com::Check(device->putref_Network(network.Get()));
    com::Check(device->put_NeuronID(Bstr(neuron).Get()));
    return device;
}

Ptr<IDispatch> Host::Variable(const Ptr<IDevice>& device, const wchar_t* key) const {
    Ptr<IDispatch> points;
    com::Check(device->get_NetworkVariables(points.Out()));
    return com::Get(points.Get(), host::points::kItem, {Variant(key)}).AsObject();
}

Ptr<IDispatch> Host::Property(const Ptr<IDevice>& device, const wchar_t* key) const {
    Ptr<IDispatch> points;
    com::Check(device->get_ConfigProperties(points.Out()));
    return com::Get(points.Get(), host::points::kItem, {Variant(key)}).AsObject();
}

Ptr<IFile> Host::Entry(const Ptr<IDevice>& device, long place) const {
    Ptr<IFiles> entries;
    com::Check(device->get_Files(entries.Out()));
    Ptr<IFile> entry;
    com::Check(entries->get_Item(place, entry.Out()));
    return entry;
}

std::wstring Host::EntryText(const Ptr<IDevice>& device, long place) const {
    return TextOf(Entry(device, place), &IFile::get_ValueText);
}

long Host::Count(const wchar_t* member) const {
    long calls = -1;
    com::Check(control->Count(Bstr(member).Get(), &calls));
    return calls;
}

std::wstring Host::Log() const {
    return TextOf(control, &ISimulator::get_Log);
}
std::wstring Host::Misuse() const {
    return TextOf(control, &ISimulator::get_Misuse);
}
std::wstring Host::Reports() const {
    return TextOf(control, &ISimulator::get_Reports);
}

std::wstring Late(const Ptr<IDispatch>& object, const wchar_t* member) {
    return com::Get(object.Get(), member).AsText();
}

HRESULT LatePut(const Ptr<IDispatch>& object, const wchar_t* member, const wchar_t* text) {
    try {
        com::Put(object.Get(), member, Variant(text));
        return S_OK;
    } catch (const com::Error& error) {
        return error.Result();
    }
}

HRESULT LateResult(const Ptr<IDispatch>& object, const wchar_t* member) {
    try {
        com::Get(object.Get(), member);
        return S_OK;
    } catch (const com::Error& error) {
        return error.Result();
    }
}

std::wstring ErrorText() {
    Ptr<IErrorInfo> record;
    if (GetErrorInfo(0, record.Out()) != S_OK) return L"none";
    Bstr source, description;
    record->GetSource(source.Out());
    record->GetDescription(description.Out());
    return source.Text() + L": " + description.Text();
}
