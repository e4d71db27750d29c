#include "fault/operations.h"

#include <algorithm>
#include <utility>

#include "fault/device_window.h"
#include "support/host_app_file.h"

namespace quillon::test {

namespace {

const char* const kSettings =
    "[Settings]\r\nDisplayHW=1\r\nDownLoadCPs=1\r\nCP_AppCode=1\r\nHtmlHelp=room.chm\r\n"
    "[MainView]\r\n0=1\r\n1=0\r\n2=3\r\n3=2\r\n4=4\r\n5=0\r\n"
    "[TestNVIs]\r\n0=0\r\n1=1\r\n2=3\r\n[CommissioningNCIs]\r\n0=7\r\n"
    "[CommissioningCPs]\r\n0=1\r\n1=2\r\n[AdvancedNCIs]\r\n0=5\r\n[AdvancedCPs]\r\n0=0\r\n"
    "[ChangeOfValueCPs]\r\n0=4\r\n1=3\r\n"
    "[LowCalib]\r\nCountL=1500\r\nCountH=2000\r\nVoltL=2.2\r\nVoltH=2.5\r\n"
    "[HighCalib]\r\nCountL=6300\r\nCountH=7300\r\nVoltL=9\r\nVoltH=9.6\r\n";

// Images of inputs and outputs with MODE pressed alone, at 1753 and at 6819 counts.
const wchar_t* const kLowImage = L"00000000010000000006D9";
const wchar_t* const kHighImage = L"0000000001000000001AA3";

void Nothing(Stage&) {}

com::Bstr PathIn(const Stage& stage, const wchar_t* name) {
    return com::Bstr(stage.folder + L"\\" + name);
}

HRESULT ShowWindowOf(Stage& stage) {
    IDispatch* none = nullptr;
    long rate = 25;
    return stage.room.ex.Get()->ShowFocus(&none, &rate);
}

HRESULT Tick(Stage& stage, Timer timer) {
    TickTimer(stage.window, timer);
    return S_OK;
}

template <Timer kTimer>
HRESULT TickOf(Stage& stage) {
    return Tick(stage, kTimer);
}

void SetImage(Stage& stage, const wchar_t* image) {
    com::Ptr<IFiles> files;
    com::Check(stage.room.device->get_Files(files.Out()));
    for (long place = 1;; ++place) {
        com::Ptr<IFile> entry;
        com::Check(files->get_Item(place, entry.Out()));
        long identifier = 0;
        com::Check(entry->get_Identifier(&identifier));
        if (identifier != -3) continue;
        com::Check(entry->put_ValueText(com::Bstr(image).Get()));
        return;
    }
}

// Both points of a calibration but the last press of MODE. A record that an earlier run left
// complete is finished first, with a window of its own.
void TakeLowAndTypeHigh(Stage& stage) {
    SetImage(stage, kLowImage);
    for (int attempt = 0; attempt < 2; ++attempt) {
        SelectTab(stage.window, L"Calibration");
        SetWindowTextW(TextBox(stage.window), L"2.35");
        TickTimer(stage.window, Timer::kHw);
        if (TextBox(stage.window)) break;
        CloseAllWindows();
        com::Check(ShowWindowOf(stage));
        stage.window = FindDeviceWindow();
        CalmDown(stage.window);
    }
    SetImage(stage, kHighImage);
    SetWindowTextW(TextBox(stage.window), L"9.3");
}

// One member after the other, as long as the test has not let go of the object.
template <class... Members>
HRESULT CallAll(Stage& stage, Members... members) {
    HRESULT worst = S_OK;
    const auto call = [&](auto member) {
        if (stage.room.ex) worst = std::min(worst, member(stage.room.ex.Get()));
    };
    (call(members), ...);
    return worst;
}

auto TextMember(HRESULT (STDMETHODCALLTYPE IDeviceEx::*member)(BSTR*)) {
    return [member](IDeviceEx* device) {
        com::Bstr text;
        return (device->*member)(text.Out());
    };
}

HRESULT ReadEverything(Stage& stage) {
    short analog = 0;
    unsigned char byte = 0;
    long status = 0;
    const auto inputs = [&](IDeviceEx* device) {
        return device->ReadInputs(&analog, &analog, &analog, &analog, &byte, &byte, &status);
    };
    const auto outputs = [&](IDeviceEx* device) {
        return device->ReadOutputs(&analog, &analog, &analog, &analog, &byte, &byte, &status);
    };
    const auto application = [&](IDeviceEx* device) { return device->get_VantorAppStatus(&byte); };
    const auto download = [&](IDeviceEx* device) {
        VARIANT_BOOL available = VARIANT_FALSE;
        return device->get_ApplDownloadAvailable(&available);
    };
    return CallAll(stage, inputs, outputs, application, download,
                   TextMember(&IDeviceEx::get_VantorFirmwareType),
                   TextMember(&IDeviceEx::get_VantorFirmwareVersion),
                   TextMember(&IDeviceEx::get_VantorOSVersion),
                   TextMember(&IDeviceEx::get_ApplicationCode));
}

HRESULT WriteOutputs(Stage& stage) {
    short analog = 0;
    unsigned char first = 0x12;
    unsigned char second = 0x34;
    long status = 0;
    return stage.room.ex.Get()->WriteOutputs(&analog, &analog, &analog, &analog, &first, &second,
                                             &status);
}

HRESULT ExportApplication(Stage& stage) {
    com::Bstr path = PathIn(stage, kExportFile);
    VARIANT_BOOL done = VARIANT_FALSE;
    return stage.room.ex.Get()->AppExport(path.InOut(), &done);
}

HRESULT DownloadApplication(Stage& stage) {
    const com::Bstr path = PathIn(stage, kApplicationFile);
    long result = 0;
    return stage.room.ex.Get()->AppDownload(path.Get(), &result);
}

HRESULT DownloadByTheHost(Stage& stage) {
    const com::Bstr path = PathIn(stage, kApplicationFile);
    long result = 0;
    return stage.room.device.Get()->ApplicationDownload(path.Get(), VARIANT_TRUE, 0, &result);
}

HRESULT SaveCalibration(Stage& stage) {
    return stage.room.ex.Get()->SaveCalibration(PathIn(stage, kCalibrationFile).Get());
}

HRESULT LoadCalibration(Stage& stage) {
    return stage.room.ex.Get()->LoadCalibration(PathIn(stage, kFactoryFile).Get());
}

HRESULT ReadListsAgain(Stage& stage) {
    PressKey(stage.window, VK_F5);
    return S_OK;
}

HRESULT TellOfChanges(Stage& stage) {
    com::Bstr point(L"1");
    com::Bstr name(L"Renamed");
    com::Bstr state(L"04");
    long reason = 0;
    HRESULT worst = S_OK;
    const auto tell = [&](auto member) {
        if (stage.room.device) worst = std::min(worst, member(stage.room.device.Get()));
    };
    tell([&](IDevice* device) { return device->NVCPChanged(point.InOut()); });
    tell([&](IDevice* device) { return device->ChangedName(name.InOut(), &reason); });
    tell([&](IDevice* device) { return device->ChangedStatus(state.InOut(), &reason); });
    return worst;
}

HRESULT CloseWindowOf(Stage& stage) {
    return stage.room.ex.Get()->CloseFocus();
}

HMODULE PluginOf(const Stage& stage) {
    return GetModuleHandleW((stage.folder + L"\\Quillon.dll").c_str());
}

template <class F>
F EntryOf(const Stage& stage, const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(PluginOf(stage), name)));
}

