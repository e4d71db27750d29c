// The network object: a loaded network file, to which device objects are bound.
#pragma once

#include <memory>
#include <string>

#include "com/class_info.h"
#include "com/dual.h"
#include "hosted.h"
#include "network_model.h"
#include "quorvex_h.h"

namespace quorvex {

// By these the host tells its own objects from others'. Neither counts as a call of the host.
struct IOwnNetwork : IUnknown {
    virtual const NetworkModel& Model() const = 0;

protected:
    ~IOwnNetwork() = default;
};
struct IOwnDevice : IUnknown {
    virtual std::wstring Neuron() const = 0;

protected:
    ~IOwnDevice() = default;
};

// The network as this host's own. Refuses (E_INVALIDARG) another's, and none.
com::Ptr<IOwnNetwork> OwnNetwork(INetwork* network);

}  // namespace quorvex

__CRT_UUID_DECL(quorvex::IOwnNetwork, 0xB35270F2, 0x2B7E, 0x4C8B, 0x9A, 0x3F, 0xE1, 0x5A, 0x0C,
                0xA4, 0x6D, 0x11)
__CRT_UUID_DECL(quorvex::IOwnDevice, 0x5E6E7C0B, 0x4D0A, 0x4E5C, 0x8C, 0x57, 0x2A, 0x97, 0x31, 0xB8,
                0xF0, 0x22)

namespace quorvex {

class Network final : public Hosted<com::Dual<INetwork>, IOwnNetwork, com::ErrorInfoSupport> {
public:
    explicit Network(std::unique_ptr<NetworkModel> model) : m_model(std::move(model)) {}

    STDMETHODIMP get_Name(BSTR* name) override;
    STDMETHODIMP Report(long* code, IDevice** device) override;

    const NetworkModel& Model() const override { return *m_model; }

private:
    std::unique_ptr<NetworkModel> m_model;
};

}  // namespace quorvex
