// CDevice: the interface halves of its own members. Each is a gate around a C++ half, or an answer
// that is always the same.
#include "com/module.h"
#include "plugin/CDevice.h"

namespace quillon {

namespace {

HRESULT AnswerEmpty(BSTR* text) {
    return com::Gate(text, [] { return std::wstring(); });
}

// The status of an input/output member: 0, or the failure that ended it. The member itself
// succeeds.
template <class F>
HRESULT Status(long* status, F&& member) {
    if (!status) return E_POINTER;
    const HRESULT result = com::Gate(member);
    SetErrorInfo(0, nullptr);
    *status = FAILED(result) ? result : 0;
    return S_OK;
}

// Forwards a change notice, then raises its event: only when the host's own bookkeeping succeeded.
template <class Forward, class Raise>
HRESULT Relay(Forward&& forward, Raise&& raise) {
    const HRESULT result = forward();
    if (SUCCEEDED(result)) raise();
    return result;
}

}  // namespace

// ---- _CDevice

STDMETHODIMP CDevice::get_XMLSNVTs(IDispatch** catalogue) {
    return ForwardedDevice::get_XMLSNVTs(catalogue);
}
STDMETHODIMP CDevice::get_AnalogInput1_High(short* word) {
    return com::Gate(word, [&] { return m_factory.high; });
}
STDMETHODIMP CDevice::get_AnalogInput1_Low(short* word) {
    return com::Gate(word, [&] { return m_factory.low; });
}
STDMETHODIMP CDevice::get_AnalogInput1_Offset(short* word) {
    return com::Gate(word, [&] { return m_factory.offset; });
}
STDMETHODIMP CDevice::get_ProductionYear(BSTR* year) {
    return com::Gate(year, [&] { return ProductionYear(m_factory); });
}
STDMETHODIMP CDevice::get_ProductionWeek(BSTR* week) {
    return com::Gate(week, [&] { return ProductionWeek(m_factory); });
}

// ---- IDevice

STDMETHODIMP CDevice::SetProgramID(BSTR, VARIANT_BOOL) {
    return S_OK;
}

STDMETHODIMP CDevice::ApplicationDownload(BSTR fileName, VARIANT_BOOL keepConfiguration,
                                          long options, long* result) {
    const auto hold = Hold();
    return com::Gate(result, [&] {
        return IDevice_ApplicationDownload(com::Text(fileName), keepConfiguration != VARIANT_FALSE,
                                           options);
    });
}

STDMETHODIMP CDevice::ChangedName(BSTR* name, long* reason) {
    const auto hold = Hold();
    return Relay([&] { return moDevice->ChangedName(name, reason); },
                 [&] { RaiseText(Event::kChangedName, name); });
}
STDMETHODIMP CDevice::ChangedXmitErr(BSTR* xmitErr, long* reason) {
    const auto hold = Hold();
    return Relay([&] { return moDevice->ChangedXmitErr(xmitErr, reason); },
                 [&] { RaiseText(Event::kChangedXmitErr, xmitErr); });
}
STDMETHODIMP CDevice::ChangedStatus(BSTR* status, long* reason) {
    const auto hold = Hold();
    return Relay([&] { return moDevice->ChangedStatus(status, reason); },
                 [&] { RaiseText(Event::kChangedStatus, status); });
}
STDMETHODIMP CDevice::NVCPChanged(BSTR* point) {
    const auto hold = Hold();
    return com::Gate([&] { RaiseText(Event::kNVCPChanged, point); });
}

STDMETHODIMP CDevice::get_DllName(VARIANT* name) {
    return com::Gate(name, [] { return com::Variant(com::ModuleName()); });
}
STDMETHODIMP CDevice::get_IsCPsLoaded(VARIANT_BOOL* loaded) {
    return com::Gate(loaded, [&] { return m_isCPsLoaded != VARIANT_FALSE; });
}
STDMETHODIMP CDevice::put_IsCPsLoaded(VARIANT_BOOL loaded) {
    m_isCPsLoaded = loaded;
    return S_OK;
}
STDMETHODIMP CDevice::get_GetHardwareModel(BSTR* model) {
    return com::Gate(model, [&] { return m_hardwareModel; });
}
STDMETHODIMP CDevice::put_SetHardwareModel(BSTR model) {
    return com::Gate([&] { m_hardwareModel = com::Text(model); });
}

// ---- IDeviceEx

STDMETHODIMP CDevice::ShowFocus(IDispatch** owner, long* pollingRate) {
    const auto hold = Hold();
    return com::Gate([&] {
        const com::Ptr<IDispatch> window(owner ? *owner : nullptr);
        IDeviceEx_ShowFocus(window.Get(), pollingRate ? *pollingRate : 0);
    });
}
STDMETHODIMP CDevice::CloseFocus() {
    const auto hold = Hold();
    return com::Gate([&] { IDeviceEx_CloseFocus(); });
}

STDMETHODIMP CDevice::get_DisplayDownloadAvailable(VARIANT_BOOL* available) {
    return com::Gate(available, [] { return false; });
}
STDMETHODIMP CDevice::DisplayDownload(BSTR, long* result) {
    return com::Gate(result, [] { return 0; });
}
STDMETHODIMP CDevice::DisplayExport(BSTR, VARIANT_BOOL* done) {
    return com::Gate(done, [] { return false; });
}
STDMETHODIMP CDevice::get_ApplDownloadAvailable(VARIANT_BOOL* available) {
    const auto hold = Hold();
    return com::Gate(available, [&] { return IDeviceEx_ApplDownloadAvailable(); });
}
STDMETHODIMP CDevice::get_ApplFileExtension(BSTR* extension) {
    return AnswerEmpty(extension);
}

STDMETHODIMP CDevice::AppDownload(BSTR appFile, long* result) {
    const auto hold = Hold();
    return com::Gate(result, [&] { return IDeviceEx_AppDownload(com::Text(appFile)); });
}
STDMETHODIMP CDevice::AppExport(BSTR* appFile, VARIANT_BOOL* done) {
    const auto hold = Hold();
    return com::Gate(
        done, [&] { return IDeviceEx_AppExport(appFile ? com::Text(*appFile) : std::wstring()); });
}

STDMETHODIMP CDevice::SaveCalibration(BSTR fileName) {
    const auto hold = Hold();
    return com::Gate([&] { IDeviceEx_SaveCalibration(com::Text(fileName)); });
}
STDMETHODIMP CDevice::LoadCalibration(BSTR fileName) {
    const auto hold = Hold();
    return com::Gate([&] { IDeviceEx_LoadCalibration(com::Text(fileName)); });
}

STDMETHODIMP CDevice::get_ApplicationCode(BSTR* code) {
    const auto hold = Hold();
    return com::Gate(code, [&] { return IDeviceEx_ApplicationCode(); });
}
STDMETHODIMP CDevice::get_DisplayHWCode(BSTR* code) {
    return AnswerEmpty(code);
}
STDMETHODIMP CDevice::get_DisplayAppCode(BSTR* code) {
    return AnswerEmpty(code);
}
STDMETHODIMP CDevice::get_DeviceIDCode(BSTR* code) {
    return AnswerEmpty(code);
}
STDMETHODIMP CDevice::get_DeviceHWCode(BSTR* code) {
    return AnswerEmpty(code);
}

STDMETHODIMP CDevice::get_VantorFirmwareType(BSTR* type) {
    const auto hold = Hold();
    return com::Gate(type, [&] { return IDeviceEx_VantorFirmwareType(); });
}
STDMETHODIMP CDevice::get_VantorFirmwareVersion(BSTR* version) {
    const auto hold = Hold();
    return com::Gate(version, [&] { return IDeviceEx_VantorFirmwareVersion(); });
}
STDMETHODIMP CDevice::get_VantorAppStatus(unsigned char* status) {
    const auto hold = Hold();
    return com::Gate(status, [&] { return IDeviceEx_VantorAppStatus(); });
}
STDMETHODIMP CDevice::get_VantorOSVersion(BSTR* version) {
    const auto hold = Hold();
    return com::Gate(version, [&] { return IDeviceEx_VantorOSVersion(); });
}

STDMETHODIMP CDevice::WriteOutputs(short*, short*, short*, short*, unsigned char* first,
                                   unsigned char* second, long* status) {
    const auto hold = Hold();
    return Status(status, [&] {
        if (!first || !second) throw com::Error(E_POINTER);
        IDeviceEx_WriteOutputs(*first, *second);
    });
}
STDMETHODIMP CDevice::ReadOutputs(short*, short*, short*, short*, unsigned char* first,
                                  unsigned char* second, long* status) {
    const auto hold = Hold();
    return Status(status, [&] { IDeviceEx_ReadOutputs(first, second); });
}
STDMETHODIMP CDevice::ReadInputs(short* analog1, short*, short*, short*, unsigned char* first,
                                 unsigned char*, long* status) {
    const auto hold = Hold();
    return Status(status, [&] { IDeviceEx_ReadInputs(analog1, first); });
}

STDMETHODIMP CDevice::get_ApplicationHeaderFileNAme(BSTR* fileName) {
    return AnswerEmpty(fileName);
}
STDMETHODIMP CDevice::get_CommissioningArea(BSTR* area) {
    return AnswerEmpty(area);
}

}  // namespace quillon
