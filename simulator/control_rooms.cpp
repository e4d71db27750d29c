// The rooms on command.
#include <limits>

#include "com/gate.h"
#include "control.h"
#include "converted.h"
#include "living_room.h"
#include "network.h"
#include "refusal.h"

namespace quorvex {

namespace {

constexpr long kLongestAdvance = 86'400'000;

// Runs the action on the room unit of a network.
template <class Action>
HRESULT OnRoom(INetwork* network, BSTR neuron, Action&& action) {
    return com::Gate([&] {
        const auto controller = OwnNetwork(network)->Model().Find(com::View(neuron));
        if (!controller)
            Refuse(E_INVALIDARG, L"The network has no device \"" + com::Text(neuron) + L"\"");
        action(*controller);
    });
}

std::optional<std::int16_t> CountsOf(const VARIANT& counts) {
    if (counts.vt == VT_EMPTY) return std::nullopt;
    const auto number = Converted(counts, VT_I2);
    if (!number) Refuse(E_INVALIDARG, L"A count is a whole number of 16 bits with sign");
    return number->iVal;
}

}  // namespace

STDMETHODIMP Control::Advance(INetwork* network, long milliseconds) {
    return com::Gate([&] {
        if (milliseconds < 0 || milliseconds > kLongestAdvance)
            Refuse(E_INVALIDARG, L"Time passes by 0 to 86,400,000 milliseconds");
        const auto own = OwnNetwork(network);
        for (const auto& controller : own->Model().controllers)
            quorvex::Advance(*controller, std::chrono::milliseconds(milliseconds));
    });
}

STDMETHODIMP Control::Plug(INetwork* network, BSTR neuron, VARIANT_BOOL in) {
    return OnRoom(network, neuron,
                  [&](RoomController& room) { quorvex::Plug(room, in != VARIANT_FALSE); });
}

STDMETHODIMP Control::SetInput(INetwork* network, BSTR neuron, long index, VARIANT_BOOL on) {
    return OnRoom(network, neuron, [&](RoomController& room) {
        quorvex::SetInput(room, index, on != VARIANT_FALSE);
    });
}

STDMETHODIMP Control::SetApplicationStatus(INetwork* network, BSTR neuron, unsigned char status) {
    return OnRoom(network, neuron,
                  [&](RoomController& room) { quorvex::SetApplicationStatus(room, status); });
}

STDMETHODIMP Control::SetAnalog(INetwork* network, BSTR neuron, VARIANT counts) {
    return OnRoom(network, neuron,
                  [&](RoomController& room) { FixAnalog(room, CountsOf(counts)); });
}

STDMETHODIMP Control::CalibrationSwitch(INetwork* network, BSTR neuron, VARIANT_BOOL high) {
    return OnRoom(network, neuron,
                  [&](RoomController& room) { SetCalibrationSwitch(room, high != VARIANT_FALSE); });
}

STDMETHODIMP Control::RoomTemperature(INetwork* network, BSTR neuron, double celsius) {
    return OnRoom(network, neuron,
                  [&](RoomController& room) { SetRoomTemperature(room, celsius); });
}

STDMETHODIMP Control::Room(INetwork* network, BSTR neuron, BSTR* state, long* status, long* inputs,
                           long* counts, VARIANT_BOOL* countsFixed, VARIANT_BOOL* switchHigh,
                           double* volts, double* celsius) {
    if (!state || !status || !inputs || !counts || !countsFixed || !switchHigh || !volts ||
        !celsius)
        return E_POINTER;
    *state = nullptr;
    return OnRoom(network, neuron, [&](RoomController& room) {
        const RoomPanel panel = PanelOf(room);
        *status = panel.applicationStatus;
        *inputs = 0;
        for (std::size_t i = 0; i < panel.inputs.size(); ++i)
            if (panel.inputs[i]) *inputs |= 1L << i;
        *counts = panel.counts;
        com::PutResult(countsFixed, panel.countsFixed);
        com::PutResult(switchHigh, panel.switchHigh);
        *volts = panel.volts;
        *celsius = panel.temperature;
        *state = com::NewBstr(room.state);
    });
}

}  // namespace quorvex
