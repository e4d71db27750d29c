// Binding, identity and points.
#include "device.h"

#include "com/module.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

void Device::Bind() {
    const auto own = m_network.As<IOwnNetwork>();
    m_controller = own ? own->Model().Find(m_neuron) : nullptr;
}

RoomController& Device::Require() const {
    if (!m_controller) Refuse(kNotBound, L"The device object is bound to no room controller");
    return *m_controller;
}

std::wstring Device::Neuron() const {
    return m_controller ? m_controller->neuron : m_neuron;
}

HRESULT Device::TextMember(MemberId member, BSTR* target, std::wstring RoomController::*text) {
    return Answer(member, target,
                  [&] { return Read([&](RoomController& own) { return own.*text; }); });
}

HRESULT Device::SessionText(MemberId member, BSTR* target, std::wstring Session::*text) {
    return Answer(member, target,
                  [&] { return Read([&](RoomController& own) { return own.session.*text; }); });
}

HRESULT Device::KeepText(MemberId member, BSTR value, std::wstring Session::*text) {
    return Do(
        member, [&] { Require().session.*text = com::View(value); }, value);
}

STDMETHODIMP Device::putref_Network(INetwork* network) {
    return Do(
        Id("IDevice.Network.put"),
        [&] {
            m_network = com::Ptr<INetwork>(network);
            Bind();
        },
        static_cast<IUnknown*>(network));
}

STDMETHODIMP Device::get_Network(INetwork** network) {
    return Answer(Id("IDevice.Network.get"), network, [&] { return m_network; });
}

STDMETHODIMP Device::get_NeuronID(BSTR* neuron) {
    return Answer(Id("IDevice.NeuronID.get"), neuron, [&] { return Neuron(); });
}

STDMETHODIMP Device::put_NeuronID(BSTR neuron) {
    return Do(
        Id("IDevice.NeuronID.put"),
        [&] {
            m_neuron = com::View(neuron);
            Bind();
        },
        neuron);
}

STDMETHODIMP Device::get_XMLSNVTs(IDispatch** catalogue) {
    return Answer(Id("IDevice.XMLSNVTs.get"), catalogue,
                  [&] { return Read([](RoomController&) { return MakeCatalogue(); }); });
}

STDMETHODIMP Device::get_NetworkVariables(IDispatch** points) {
    return Answer(Id("IDevice.NetworkVariables.get"), points, [&] {
        return Read([&](RoomController&) { return MakePoints(View(), PointKind::kVariable); });
    });
}

STDMETHODIMP Device::get_ConfigProperties(IDispatch** points) {
    return Answer(Id("IDevice.ConfigProperties.get"), points, [&] {
        return Read([&](RoomController&) { return MakePoints(View(), PointKind::kProperty); });
    });
}

STDMETHODIMP Device::get_Files(IFiles** entries) {
    return Answer(Id("IDevice.Files.get"), entries,
                  [&] { return Read([&](RoomController&) { return MakeFiles(m_controller); }); });
}

STDMETHODIMP Device::get_SISD(BSTR* text) {
    return TextMember(Id("IDevice.SISD.get"), text, &RoomController::selfIdentification);
}
STDMETHODIMP Device::get_DisplayName(BSTR* name) {
    return TextMember(Id("IDevice.DisplayName.get"), name, &RoomController::displayName);
}
STDMETHODIMP Device::get_ProgramId(BSTR* programId) {
    return TextMember(Id("IDevice.ProgramId.get"), programId, &RoomController::programId);
}
STDMETHODIMP Device::get_Name(BSTR* name) {
    return TextMember(Id("IDevice.Name.get"), name, &RoomController::name);
}
STDMETHODIMP Device::get_State(BSTR* state) {
    return TextMember(Id("IDevice.State.get"), state, &RoomController::state);
}
STDMETHODIMP Device::get_PollingName(BSTR* name) {
    return TextMember(Id("IDevice.PollingName.get"), name, &RoomController::name);
}
STDMETHODIMP Device::get_PollingPID(BSTR* programId) {
    return TextMember(Id("IDevice.PollingPID.get"), programId, &RoomController::programId);
}
STDMETHODIMP Device::get_DeviceManufacturer(BSTR* name) {
    return TextMember(Id("IDevice.DeviceManufacturer.get"), name, &RoomController::manufacturer);
}
STDMETHODIMP Device::get_DeviceClass(BSTR* name) {
    return TextMember(Id("IDevice.DeviceClass.get"), name, &RoomController::deviceClass);
}
STDMETHODIMP Device::get_UserCPFile(BSTR* fileName) {
    return TextMember(Id("IDevice.UserCPFile.get"), fileName, &RoomController::userCpFile);
}
STDMETHODIMP Device::get_PollingState(BSTR* state) {
    return Answer(Id("IDevice.PollingState.get"), state, [&] {
        return Read([](RoomController& own) {
            return own.session.pollingState.empty() ? own.state : own.session.pollingState;
        });
    });
}
STDMETHODIMP Device::put_PollingState(BSTR state) {
    return KeepText(Id("IDevice.PollingState.put"), state, &Session::pollingState);
}
STDMETHODIMP Device::get_PrgIdINIFilePath(BSTR* path) {
    return SessionText(Id("IDevice.PrgIdINIFilePath.get"), path, &Session::programIdSettingsPath);
}
STDMETHODIMP Device::put_PrgIdINIFilePath(BSTR path) {
    return KeepText(Id("IDevice.PrgIdINIFilePath.put"), path, &Session::programIdSettingsPath);
}