// As the host makes it: by the class factory.
HRESULT MakeObject(Stage& stage) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    com::Ptr<IClassFactory> factory;
    const HRESULT got = EntryOf<GetClassObject>(stage, "DllGetClassObject")(
        CLSID_CDevice, IID_IClassFactory, factory.OutVoid());
    if (FAILED(got)) return got;
    com::Ptr<IDevice> device;
    const HRESULT made = factory->CreateInstance(nullptr, __uuidof(IDevice), device.OutVoid());
    if (FAILED(made)) return made;
    com::Bstr name;
    const HRESULT bound = device->put_NeuronID(com::Bstr(kLeft).Get());
    return FAILED(bound) ? bound : device->get_Name(name.Out());
}

bool IsRegistered() {
    wchar_t id[40];
    StringFromGUID2(CLSID_CDevice, id, 40);
    HKEY key = nullptr;
    const std::wstring path = std::wstring(L"Software\\Classes\\CLSID\\") + id;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key)) return false;
    RegCloseKey(key);
    return true;
}

// For the user, and back. Nothing may stay of a registration that fails.
HRESULT RegisterAndUnregister(Stage& stage) {
    // Whose registration this is would not come back.
    if (IsRegistered()) return S_FALSE;
    const auto install = EntryOf<HRESULT(STDAPICALLTYPE*)(BOOL, PCWSTR)>(stage, "DllInstall");
    const HRESULT result = install(TRUE, L"user");
    EXPECT_EQ(IsRegistered(), SUCCEEDED(result));
    if (SUCCEEDED(result)) install(FALSE, L"user");
    return result;
}

