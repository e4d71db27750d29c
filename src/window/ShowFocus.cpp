// CDevice: opening and closing the device's windows.
#include "com/late.h"
#include "editors/frmVantorSplash.h"
#include "host_members.h"
#include "plugin/CDevice.h"
#include "window/frmVantor.h"

namespace quillon {

namespace {

const wchar_t* const kWindowTag = L"frmVantor";
constexpr std::size_t kNeuronIdDigits = 12;

// The window of the host's Owner object: by IOleWindow, or by its hWnd property; none otherwise.
HWND WindowOf(IDispatch* owner) {
    if (!owner) return nullptr;
    HWND window = nullptr;
    if (const auto ole = com::Ptr<IDispatch>(owner).As<IOleWindow>())
        if (SUCCEEDED(ole->GetWindow(&window)) && IsWindow(window)) return window;
    window = com::Quietly([&] {
        return reinterpret_cast<HWND>(
            static_cast<LONG_PTR>(com::Get(owner, host::owner::kHWnd).AsNumber()));
    });
    return IsWindow(window) ? window : nullptr;
}

std::wstring NeuronIdOf(IDevice& device) {
    com::Bstr neuronId;
    com::Check(device.get_NeuronID(neuronId.Out()));
    return neuronId.Text();
}

// The open window with a tag, without handling messages.
std::shared_ptr<ui::Form> WindowWithTag(const std::wstring& tag) {
    for (const auto& form : ui::OpenForms())
        if (form->Tag() == tag) return form;
    return nullptr;
}

}  // namespace

void CDevice::OpenWindow(frmVantor& window, IDispatch* owner, std::int32_t pollingRate,
                         const std::wstring& neuronId) {
    std::shared_ptr<frmVantorSplash> splash;
    try {
        splash = frmVantorSplash::Create();
        window.SetDevice(this);
        window.SetPollingRate(static_cast<float>(pollingRate));
        window.SetTag(kWindowTag + neuronId);
        window.SetOwner(owner);
        splash->SetTag(neuronId);
        splash->SetLinkedForm(window.weak_from_this());
        splash->Show(WindowOf(owner));
        window.Load();
        splash->Raise();
    } catch (...) {
        // What was never shown could not be closed by anyone.
        if (splash && !splash->Handle()) splash->Unload();
        if (!IsWindowVisible(window.Handle())) window.Unload();
        throw;
    }
}

void CDevice::IDeviceEx_ShowFocus(IDispatch* owner, std::int32_t pollingRate) {
    com::Quietly([&] {
        ReadFactoryData();
        auto form = ui::FindForm(
            [&](const ui::Form& one) { return one.Tag() == kWindowTag + NeuronIdOf(*moDevice); });
        if (form) return form->Show(nullptr);
        const std::wstring neuronId = NeuronIdOf(*moDevice);
        // Messages were handled above, so another call may have made the window meanwhile. From
        // here to the tag none are.
        form = WindowWithTag(kWindowTag + neuronId);
        if (form) return form->Show(nullptr);
        const auto window = frmVantor::Create();
        if (window) OpenWindow(*window, owner, pollingRate, neuronId);
    });
}

void CDevice::IDeviceEx_CloseFocus() {
    com::Quietly([&] {
        while (const auto form = ui::FindForm([&](const ui::Form& one) {
                   return std::wstring_view(one.Tag()).substr(0, kNeuronIdDigits) ==
                          NeuronIdOf(*moDevice);
               }))
            form->Unload();
    });
}

}  // namespace quillon
