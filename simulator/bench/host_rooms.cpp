// The rooms of the network, by the control object of the simulated host.
#include "com/text.h"
#include "com/variant.h"
#include "host.h"

namespace quorvex::bench {
namespace {

VARIANT_BOOL Truth(bool truth) {
    return truth ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace

std::wstring Host::NetworkName() const {
    com::Bstr name;
    com::Check(m_network->get_Name(name.Out()));
    return name.Text();
}

void Host::Advance(long milliseconds) {
    com::Check(m_simulator->Advance(m_network.Get(), milliseconds));
}

void Host::Plug(const Room& room, bool in) {
    com::Check(m_simulator->Plug(m_network.Get(), com::Bstr(room.neuron).Get(), Truth(in)));
    com::Bstr state(Now(room).state);
    long reason = 0;
    com::Check(room.device->ChangedStatus(state.InOut(), &reason));
}

void Host::SetInput(const Room& room, long index, bool on) {
    com::Check(
        m_simulator->SetInput(m_network.Get(), com::Bstr(room.neuron).Get(), index, Truth(on)));
}

void Host::SetApplicationStatus(const Room& room, unsigned char status) {
    com::Check(
        m_simulator->SetApplicationStatus(m_network.Get(), com::Bstr(room.neuron).Get(), status));
}

void Host::SetAnalog(const Room& room, std::optional<std::int16_t> counts) {
    const com::Variant value = counts ? com::Variant(std::int32_t{*counts}) : com::Variant();
    com::Check(m_simulator->SetAnalog(m_network.Get(), com::Bstr(room.neuron).Get(), value));
}

void Host::SetCalibrationSwitch(const Room& room, bool high) {
    com::Check(
        m_simulator->CalibrationSwitch(m_network.Get(), com::Bstr(room.neuron).Get(), Truth(high)));
}

void Host::SetTemperature(const Room& room, double celsius) {
    com::Check(
        m_simulator->RoomTemperature(m_network.Get(), com::Bstr(room.neuron).Get(), celsius));
}

RoomNow Host::Now(const Room& room) const {
    RoomNow now;
    com::Bstr state;
    VARIANT_BOOL fixed = VARIANT_FALSE, high = VARIANT_FALSE;
    com::Check(m_simulator->Room(m_network.Get(), com::Bstr(room.neuron).Get(), state.Out(),
                                 &now.status, &now.inputs, &now.counts, &fixed, &high, &now.volts,
                                 &now.celsius));
    now.state = state.Text();
    now.countsFixed = fixed != VARIANT_FALSE;
    now.switchHigh = high != VARIANT_FALSE;
    return now;
}

}  // namespace quorvex::bench
