#include "network.h"

#include "refusal.h"

namespace quorvex {

namespace {

// Another's device object tells its Neuron ID as a caller would learn it.
std::wstring NeuronOf(IDevice* device) {
    const com::Ptr<IDevice> held(device);
    if (const auto own = held.As<IOwnDevice>()) return own->Neuron();
    com::Bstr neuron;
    com::Check(device->get_NeuronID(neuron.Out()));
    return neuron.Text();
}

}  // namespace

com::Ptr<IOwnNetwork> OwnNetwork(INetwork* network) {
    auto own = com::Ptr<INetwork>(network).As<IOwnNetwork>();
    if (!own) Refuse(E_INVALIDARG, L"This is no network of the simulated host");
    return own;
}

STDMETHODIMP Network::get_Name(BSTR* name) {
    return Answer(Id("INetwork.Name.get"), name, [&] { return m_model->name; });
}

STDMETHODIMP Network::Report(long* code, IDevice** device) {
    return Do(
        Id("INetwork.Report"),
        [&] {
            if (!code) throw com::Error(E_POINTER);
            if (!device || !*device) RefuseMisuse(L"A report came without a device");
            Calls::Process().NoteReport(*code, NeuronOf(*device));
        },
        code ? *code : 0, static_cast<IUnknown*>(device ? *device : nullptr));
}

}  // namespace quorvex
