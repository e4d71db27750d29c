#include "plugin/CDevice.h"

#include "com/module.h"
#include "plugin/MMain.h"
#include "plugin/hex_text.h"
#include "plugin/number_text.h"
#include "plugin/process_state.h"
#include "plugin/settings_text.h"
#include "ui/pump.h"

namespace quillon {

CDevice::CDevice() {
    com::Check(CoCreateInstance(CLSID_Device, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDevice),
                                moDevice.OutVoid()));
    RefreshApplicationDownloadAvailable(
        ReadIniValue(Process().settingsPath, L"Settings", L"HideAppDownload"));
}

void CDevice::AskForSignOfLife() {
    com::Quietly([&] {
        VARIANT_BOOL hidden = VARIANT_FALSE;
        com::Check(moDevice->get_FocusHidden(&hidden));
    });
}

com::Ptr<IFile> CDevice::FindDeviceFile(std::wstring_view code) {
    return com::Quietly([&]() -> com::Ptr<IFile> {
        com::Ptr<IFiles> files;
        com::Check(moDevice->get_Files(files.Out()));
        if (!files) {
            AskForSignOfLife();
            return nullptr;
        }
        const std::int32_t target = FileCode(code);
        long count = 0;
        com::Check(files->get_Count(&count));
        for (long place = 1; place <= count; ++place) {
            ui::PumpMessages();
            com::Ptr<IFile> entry;
            com::Check(files->get_Item(place, entry.Out()));
            if (!entry) return nullptr;
            long identifier = 0;
            com::Check(entry->get_Identifier(&identifier));
            if (identifier == target) return entry;
        }
        return nullptr;
    });
}

// ---- settings

void CDevice::SetSettingsPath() {
    if (!Process().settingsPath.empty()) return;
    com::Bstr programId;
    com::Check(moDevice->get_ProgramId(programId.Out()));
    // The host may have handled messages, and another device have set it.
    if (!Process().settingsPath.empty()) return;
    if (const auto name = SettingsFileName(programId.View()))
        Process().settingsPath = com::ModuleFolder() + L"\\" + *name;
}

std::wstring CDevice::ReadSetting(const wchar_t* key) {
    return com::Quietly([&] { return RequireSetting(key); });
}

std::wstring CDevice::RequireSetting(const wchar_t* key) {
    SetSettingsPath();
    return ReadIniValue(Process().settingsPath, L"Settings", key);
}

void CDevice::RefreshApplicationDownloadAvailable(const std::wstring& hideAppDownload) {
    // A value that is no number the reader can hold leaves the flag as it was.
    com::Quietly(
        [&] { Process().applicationDownloadAvailable = LenientNumber(hideAppDownload) == 0.0; });
}

bool CDevice::IDeviceEx_ApplDownloadAvailable() {
    RefreshApplicationDownloadAvailable(ReadSetting(L"HideAppDownload"));
    return Process().applicationDownloadAvailable;
}

bool CDevice::CheckObjectsInFW() {
    com::Quietly([&] { return LenientNumber(ReadSetting(L"CheckObjectsInFW")) == 0.0; });
    return true;
}

// ---- own logic of IDevice

std::int32_t CDevice::IDevice_ApplicationDownload(const std::wstring& fileName,
                                                  bool keepConfiguration, std::int32_t options) {
    VARIANT_BOOL granted = VARIANT_FALSE;
    com::Check(moDevice->Focus(nullptr, &granted));
    if (granted == VARIANT_FALSE) return 0;
    const com::Ptr<IFile> entry = FindDeviceFile(L"FFFA");
    com::Bstr identity;
    if (entry) com::Check(entry->get_ValueText(identity.Out()));
    long result = 0;
    com::Check(moDevice->ApplicationDownload(com::Bstr(fileName).Get(),
                                             keepConfiguration ? VARIANT_TRUE : VARIANT_FALSE,
                                             options, &result));
    if (entry && result == 0) com::Check(entry->put_ValueText(identity.Get()));
    return result;
}

void CDevice::RaiseText(Event event, BSTR* text) {
    com::Bstr none;
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BYREF | VT_BSTR;
    argument.pbstrVal = text ? text : none.InOut();
    m_subscribers.Raise(static_cast<DISPID>(event), {&argument, 1});
}

void CDevice::RaiseChangedApplication() {
    m_subscribers.Raise(static_cast<DISPID>(Event::kChangedApplication), {});
}

}  // namespace quillon
