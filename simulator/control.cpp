#include "control.h"

#include <chrono>

#include "calls.h"
#include "com/gate.h"
#include "hosted.h"
#include "network.h"
#include "network_file.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

namespace {

MemberId MemberOf(BSTR name) {
    return Calls::MemberOf(com::View(name));
}

}  // namespace

STDMETHODIMP Control::OpenNetwork(BSTR path, INetwork** network) {
    return com::Gate(network, [&] { return com::Make<Network>(LoadNetwork(com::Text(path))); });
}

STDMETHODIMP Control::SaveNetwork(INetwork* network, BSTR path) {
    return com::Gate([&] { quorvex::SaveNetwork(OwnNetwork(network)->Model(), com::Text(path)); });
}

STDMETHODIMP Control::Neurons(INetwork* network, BSTR* lines) {
    return com::Gate(lines, [&] {
        std::wstring text;
        const auto own = OwnNetwork(network);
        for (const auto& controller : own->Model().controllers) text += controller->neuron + L'\n';
        return text;
    });
}

STDMETHODIMP Control::Fail(BSTR member, long nth, VARIANT_BOOL always, long result) {
    return com::Gate([&] {
        Calls::Process().Fail(MemberOf(member), nth, always != VARIANT_FALSE,
                              static_cast<HRESULT>(result));
    });
}

STDMETHODIMP Control::Answer(BSTR member, VARIANT value) {
    return com::Gate([&] { Calls::Process().Answer(MemberOf(member), com::Variant(value)); });
}

STDMETHODIMP Control::Delay(BSTR member, long milliseconds) {
    return com::Gate(
        [&] { Calls::Process().Delay(MemberOf(member), std::chrono::milliseconds(milliseconds)); });
}

STDMETHODIMP Control::Call(BSTR member, long nth, IDispatch* handler) {
    return com::Gate(
        [&] { Calls::Process().Call(MemberOf(member), nth, com::Ptr<IDispatch>(handler)); });
}

STDMETHODIMP Control::Silence(BSTR neuron, VARIANT_BOOL silent) {
    return com::Gate([&] {
        if (!IsHex(com::View(neuron), 12))
            Refuse(E_INVALIDARG, L"A Neuron ID has 12 hexadecimal digits");
        Calls::Process().Silence(Upper(com::View(neuron)), silent != VARIANT_FALSE);
    });
}

STDMETHODIMP Control::Restore() {
    return com::Gate([] { Calls::Process().Restore(); });
}

STDMETHODIMP Control::Count(BSTR member, long* calls) {
    return com::Gate(calls, [&] { return Calls::Process().Count(MemberOf(member)); });
}

STDMETHODIMP Control::get_Log(BSTR* lines) {
    return com::Gate(lines, [] { return Calls::Process().LogText(); });
}

STDMETHODIMP Control::put_Recording(VARIANT_BOOL on) {
    return com::Gate([&] { Calls::Process().SetRecording(on != VARIANT_FALSE); });
}

STDMETHODIMP Control::get_Recording(VARIANT_BOOL* on) {
    return com::Gate(on, [] { return Calls::Process().IsRecording(); });
}

STDMETHODIMP Control::get_Reports(BSTR* lines) {
    return com::Gate(lines, [] { return Calls::Process().ReportsText(); });
}

STDMETHODIMP Control::get_Misuse(BSTR* lines) {
    return com::Gate(lines, [] { return Calls::Process().MisuseText(); });
}

STDMETHODIMP Control::Clear() {
    return com::Gate([] { Calls::Process().Clear(); });
}

STDMETHODIMP Control::get_LiveObjects(long* objects) {
    return com::Gate(objects, [] { return LiveCount::Alive(); });
}

STDMETHODIMP Control::get_Logged(long* calls) {
    return com::Gate(calls, [] { return Calls::Process().Logged(); });
}

STDMETHODIMP Control::LogFrom(long call, BSTR* lines) {
    return com::Gate(lines, [&] { return Calls::Process().LogText(call); });
}

STDMETHODIMP Control::get_Counts(BSTR* lines) {
    return com::Gate(lines, [] { return Calls::Process().CountsText(); });
}

STDMETHODIMP Control::get_Written(long* writes) {
    return com::Gate(writes, [] { return Calls::Process().Writes().Count(); });
}

STDMETHODIMP Control::WrittenFrom(long write, BSTR* lines) {
    return com::Gate(lines, [&] { return Calls::Process().Writes().Text(write); });
}

}  // namespace quorvex
