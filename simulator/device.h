// The host's own device object. It is created unbound; a network and a Neuron ID, in either order,
// bind it to the room controller of that identifier. Unbound, texts are empty, numbers 0, objects
// none, actions false, and puts are refused.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "com/class_info.h"
#include "com/dual.h"
#include "files.h"
#include "hosted.h"
#include "network.h"
#include "points.h"
#include "quorvex_h.h"

namespace quorvex {

class Device final
    : public Hosted<com::Dual<IDevice>, com::Dual<IDeviceEx>, IOwnDevice, com::ErrorInfoSupport> {
public:
    // IDevice
    STDMETHODIMP put_EngineeringUnits(long units) override;
    STDMETHODIMP get_EngineeringUnits(long* units) override;
    STDMETHODIMP WriteSNVTTable(BSTR table) override;
    STDMETHODIMP WriteNVFixedStruct(BSTR table) override;
    STDMETHODIMP get_FileSystemAddress(long* address) override;
    STDMETHODIMP WriteNVConfigStruct(BSTR table) override;
    STDMETHODIMP WriteNVNum(long number) override;
    STDMETHODIMP get_NVAddress(long index, long* address) override;
    STDMETHODIMP get_XMLSNVTs(IDispatch** catalogue) override;
    STDMETHODIMP get_NetworkVariables(IDispatch** points) override;
    STDMETHODIMP get_ConfigProperties(IDispatch** points) override;
    STDMETHODIMP get_Files(IFiles** entries) override;
    STDMETHODIMP putref_Network(INetwork* network) override;
    STDMETHODIMP get_Network(INetwork** network) override;
    STDMETHODIMP get_NeuronID(BSTR* neuron) override;
    STDMETHODIMP put_NeuronID(BSTR neuron) override;
    STDMETHODIMP get_FocusHidden(VARIANT_BOOL* hidden) override;
    STDMETHODIMP Focus(IDispatch* window, VARIANT_BOOL* granted) override;
    STDMETHODIMP get_ForceFocus(VARIANT_BOOL* force) override;
    STDMETHODIMP get_IsOpen(VARIANT_BOOL* open) override;
    STDMETHODIMP get_SISD(BSTR* text) override;
    STDMETHODIMP get_DisplayName(BSTR* name) override;
    STDMETHODIMP get_ProgramId(BSTR* programId) override;
    STDMETHODIMP SetProgramID(BSTR programId, VARIANT_BOOL writeDevice) override;
    STDMETHODIMP get_Name(BSTR* name) override;
    STDMETHODIMP RefreshDeviceTree() override;
    STDMETHODIMP WriteOnlyFix15() override;
    STDMETHODIMP get_ReadOnlyFix15(BSTR* table) override;
    STDMETHODIMP put_Name(BSTR name) override;
    STDMETHODIMP get_State(BSTR* state) override;
    STDMETHODIMP get_PollingState(BSTR* state) override;
    STDMETHODIMP put_PollingState(BSTR state) override;
    STDMETHODIMP get_PollingName(BSTR* name) override;
    STDMETHODIMP get_PollingPID(BSTR* programId) override;
    STDMETHODIMP Reset(VARIANT_BOOL* done) override;
    STDMETHODIMP ClearStatus(VARIANT_BOOL* done) override;
    STDMETHODIMP GoConfigured(VARIANT_BOOL* done) override;
    STDMETHODIMP GoUnConfigured(VARIANT_BOOL* done) override;
    STDMETHODIMP GoOnLine(VARIANT_BOOL* done) override;
    STDMETHODIMP GoSoftOffLine(VARIANT_BOOL* done) override;
    STDMETHODIMP GoHardOffLine(VARIANT_BOOL* done) override;
    STDMETHODIMP GoAppless(VARIANT_BOOL* done) override;
    STDMETHODIMP SetLogicalAddress(short domainIndex, BSTR domainId, short subnet, short node,
                                   BSTR key, VARIANT_BOOL* done) override;
    STDMETHODIMP get_NeuronChipModelNO(unsigned char* model) override;
    STDMETHODIMP AdjustProfile() override;
    STDMETHODIMP get_ReadNVConfigTable(long index, BSTR* entry) override;
    STDMETHODIMP get_ReadSNVTTable(long index, BSTR* entry) override;
    STDMETHODIMP ApplicationDownload(BSTR fileName, VARIANT_BOOL keepConfiguration, long options,
                                     long* result) override;
    STDMETHODIMP ParameterDownload(BSTR fileName, long* result) override;
    STDMETHODIMP ParameterExport(BSTR fileName, long* result) override;
    STDMETHODIMP get_Statistics(BSTR* text) override;
    STDMETHODIMP ClearStyatistics() override;
    STDMETHODIMP get_DeviceManufacturer(BSTR* name) override;
    STDMETHODIMP get_DeviceClass(BSTR* name) override;
    STDMETHODIMP Wink() override;
    STDMETHODIMP GetLogicalAddress(short domainIndex, BSTR* domainId, short* domainLength,
                                   short* subnet, short* node, BSTR* key,
                                   VARIANT_BOOL* done) override;
    STDMETHODIMP WriteMemory(long address, long length, BSTR bytes, VARIANT_BOOL* done) override;
    STDMETHODIMP Reboot() override;
    STDMETHODIMP get_UserCPFile(BSTR* fileName) override;
    STDMETHODIMP get_PrgIdINIFilePath(BSTR* path) override;
    STDMETHODIMP put_PrgIdINIFilePath(BSTR path) override;
    STDMETHODIMP ReadMemoryString(long address, long length, BSTR* bytes) override;
    STDMETHODIMP ReadMemoryUnicode(long address, long length, SAFEARRAY** bytes) override;
    STDMETHODIMP ChangedName(BSTR* name, long* reason) override;
    STDMETHODIMP ChangedXmitErr(BSTR* transmitError, long* reason) override;
    STDMETHODIMP ChangedStatus(BSTR* status, long* reason) override;
    STDMETHODIMP NVCPChanged(BSTR* point) override;
    STDMETHODIMP Export(BSTR fileName) override;
    STDMETHODIMP get_DllName(VARIANT* name) override;
    STDMETHODIMP get_IsCPsLoaded(VARIANT_BOOL* loaded) override;
    STDMETHODIMP put_IsCPsLoaded(VARIANT_BOOL loaded) override;
    STDMETHODIMP get_GetHardwareModel(BSTR* model) override;
    STDMETHODIMP put_SetHardwareModel(BSTR model) override;
    STDMETHODIMP get_IsExplored(VARIANT_BOOL* explored) override;
    STDMETHODIMP put_IsExplored(VARIANT_BOOL explored) override;
    STDMETHODIMP put_UserCPFile(BSTR fileName) override;

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

    std::wstring Neuron() const override;

private:
    void Bind();
    DeviceView View() const { return {m_controller, m_lifetime}; }
    // Refuses while unbound.
    RoomController& Require() const;

    // What the function reads of the controller; a value-initialised result while unbound.
    template <class F>
    auto Read(F&& f) const -> std::decay_t<decltype(f(std::declval<RoomController&>()))> {
        if (!m_controller) return {};
        return f(*m_controller);
    }

    HRESULT TextMember(MemberId member, BSTR* target, std::wstring RoomController::*text);
    HRESULT SessionText(MemberId member, BSTR* target, std::wstring Session::*text);
    HRESULT KeepText(MemberId member, BSTR value, std::wstring Session::*text);
    HRESULT NoteChange(MemberId member, BSTR* value, const long* reason,
                       std::wstring Session::*text);
    HRESULT TableEntry(MemberId member, long index, BSTR* entry, std::wstring Session::*text);
    HRESULT Action(MemberId member, VARIANT_BOOL* done, bool (RoomController::*action)());
    HRESULT EmptyText(MemberId member, BSTR* target);
    template <class Result, class... Arguments>
    HRESULT NotHere(MemberId member, Result* result, const Arguments&... arguments);
    HRESULT ImageAccess(MemberId member, const short* const (&analog)[4],
                        const unsigned char* const (&digital)[2], long* status);

    com::Ptr<INetwork> m_network;
    std::wstring m_neuron;
    std::shared_ptr<RoomController> m_controller;
    // Points hold it weakly: it goes with this object.
    std::shared_ptr<const void> m_lifetime = std::make_shared<char>();
    bool m_propertiesLoaded = false;
    std::wstring m_hardwareModel;
    bool m_windowShown = false;
};

}  // namespace quorvex
