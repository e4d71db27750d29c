// The generic device has no page, no application files and no hardware test of its own: it answers
// empty texts, and E_NOTIMPL where a caller expects something done.
#include "device.h"
#include "refusal.h"

namespace quorvex {

HRESULT Device::EmptyText(MemberId member, BSTR* target) {
    return Answer(member, target, [] { return std::wstring(); });
}

template <class Result, class... Arguments>
HRESULT Device::NotHere(MemberId member, Result* result, const Arguments&... arguments) {
    return Answer(
        member, result,
        []() -> std::remove_pointer_t<Result*> {
            Refuse(E_NOTIMPL, L"The generic device cannot do this");
        },
        arguments...);
}

STDMETHODIMP Device::ShowFocus(IDispatch** owner, long* pollingRate) {
    if (!owner || !pollingRate) return E_POINTER;
    return Do(
        Id("IDeviceEx.ShowFocus"),
        [&] {
            Require();
            m_windowShown = true;
        },
        static_cast<IUnknown*>(*owner), *pollingRate);
}

STDMETHODIMP Device::CloseFocus() {
    return Do(Id("IDeviceEx.CloseFocus"), [&] { m_windowShown = false; });
}

STDMETHODIMP Device::get_DisplayDownloadAvailable(VARIANT_BOOL* available) {
    return Answer(Id("IDeviceEx.DisplayDownloadAvailable.get"), available, [] { return false; });
}
STDMETHODIMP Device::get_ApplDownloadAvailable(VARIANT_BOOL* available) {
    return Answer(Id("IDeviceEx.ApplDownloadAvailable.get"), available, [] { return false; });
}
STDMETHODIMP Device::DisplayDownload(BSTR fileName, long* result) {
    return NotHere(Id("IDeviceEx.DisplayDownload"), result, fileName);
}
STDMETHODIMP Device::DisplayExport(BSTR fileName, VARIANT_BOOL* done) {
    return NotHere(Id("IDeviceEx.DisplayExport"), done, fileName);
}
STDMETHODIMP Device::AppDownload(BSTR appFile, long* result) {
    return NotHere(Id("IDeviceEx.AppDownload"), result, appFile);
}
STDMETHODIMP Device::AppExport(BSTR* appFile, VARIANT_BOOL* done) {
    if (!appFile) return E_POINTER;
    return NotHere(Id("IDeviceEx.AppExport"), done, *appFile);
}

STDMETHODIMP Device::SaveCalibration(BSTR fileName) {
    return Do(
        Id("IDeviceEx.SaveCalibration"),
        [] { Refuse(E_NOTIMPL, L"The generic device has no calibration"); }, fileName);
}
STDMETHODIMP Device::LoadCalibration(BSTR fileName) {
    return Do(
        Id("IDeviceEx.LoadCalibration"),
        [] { Refuse(E_NOTIMPL, L"The generic device has no calibration"); }, fileName);
}

STDMETHODIMP Device::get_ApplFileExtension(BSTR* extension) {
    return EmptyText(Id("IDeviceEx.ApplFileExtension.get"), extension);
}
STDMETHODIMP Device::get_ApplicationCode(BSTR* code) {
    return EmptyText(Id("IDeviceEx.ApplicationCode.get"), code);
}
STDMETHODIMP Device::get_DisplayHWCode(BSTR* code) {
    return EmptyText(Id("IDeviceEx.DisplayHWCode.get"), code);
}
STDMETHODIMP Device::get_DisplayAppCode(BSTR* code) {
    return EmptyText(Id("IDeviceEx.DisplayAppCode.get"), code);
}
STDMETHODIMP Device::get_DeviceIDCode(BSTR* code) {
    return EmptyText(Id("IDeviceEx.DeviceIDCode.get"), code);
}
STDMETHODIMP Device::get_DeviceHWCode(BSTR* code) {
    return EmptyText(Id("IDeviceEx.DeviceHWCode.get"), code);
}
STDMETHODIMP Device::get_VantorFirmwareType(BSTR* type) {
    return EmptyText(Id("IDeviceEx.VantorFirmwareType.get"), type);
}
STDMETHODIMP Device::get_VantorFirmwareVersion(BSTR* version) {
    return EmptyText(Id("IDeviceEx.VantorFirmwareVersion.get"), version);
}
STDMETHODIMP Device::get_VantorOSVersion(BSTR* version) {
    return EmptyText(Id("IDeviceEx.VantorOSVersion.get"), version);
}
STDMETHODIMP Device::get_ApplicationHeaderFileNAme(BSTR* fileName) {
    return EmptyText(Id("IDeviceEx.ApplicationHeaderFileNAme.get"), fileName);
}
STDMETHODIMP Device::get_CommissioningArea(BSTR* area) {
    return EmptyText(Id("IDeviceEx.CommissioningArea.get"), area);
}

STDMETHODIMP Device::get_VantorAppStatus(unsigned char* status) {
    return Answer(Id("IDeviceEx.VantorAppStatus.get"), status, [] { return std::uint8_t{0}; });
}

HRESULT Device::ImageAccess(MemberId member, const short* const (&analog)[4],
                            const unsigned char* const (&digital)[2], long* status) {
    for (const short* value : analog)
        if (!value) return E_POINTER;
    for (const unsigned char* value : digital)
        if (!value) return E_POINTER;
    return NotHere(member, status, *analog[0], *analog[1], *analog[2], *analog[3], *digital[0],
                   *digital[1]);
}

STDMETHODIMP Device::WriteOutputs(short* analog1, short* analog2, short* analog3, short* analog4,
                                  unsigned char* first, unsigned char* second, long* status) {
    return ImageAccess(Id("IDeviceEx.WriteOutputs"), {analog1, analog2, analog3, analog4},
                       {first, second}, status);
}
STDMETHODIMP Device::ReadOutputs(short* analog1, short* analog2, short* analog3, short* analog4,
                                 unsigned char* first, unsigned char* second, long* status) {
    return ImageAccess(Id("IDeviceEx.ReadOutputs"), {analog1, analog2, analog3, analog4},
                       {first, second}, status);
}
STDMETHODIMP Device::ReadInputs(short* analog1, short* analog2, short* analog3, short* analog4,
                                unsigned char* first, unsigned char* second, long* status) {
    return ImageAccess(Id("IDeviceEx.ReadInputs"), {analog1, analog2, analog3, analog4},
                       {first, second}, status);
}

}  // namespace quorvex