STDMETHODIMP Device::put_Name(BSTR name) {
    return Do(
        Id("IDevice.Name.put"), [&] { Require().name = com::View(name); }, name);
}

STDMETHODIMP Device::put_UserCPFile(BSTR fileName) {
    return Do(
        Id("IDevice.UserCPFile.put"), [&] { Require().userCpFile = com::View(fileName); },
        fileName);
}

STDMETHODIMP Device::SetProgramID(BSTR programId, VARIANT_BOOL writeDevice) {
    return Do(
        Id("IDevice.SetProgramID"),
        [&] {
            RoomController& own = Require();
            if (!IsHex(com::View(programId), 16))
                Refuse(E_INVALIDARG, L"A program ID has 16 hexadecimal digits");
            if (writeDevice && !own.Answers())
                Refuse(kNoAnswer, L"Device " + own.neuron + L" does not answer");
            own.programId = Upper(com::View(programId));
        },
        programId, writeDevice != VARIANT_FALSE);
}

STDMETHODIMP Device::put_EngineeringUnits(long units) {
    return Do(
        Id("IDevice.EngineeringUnits.put"), [&] { Require().session.engineeringUnits = units; },
        units);
}

STDMETHODIMP Device::get_EngineeringUnits(long* units) {
    return Answer(Id("IDevice.EngineeringUnits.get"), units, [&] {
        return Read([](RoomController& own) { return own.session.engineeringUnits; });
    });
}

STDMETHODIMP Device::get_NeuronChipModelNO(unsigned char* model) {
    return Answer(Id("IDevice.NeuronChipModelNO.get"), model,
                  [&] { return Read([](RoomController& own) { return own.model; }); });
}

STDMETHODIMP Device::get_IsExplored(VARIANT_BOOL* explored) {
    return Answer(Id("IDevice.IsExplored.get"), explored,
                  [&] { return Read([](RoomController& own) { return own.session.explored; }); });
}

STDMETHODIMP Device::put_IsExplored(VARIANT_BOOL explored) {
    const bool truth = explored != VARIANT_FALSE;
    return Do(
        Id("IDevice.IsExplored.put"), [&] { Require().session.explored = truth; }, truth);
}

STDMETHODIMP Device::get_DllName(VARIANT* name) {
    return Answer(Id("IDevice.DllName.get"), name,
                  [&] { return com::Variant(std::wstring_view(com::ModuleName())); });
}

STDMETHODIMP Device::get_IsCPsLoaded(VARIANT_BOOL* loaded) {
    return Answer(Id("IDevice.IsCPsLoaded.get"), loaded, [&] { return m_propertiesLoaded; });
}

STDMETHODIMP Device::put_IsCPsLoaded(VARIANT_BOOL loaded) {
    const bool truth = loaded != VARIANT_FALSE;
    return Do(
        Id("IDevice.IsCPsLoaded.put"), [&] { m_propertiesLoaded = truth; }, truth);
}

STDMETHODIMP Device::get_GetHardwareModel(BSTR* model) {
    return Answer(Id("IDevice.GetHardwareModel.get"), model, [&] { return m_hardwareModel; });
}

STDMETHODIMP Device::put_SetHardwareModel(BSTR model) {
    return Do(
        Id("IDevice.SetHardwareModel.put"), [&] { m_hardwareModel = com::View(model); }, model);
}

}  // namespace quorvex
