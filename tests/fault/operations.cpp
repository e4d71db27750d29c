#include "fault/operations.h"

#include <algorithm>
#include <utility>

#include "fault/device_window.h"

namespace quillon::test {

namespace {

// Images of inputs and outputs with MODE pressed alone, at 1753 and at 6819 counts.
const wchar_t* const kLowImage = L"00000000010000000006D9";
const wchar_t* const kHighImage = L"0000000001000000001AA3";

com::Bstr PathIn(const Stage& stage, const wchar_t* name) {
    return com::Bstr(stage.folder + L"\\" + name);
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
    com::Bstr point(L"CPS\\1");
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

auto Installer(const Stage& stage) {
    return EntryOf<HRESULT(STDAPICALLTYPE*)(BOOL, PCWSTR)>(stage, "DllInstall");
}

bool g_removalFailed = false;

// For the user, and back. Nothing may stay of a registration that fails.
HRESULT RegisterAndUnregister(Stage& stage) {
    // Whose registration this is would not come back.
    if (IsRegistered()) return S_FALSE;
    const auto install = Installer(stage);
    const HRESULT result = install(TRUE, L"user");
    EXPECT_EQ(IsRegistered(), SUCCEEDED(result));
    if (FAILED(result)) return result;
    const HRESULT removed = install(FALSE, L"user");
    g_removalFailed = FAILED(removed);
    EXPECT_TRUE(g_removalFailed || !IsRegistered());
    return removed;
}

// A removal that failed can be asked for again.
void RemoveAgain(Stage& stage) {
    if (!std::exchange(g_removalFailed, false)) return;
    EXPECT_EQ(Installer(stage)(FALSE, L"user"), S_OK);
    EXPECT_FALSE(IsRegistered());
}

void ChangeToldValue(Stage& stage) {
    PutQuietly(stage, &IDevice::get_ConfigProperties, L"1", L"4");
}

// A value of each kind of point.
void ChangeListedValues(Stage& stage) {
    PutQuietly(stage, &IDevice::get_NetworkVariables, L"7", L"3.5");
    ChangeToldValue(stage);
}

constexpr Operation kDeviceOperations[] = {
    {.name = "object made", .run = MakeObject},
    {.name = "registration", .prepare = RemoveAgain, .run = RegisterAndUnregister},
    {.name = "identity and inputs", .quiet = true, .run = ReadEverything},
    {.name = "outputs written", .quiet = true, .run = WriteOutputs},
    {.name = "window shown", .quiet = true, .run = ShowWindowOf},
    {.name = "lists read again",
     .needsWindow = true,
     .quiet = true,
     .prepare = ChangeListedValues,
     .run = ReadListsAgain},
    {.name = "tick of TmrPolling",
     .needsWindow = true,
     .quiet = true,
     .run = TickOf<Timer::kPolling>},
    {.name = "tick of TmrAppStatus",
     .needsWindow = true,
     .quiet = true,
     .run = TickOf<Timer::kAppStatus>},
    {.name = "tick of TmrNvs", .needsWindow = true, .quiet = true, .run = TickOf<Timer::kNvs>},
    {.name = "tick of TmrHw", .needsWindow = true, .quiet = true, .run = TickOf<Timer::kHw>},
    {.name = "tick of Timer1", .needsWindow = true, .quiet = true, .run = TickOf<Timer::kOutputs>},
    {.name = "changes told", .needsWindow = true, .prepare = ChangeToldValue, .run = TellOfChanges},
    {.name = "window closed", .needsWindow = true, .quiet = true, .run = CloseWindowOf},
    {.name = "export", .quiet = true, .leavesOut = true, .run = ExportApplication},
    {.name = "download", .quiet = true, .stops = false, .run = DownloadApplication},
    {.name = "download by the host", .run = DownloadByTheHost},
    {.name = "calibration saved", .quiet = true, .run = SaveCalibration},
    {.name = "calibration loaded", .quiet = true, .run = LoadCalibration},
    {.name = "calibration finished",
     .needsWindow = true,
     .quiet = true,
     .prepare = TakeLowAndTypeHigh,
     .run = TickOf<Timer::kHw>},
};

}  // namespace

std::span<const Operation> DeviceOperations() {
    return kDeviceOperations;
}

}  // namespace quillon::test
