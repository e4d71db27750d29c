#include "support/host_objects.h"

#include <memory>
#include <utility>

#include "com/error.h"
#include "com/variant.h"
#include "quillon_h.h"

namespace quillon::test {

namespace {

class DispatchObject final : public com::Object<IDispatch> {
public:
    explicit DispatchObject(OnInvoke onInvoke) : m_onInvoke(std::move(onInvoke)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO*, UINT*) override {
        if (!arguments) return E_POINTER;
        const com::Ptr<IDispatch> hold(this);
        try {
            return m_onInvoke(member, *arguments);
        } catch (...) {
            return com::ResultOfCurrentException();
        }
    }

private:
    OnInvoke m_onInvoke;
};

constexpr UINT kRun = WM_APP + 1;
const wchar_t* const kPosterClass = L"QuillonTestPoster";

}  // namespace

com::Ptr<IDispatch> MakeDispatch(OnInvoke onInvoke) {
    return com::Ptr<IDispatch>::Adopt(com::Make<DispatchObject>(std::move(onInvoke)).Detach());
}

com::Ptr<IDispatch> MakeHandler(std::function<void()> function) {
    return MakeDispatch([function = std::move(function)](DISPID member, DISPPARAMS&) {
        if (member != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
        function();
        return S_OK;
    });
}

Event EventOf(DISPID id, const DISPPARAMS& arguments) {
    Event event{id, {}, VT_EMPTY};
    if (arguments.cArgs == 0) return event;
    event.type = arguments.rgvarg[0].vt;
    event.argument = event.type == (VT_BYREF | VT_BSTR) ? com::Text(*arguments.rgvarg[0].pbstrVal)
                                                        : L"(argument of another type)";
    return event;
}

Subscription::Subscription(IUnknown* device, OnInvoke onEvent) {
    const auto container = com::Ptr<IUnknown>(device).As<IConnectionPointContainer>();
    if (!container) throw com::Error(E_NOINTERFACE);
    com::Check(container->FindConnectionPoint(DIID___CDevice, m_point.Out()));
    com::Check(m_point->Advise(MakeDispatch(std::move(onEvent)).Get(), &m_cookie));
}

Subscription::Subscription(IUnknown* device)
    : Subscription(device, [this](DISPID id, DISPPARAMS& arguments) {
          m_events.push_back(EventOf(id, arguments));
          return S_OK;
      }) {}

void Subscription::Leave() {
    if (const auto point = std::exchange(m_point, nullptr)) point->Unadvise(m_cookie);
}

Poster::Poster() {
    WNDCLASSW description{};
    description.lpfnWndProc = OnMessage;
    description.hInstance = com::ModuleHandle();
    description.lpszClassName = kPosterClass;
    RegisterClassW(&description);  // fails from the second time on, which does not matter
    m_window = CreateWindowW(kPosterClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             description.hInstance, nullptr);
    if (!m_window) com::Check(HRESULT_FROM_WIN32(GetLastError()));
}

Poster::~Poster() {
    Discard();
    DestroyWindow(m_window);
}

void Poster::Post(std::function<void()> function) {
    const int round = m_round;
    auto work =
        std::make_unique<std::function<void()>>([this, round, function = std::move(function)] {
            if (round != m_round) return;
            --m_waiting;
            function();
        });
    ++m_waiting;
    if (PostMessageW(m_window, kRun, 0, reinterpret_cast<LPARAM>(work.get())))
        static_cast<void>(work.release());  // it is the window's
}

void Poster::Discard() {
    ++m_round;
    m_waiting = 0;
    Drain();
}

void Poster::Drain() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

LRESULT CALLBACK Poster::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kRun) return DefWindowProcW(window, message, wParam, lParam);
    const std::unique_ptr<std::function<void()>> work(
        reinterpret_cast<std::function<void()>*>(lParam));
    (*work)();
    return 0;
}

}  // namespace quillon::test
