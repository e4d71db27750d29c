// The members of IDevice that the plug-in hands on to the host's own device.
#pragma once

#include "com/dual.h"
#include "com/ptr.h"
#include "quorvex_h.h"

namespace quillon {

// Each member calls the one of the same name on moDevice with the same arguments, and passes its
// result, success codes and error record included, back as it is. What is not here is the deriving
// class's own.
class ForwardedDevice : public com::Dual<IDevice> {
public:
    STDMETHODIMP put_EngineeringUnits(long units) override {
        return moDevice->put_EngineeringUnits(units);
    }
    STDMETHODIMP get_EngineeringUnits(long* units) override {
        return moDevice->get_EngineeringUnits(units);
    }
    STDMETHODIMP WriteSNVTTable(BSTR table) override { return moDevice->WriteSNVTTable(table); }
    STDMETHODIMP WriteNVFixedStruct(BSTR table) override {
        return moDevice->WriteNVFixedStruct(table);
    }
    STDMETHODIMP get_FileSystemAddress(long* address) override {
        return moDevice->get_FileSystemAddress(address);
    }
    STDMETHODIMP WriteNVConfigStruct(BSTR table) override {
        return moDevice->WriteNVConfigStruct(table);
    }
    STDMETHODIMP WriteNVNum(long number) override { return moDevice->WriteNVNum(number); }
    STDMETHODIMP get_NVAddress(long index, long* address) override {
        return moDevice->get_NVAddress(index, address);
    }
    STDMETHODIMP get_XMLSNVTs(IDispatch** catalogue) override {
        return moDevice->get_XMLSNVTs(catalogue);
    }
    STDMETHODIMP get_NetworkVariables(IDispatch** points) override {
        return moDevice->get_NetworkVariables(points);
    }
    STDMETHODIMP get_ConfigProperties(IDispatch** points) override {
        return moDevice->get_ConfigProperties(points);
    }
    STDMETHODIMP get_Files(IFiles** entries) override { return moDevice->get_Files(entries); }
    STDMETHODIMP putref_Network(INetwork* network) override {
        return moDevice->putref_Network(network);
    }
    STDMETHODIMP get_Network(INetwork** network) override { return moDevice->get_Network(network); }
    STDMETHODIMP get_NeuronID(BSTR* neuronId) override { return moDevice->get_NeuronID(neuronId); }
    STDMETHODIMP put_NeuronID(BSTR neuronId) override { return moDevice->put_NeuronID(neuronId); }
    STDMETHODIMP get_FocusHidden(VARIANT_BOOL* hidden) override {
        return moDevice->get_FocusHidden(hidden);
    }
    STDMETHODIMP Focus(IDispatch* window, VARIANT_BOOL* granted) override {
        return moDevice->Focus(window, granted);
    }
    STDMETHODIMP get_ForceFocus(VARIANT_BOOL* force) override {
        return moDevice->get_ForceFocus(force);
    }
    STDMETHODIMP get_IsOpen(VARIANT_BOOL* open) override { return moDevice->get_IsOpen(open); }
    STDMETHODIMP get_SISD(BSTR* text) override { return moDevice->get_SISD(text); }
    STDMETHODIMP get_DisplayName(BSTR* name) override { return moDevice->get_DisplayName(name); }
    STDMETHODIMP get_ProgramId(BSTR* programId) override {
        return moDevice->get_ProgramId(programId);
    }
    STDMETHODIMP get_Name(BSTR* name) override { return moDevice->get_Name(name); }
    STDMETHODIMP RefreshDeviceTree() override { return moDevice->RefreshDeviceTree(); }
    STDMETHODIMP WriteOnlyFix15() override { return moDevice->WriteOnlyFix15(); }
    STDMETHODIMP get_ReadOnlyFix15(BSTR* table) override {
        return moDevice->get_ReadOnlyFix15(table);
    }
    STDMETHODIMP put_Name(BSTR name) override { return moDevice->put_Name(name); }
    STDMETHODIMP get_State(BSTR* state) override { return moDevice->get_State(state); }
    STDMETHODIMP get_PollingState(BSTR* state) override {
        return moDevice->get_PollingState(state);
    }
    STDMETHODIMP put_PollingState(BSTR state) override { return moDevice->put_PollingState(state); }
    STDMETHODIMP get_PollingName(BSTR* name) override { return moDevice->get_PollingName(name); }
    STDMETHODIMP get_PollingPID(BSTR* programId) override {
        return moDevice->get_PollingPID(programId);
    }
    STDMETHODIMP Reset(VARIANT_BOOL* done) override { return moDevice->Reset(done); }
    STDMETHODIMP ClearStatus(VARIANT_BOOL* done) override { return moDevice->ClearStatus(done); }
    STDMETHODIMP GoConfigured(VARIANT_BOOL* done) override { return moDevice->GoConfigured(done); }
    STDMETHODIMP GoUnConfigured(VARIANT_BOOL* done) override {
        return moDevice->GoUnConfigured(done);
    }
    STDMETHODIMP GoOnLine(VARIANT_BOOL* done) override { return moDevice->GoOnLine(done); }
    STDMETHODIMP GoSoftOffLine(VARIANT_BOOL* done) override {
        return moDevice->GoSoftOffLine(done);
    }
    STDMETHODIMP GoHardOffLine(VARIANT_BOOL* done) override {
        return moDevice->GoHardOffLine(done);
    }
    STDMETHODIMP GoAppless(VARIANT_BOOL* done) override { return moDevice->GoAppless(done); }
    STDMETHODIMP SetLogicalAddress(short domainIndex, BSTR domainId, short subnet, short node,
                                   BSTR key, VARIANT_BOOL* done) override {
        return moDevice->SetLogicalAddress(domainIndex, domainId, subnet, node, key, done);
    }
    STDMETHODIMP get_NeuronChipModelNO(unsigned char* model) override {
        return moDevice->get_NeuronChipModelNO(model);
    }
    STDMETHODIMP AdjustProfile() override { return moDevice->AdjustProfile(); }
    STDMETHODIMP get_ReadNVConfigTable(long index, BSTR* entry) override {
        return moDevice->get_ReadNVConfigTable(index, entry);
    }
    STDMETHODIMP get_ReadSNVTTable(long index, BSTR* entry) override {
        return moDevice->get_ReadSNVTTable(index, entry);
    }
    STDMETHODIMP ParameterDownload(BSTR fileName, long* result) override {
        return moDevice->ParameterDownload(fileName, result);
    }
    STDMETHODIMP ParameterExport(BSTR fileName, long* result) override {
        return moDevice->ParameterExport(fileName, result);
    }
    STDMETHODIMP get_Statistics(BSTR* text) override { return moDevice->get_Statistics(text); }
    STDMETHODIMP ClearStyatistics() override { return moDevice->ClearStyatistics(); }
    STDMETHODIMP get_DeviceManufacturer(BSTR* name) override {
        return moDevice->get_DeviceManufacturer(name);
    }
    STDMETHODIMP get_DeviceClass(BSTR* name) override { return moDevice->get_DeviceClass(name); }
    STDMETHODIMP Wink() override { return moDevice->Wink(); }
    STDMETHODIMP GetLogicalAddress(short domainIndex, BSTR* domainId, short* domainLength,
                                   short* subnet, short* node, BSTR* key,
                                   VARIANT_BOOL* done) override {
        return moDevice->GetLogicalAddress(domainIndex, domainId, domainLength, subnet, node, key,
                                           done);
    }
    STDMETHODIMP WriteMemory(long address, long length, BSTR bytes, VARIANT_BOOL* done) override {
        return moDevice->WriteMemory(address, length, bytes, done);
    }
    STDMETHODIMP Reboot() override { return moDevice->Reboot(); }
    STDMETHODIMP get_UserCPFile(BSTR* fileName) override {
        return moDevice->get_UserCPFile(fileName);
    }
    STDMETHODIMP get_PrgIdINIFilePath(BSTR* path) override {
        return moDevice->get_PrgIdINIFilePath(path);
    }
    STDMETHODIMP put_PrgIdINIFilePath(BSTR path) override {
        return moDevice->put_PrgIdINIFilePath(path);
    }
    STDMETHODIMP ReadMemoryString(long address, long length, BSTR* bytes) override {
        return moDevice->ReadMemoryString(address, length, bytes);
    }
    STDMETHODIMP ReadMemoryUnicode(long address, long length, SAFEARRAY** bytes) override {
        return moDevice->ReadMemoryUnicode(address, length, bytes);
    }
    STDMETHODIMP Export(BSTR fileName) override { return moDevice->Export(fileName); }
    STDMETHODIMP get_IsExplored(VARIANT_BOOL* explored) override {
        return moDevice->get_IsExplored(explored);
    }
    STDMETHODIMP put_IsExplored(VARIANT_BOOL explored) override {
        return moDevice->put_IsExplored(explored);
    }
    STDMETHODIMP put_UserCPFile(BSTR fileName) override {
        return moDevice->put_UserCPFile(fileName);
    }

protected:
    ~ForwardedDevice() = default;

    // The host's own device: set once at creation, never replaced.
    com::Ptr<IDevice> moDevice;
};

}  // namespace quillon
