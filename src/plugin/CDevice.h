// The device object that the host creates, one for each room unit.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "com/class_info.h"
#include "com/event_source.h"
#include "com/gate.h"
#include "com/object.h"
#include "plugin/ForwardedDevice.h"
#include "plugin/factory_data.h"
#include "plugin/io_image.h"
#include "plugin/self_identification.h"
#include "quillon_h.h"

namespace quillon {

// Hands the generic members on to moDevice and adds what is particular to the family.
//
// A member with logic of its own has two halves: the interface's method, which is a gate, and a C++
// method bearing the given name, which throws com::Error unless it says that it ends quietly. A
// member that handles window messages while it runs holds the object meanwhile, for the host may
// let go of it from inside.
class CDevice final : public com::Object<com::Dual<_CDevice>, ForwardedDevice, com::Dual<IDeviceEx>,
                                         com::EventSource<CDevice>, com::ClassInfo<CDevice>,
                                         com::ErrorInfoSupport> {
public:
    static inline const CLSID& kClass = ::CLSID_CDevice;
    static inline const IID& kEvents = ::DIID___CDevice;

    // Creates moDevice; throws com::Error when the host's class cannot be made.
    CDevice();

    // _CDevice
    STDMETHODIMP get_XMLSNVTs(IDispatch** catalogue) override;
    STDMETHODIMP get_AnalogInput1_High(short* word) override;
    STDMETHODIMP get_AnalogInput1_Low(short* word) override;
    STDMETHODIMP get_AnalogInput1_Offset(short* word) override;
    STDMETHODIMP get_ProductionYear(BSTR* year) override;
    STDMETHODIMP get_ProductionWeek(BSTR* week) override;

    // IDevice, the members that are not handed on
    STDMETHODIMP SetProgramID(BSTR programId, VARIANT_BOOL writeDevice) override;
    STDMETHODIMP ApplicationDownload(BSTR fileName, VARIANT_BOOL keepConfiguration, long options,
                                     long* result) override;
    STDMETHODIMP ChangedName(BSTR* name, long* reason) override;
    STDMETHODIMP ChangedXmitErr(BSTR* xmitErr, long* reason) override;
    STDMETHODIMP ChangedStatus(BSTR* status, long* reason) override;
    STDMETHODIMP NVCPChanged(BSTR* point) override;
    STDMETHODIMP get_DllName(VARIANT* name) override;
    STDMETHODIMP get_IsCPsLoaded(VARIANT_BOOL* loaded) override;
    STDMETHODIMP put_IsCPsLoaded(VARIANT_BOOL loaded) override;
    STDMETHODIMP get_GetHardwareModel(BSTR* model) override;
    STDMETHODIMP put_SetHardwareModel(BSTR model) override;

    // IDeviceEx
    STDMETHODIMP ShowFocus(IDispatch** owner, long* pollingRate) override;
    STDMETHODIMP CloseFocus() override;
    STDMETHODIMP get_DisplayDownloadAvailable(VARIANT_BOOL* available) override;
    STDMETHODIMP DisplayDownload(BSTR fileName, long* result) override;
    STDMETHODIMP DisplayExport(BSTR fileName, VARIANT_BOOL* done) override;
    STDMETHODIMP get_ApplDownloadAvailable(VARIANT_BOOL* available) override;
    STDMETHODIMP get_ApplFileExtension(BSTR* extension) override;
    STDMETHODIMP AppDownload(BSTR appFile, long* result) override;
    STDMETHODIMP AppExport(BSTR* appFile, VARIANT_BOOL* done) override;
    STDMETHODIMP SaveCalibration(BSTR fileName) override;
    STDMETHODIMP LoadCalibration(BSTR fileName) override;
    STDMETHODIMP get_ApplicationCode(BSTR* code) override;
    STDMETHODIMP get_DisplayHWCode(BSTR* code) override;
    STDMETHODIMP get_DisplayAppCode(BSTR* code) override;
    STDMETHODIMP get_DeviceIDCode(BSTR* code) override;
    STDMETHODIMP get_DeviceHWCode(BSTR* code) override;
    STDMETHODIMP get_VantorFirmwareType(BSTR* type) override;
    STDMETHODIMP get_VantorFirmwareVersion(BSTR* version) override;
    STDMETHODIMP get_VantorAppStatus(unsigned char* status) override;
    STDMETHODIMP get_VantorOSVersion(BSTR* version) override;
    STDMETHODIMP WriteOutputs(short* analog1, short* analog2, short* analog3, short* analog4,
                              unsigned char* first, unsigned char* second, long* status) override;
    STDMETHODIMP ReadOutputs(short* analog1, short* analog2, short* analog3, short* analog4,
                             unsigned char* first, unsigned char* second, long* status) override;
    STDMETHODIMP ReadInputs(short* analog1, short* analog2, short* analog3, short* analog4,
                            unsigned char* first, unsigned char* second, long* status) override;
    STDMETHODIMP get_ApplicationHeaderFileNAme(BSTR* fileName) override;
    STDMETHODIMP get_CommissioningArea(BSTR* area) override;

    // The C++ halves.

    // Downloads through the host and puts entry "FFFA" back as it was. 0: success, or the host
    // refused focus; else the host's number.
    std::int32_t IDevice_ApplicationDownload(const std::wstring& fileName, bool keepConfiguration,
                                             std::int32_t options);
    // Opens the device's window, or brings it up; see window/ShowFocus.cpp. A failure part-way
    // leaves what is already shown. Ends quietly.
    void IDeviceEx_ShowFocus(IDispatch* owner, std::int32_t pollingRate);
    // Closes every window whose tag begins with the Neuron ID, by its first 12 characters. Ends
    // quietly.
    void IDeviceEx_CloseFocus();
    bool IDeviceEx_ApplDownloadAvailable();
    // Writes an application file into the device and reports the outcome to the network; see
    // model/AppDownload.cpp. 0 in every case; ends quietly.
    std::int32_t IDeviceEx_AppDownload(const std::wstring& appFile);
    // Saves the device's application to a file; see model/AppExport.cpp. False in every case; ends
    // quietly.
    bool IDeviceEx_AppExport(const std::wstring& appFile);
    // Of the configuration property that the settings name; empty when there is none. Ends quietly.
    std::wstring IDeviceEx_ApplicationCode();
    // From the self-identification text: 4 characters each, empty after a failure. End quietly.
    std::wstring IDeviceEx_VantorFirmwareType();
    std::wstring IDeviceEx_VantorFirmwareVersion();
    std::wstring IDeviceEx_VantorOSVersion();
    // Byte 0 of the input/output image, from device memory; 0 when it cannot be had. Ends quietly.
    std::uint8_t IDeviceEx_VantorAppStatus();
    // Throw com::Error; an output that was already set stays set.
    void IDeviceEx_WriteOutputs(std::uint8_t first, std::uint8_t second);
    void IDeviceEx_ReadOutputs(std::uint8_t* first, std::uint8_t* second);
    void IDeviceEx_ReadInputs(std::int16_t* analog, std::uint8_t* inputs);

    // Calibration files; see plugin/CDeviceCalibration.cpp. Both end quietly, after asking or
    // telling the operator.
    void IDeviceEx_SaveCalibration(const std::wstring& fileName);
    // True when the device, read again, holds what the file says.
    bool IDeviceEx_LoadCalibration(const std::wstring& fileName);

    // Refreshes the factory data from entry "FFFF". Without the entry everything stays; a text that
    // is no factory data replaces the text and no number. True when the entry was read. Ends
    // quietly.
    bool ReadFactoryData();
    const std::wstring& FactoryDataText() const { return m_factoryText; }
    // Reads its settings key and answers true in every case.
    bool CheckObjectsInFW();

    // The host is asked although its answer is of no use: it counts as a sign of life. Ends
    // quietly.
    void AskForSignOfLife();
    // The entry of moDevice.Files whose identifier is the value of the four-digit code; empty when
    // there is none. Handles window messages before each entry. Never throws.
    com::Ptr<IFile> FindDeviceFile(std::wstring_view code);

    // A key of section "Settings" of the per-program settings file, whose path it sets on first
    // need. Ends quietly with an empty text.
    std::wstring ReadSetting(const wchar_t* key);
    // The same where an empty text would mislead: throws com::Error when the host does not tell
    // which program the settings are for.
    std::wstring RequireSetting(const wchar_t* key);

    // Raises the event of the same name.
    void RaiseChangedApplication();

    IDevice& HostDevice() { return *moDevice; }
    com::Ptr<_CDevice> Hold() { return com::Ptr<_CDevice>(this); }

private:
    enum class Event : DISPID {
        kChangedName = 1,
        kChangedStatus = 2,
        kChangedApplication = 3,
        kNVCPChanged = 4,
        kChangedXmitErr = 5,
    };

    void OpenWindow(class frmVantor& window, IDispatch* owner, std::int32_t pollingRate,
                    const std::wstring& neuronId);
    void RaiseText(Event event, BSTR* text);
    void SetSettingsPath();
    void RefreshApplicationDownloadAvailable(const std::wstring& hideAppDownload);
    std::int32_t LookUpApplicationCodeIndex();
    SelfIdentification ReadSelfIdentification();
    std::wstring ReadImageText(com::Ptr<IFile>& entry);

    std::wstring m_hardwareModel;
    VARIANT_BOOL m_isCPsLoaded = VARIANT_FALSE;
    std::wstring m_factoryText;
    FactoryData m_factory;
    std::int32_t m_statusAddress = 0;         // of entry "FFFD" in device memory, 0: not known
    std::int32_t m_applicationCodeIndex = 0;  // 0: not looked up, -1: none configured
};

}  // namespace quillon
