// The control object by which tests, the bench and the demo steer the host. Every instance steers
// the same process-wide book of calls.
#pragma once

#include "com/class_info.h"
#include "com/dual.h"
#include "com/object.h"
#include "quorvexsim_h.h"

namespace quorvex {

namespace com = quillon::com;

class Control final : public com::Object<com::Dual<ISimulator>, com::ErrorInfoSupport> {
public:
    STDMETHODIMP OpenNetwork(BSTR path, INetwork** network) override;
    STDMETHODIMP SaveNetwork(INetwork* network, BSTR path) override;
    STDMETHODIMP Neurons(INetwork* network, BSTR* lines) override;
    STDMETHODIMP Fail(BSTR member, long nth, VARIANT_BOOL always, long result) override;
    STDMETHODIMP Answer(BSTR member, VARIANT value) override;
    STDMETHODIMP Delay(BSTR member, long milliseconds) override;
    STDMETHODIMP Call(BSTR member, long nth, IDispatch* handler) override;
    STDMETHODIMP Silence(BSTR neuron, VARIANT_BOOL silent) override;
    STDMETHODIMP Restore() override;
    STDMETHODIMP Count(BSTR member, long* calls) override;
    STDMETHODIMP get_Log(BSTR* lines) override;
    STDMETHODIMP put_Recording(VARIANT_BOOL on) override;
    STDMETHODIMP get_Recording(VARIANT_BOOL* on) override;
    STDMETHODIMP get_Reports(BSTR* lines) override;
    STDMETHODIMP get_Misuse(BSTR* lines) override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP get_LiveObjects(long* objects) override;
    STDMETHODIMP Advance(INetwork* network, long milliseconds) override;
    STDMETHODIMP Plug(INetwork* network, BSTR neuron, VARIANT_BOOL in) override;
    STDMETHODIMP SetInput(INetwork* network, BSTR neuron, long index, VARIANT_BOOL on) override;
    STDMETHODIMP SetApplicationStatus(INetwork* network, BSTR neuron,
                                      unsigned char status) override;
    STDMETHODIMP SetAnalog(INetwork* network, BSTR neuron, VARIANT counts) override;
    STDMETHODIMP CalibrationSwitch(INetwork* network, BSTR neuron, VARIANT_BOOL high) override;
    STDMETHODIMP RoomTemperature(INetwork* network, BSTR neuron, double celsius) override;
    STDMETHODIMP Room(INetwork* network, BSTR neuron, BSTR* state, long* status, long* inputs,
                      long* counts, VARIANT_BOOL* countsFixed, VARIANT_BOOL* switchHigh,
                      double* volts, double* celsius) override;
    STDMETHODIMP get_Logged(long* calls) override;
    STDMETHODIMP LogFrom(long call, BSTR* lines) override;
    STDMETHODIMP get_Counts(BSTR* lines) override;
    STDMETHODIMP get_Written(long* writes) override;
    STDMETHODIMP WrittenFrom(long write, BSTR* lines) override;
};

}  // namespace quorvex
