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
};

}  // namespace quorvex