constexpr Operation kOperations[] = {
    // name, needsWindow, quiet, stops, leavesOut, prepare, run
    {"object made", false, false, true, false, Nothing, MakeObject},
    {"registration", false, false, true, false, Nothing, RegisterAndUnregister},
    {"identity and inputs", false, true, true, false, Nothing, ReadEverything},
    {"outputs written", false, true, true, false, Nothing, WriteOutputs},
    {"window shown", false, true, true, false, Nothing, ShowWindowOf},
    {"lists read again", true, true, true, false, Nothing, ReadListsAgain},
    {"tick of TmrPolling", true, true, true, false, Nothing, TickOf<Timer::kPolling>},
    {"tick of TmrAppStatus", true, true, true, false, Nothing, TickOf<Timer::kAppStatus>},
    {"tick of TmrNvs", true, true, true, false, Nothing, TickOf<Timer::kNvs>},
    {"tick of TmrHw", true, true, true, false, Nothing, TickOf<Timer::kHw>},
    {"tick of Timer1", true, true, true, false, Nothing, TickOf<Timer::kOutputs>},
    {"changes told", true, false, true, false, Nothing, TellOfChanges},
    {"window closed", true, true, true, false, Nothing, CloseWindowOf},
    {"export", false, true, true, true, Nothing, ExportApplication},
    {"download", false, true, false, false, Nothing, DownloadApplication},
    {"download by the host", false, false, true, false, Nothing, DownloadByTheHost},
    {"calibration saved", false, true, true, false, Nothing, SaveCalibration},
    {"calibration loaded", false, true, true, false, Nothing, LoadCalibration},
    {"calibration finished", true, true, true, false, TakeLowAndTypeHigh, TickOf<Timer::kHw>},
};

}  // namespace

std::span<const Operation> Operations() {
    return kOperations;
}

void WriteInputFiles(const std::wstring& folder) {
    WriteBytes(folder + L"\\" + Wide(kSmallProgramId) + L".ini", kSettings);
    WriteBytes(folder + L"\\" + kApplicationFile, AppFile().Text());
    WriteBytes(folder + L"\\" + kFactoryFile,
               "[0000000000A2]\r\nCalibration=27103EA80028011C2F\r\n");
}

int ButtonFor(const Box& box) {
    // Of the loader of application files, also for what it has no memory for.
    if (box.text.starts_with(L"Bad Application file: ")) return IDOK;
    if (box.text == L"Error: multiple connection index!") return IDOK;
    if (box.text == L"The operation was not successfull.") return IDCANCEL;
    if (box.text == L"No calibration values are present in the file for the device") return IDOK;
    if (box.text == L"La calibrazione e' stata eseguita correttamente.") return IDOK;
    if (box.text == L"Il valore di tensione non e' valido!") return IDOK;
    // Another program than the device's own: not downloaded.
    return std::find(box.buttons.begin(), box.buttons.end(), IDNO) == box.buttons.end() ? 0 : IDNO;
}

}  // namespace quillon::test
