// ShowFocus and CloseFocus with real windows; the splash.
#include <ole2.h>

#include "com/module.h"
#include "editors/frmVantorSplash.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Focus : public WindowTest {
protected:
    static void Show(const com::Ptr<CDevice>& device, IDispatch* owner = nullptr) {
        long rate = 25;
        EXPECT_EQ(device.As<IDeviceEx>()->ShowFocus(&owner, &rate), S_OK);
    }
    static void Close(const com::Ptr<CDevice>& device) {
        EXPECT_EQ(device.As<IDeviceEx>()->CloseFocus(), S_OK);
    }
    static Lines Tags() {
        Lines tags;
        for (const auto& form : ui::OpenForms()) tags.push_back(form->Tag());
        return tags;
    }
};

const std::wstring kLeftTag = L"frmVantor" + std::wstring(kLeft);
const std::wstring kRightTag = L"frmVantor" + std::wstring(kRight);

TEST_F(Focus, OpensTheWindowAndItsSplash) {
    const auto device = MakeDevice();
    Show(device);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
    EXPECT_EQ(WindowOf(kLeft)->Interval(Timer::kTmrPolling), 500u);
}

TEST_F(Focus, SecondCallShowsTheSameWindow) {
    const auto device = MakeDevice();
    Show(device);
    const HWND window = WindowOf(kLeft)->Handle();
    ShowWindow(window, SW_MINIMIZE);
    Show(device);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
    EXPECT_EQ(WindowOf(kLeft)->Handle(), window);
    EXPECT_FALSE(IsIconic(window));
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(Focus, SecondObjectOfTheSameDeviceGetsTheSameWindow) {
    const auto first = MakeDevice();
    const auto second = MakeDevice();
    Show(first);
    Show(second);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
}

TEST_F(Focus, TwoDevicesHaveTwoWindows) {
    const auto left = MakeDevice(kLeft);
    const auto right = MakeDevice(kRight);
    Show(left);
    Show(right);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft, kRightTag, kRight}));
    EXPECT_EQ(Panel(*WindowOf(kLeft), 1), L"Left");
    EXPECT_EQ(Panel(*WindowOf(kRight), 1), L"Right");
}

TEST_F(Focus, CallAskedForInsideTheOpeningMakesNoSecondWindow) {
    const auto device = MakeDevice();
    int nested = 0;
    const auto again = [&] {
        ++nested;
        Show(device);
    };
    Posted().Post(again);
    Host().Call(L"IFiles.Item", 2, [&] { Posted().Post(again); });
    Host().Call(L"Points.Item", 1, again);
    Host().Call(L"IDevice.State.get", 1, again);
    Show(device);
    EXPECT_EQ(nested, 4);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
}

TEST_F(Focus, CallInsideTheLookThroughMakesNoSecondWindow) {
    const auto left = MakeDevice(kLeft);
    const auto right = MakeDevice(kRight);
    Show(left);
    int nested = 0;
    Host().Call(L"IFile.ValueText.get", 1, [&] {
        Posted().Post([&] {
            ++nested;
            Show(right);
        });
    });
    Show(right);
    EXPECT_EQ(nested, 1);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft, kRightTag, kRight}));
}

TEST_F(Focus, WindowHoldsTheDeviceWhenTheHostLetsGo) {
    auto device = MakeDevice();
    const Window window = ShowFocus(device);
    device.Reset();
    CloseNetwork();
    EXPECT_GT(Host().LiveObjects(), 0);
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(PageText(*window, kTabMain, IDC_LBLNV_FIRST), L"22.50 degrees Celsius");
    window->Unload();
    EXPECT_EQ(Host().LiveObjects(), 0);
}

TEST_F(Focus, ReleaseInsideTheOpeningLeavesTheWindowWorking) {
    auto device = MakeDevice();
    IDeviceEx* const bare = device.As<IDeviceEx>().Get();
    Host().Call(L"Points.Item", 3, [&] { Posted().Post([&] { device.Reset(); }); });
    IDispatch* none = nullptr;
    long rate = 25;
    EXPECT_EQ(bare->ShowFocus(&none, &rate), S_OK);
    EXPECT_FALSE(device);
    ASSERT_TRUE(WindowOf(kLeft));
    EXPECT_EQ(Rows(PageItem(*WindowOf(kLeft), kTabTest, IDC_LVMONITOR)).size(), 3u);
}

TEST_F(Focus, HostThatLetsGoBeforeTheWindowIsThereGetsNoCrash) {
    auto device = MakeDevice();
    IDeviceEx* const bare = device.As<IDeviceEx>().Get();
    Posted().Post([&] { device.Reset(); });
    IDispatch* none = nullptr;
    long rate = 25;
    EXPECT_EQ(bare->ShowFocus(&none, &rate), S_OK);
    EXPECT_FALSE(device);
}

// ---- CloseFocus

TEST_F(Focus, CloseFocusClosesTheSplashAndLeavesTheDeviceWindow) {
    const auto device = MakeDevice();
    Show(device);
    Close(device);
    EXPECT_EQ(Tags(), Lines{kLeftTag});
    EXPECT_TRUE(IsWindowVisible(WindowOf(kLeft)->Handle()));
    Close(device);
    EXPECT_EQ(Tags(), Lines{kLeftTag});
}

TEST_F(Focus, CloseFocusTouchesNoOtherDevice) {
    const auto left = MakeDevice(kLeft);
    const auto right = MakeDevice(kRight);
    Show(left);
    Show(right);
    Close(left);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kRightTag, kRight}));
}

TEST_F(Focus, CloseFocusWithAnEmptyNeuronIdClosesNoTaggedWindow) {
    const auto device = MakeDevice();
    Show(device);
    Host().Answer(L"IDevice.NeuronID.get", L"");
    Close(device);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
}

TEST_F(Focus, CloseFocusOfAFailingHostEndsQuietly) {
    const auto device = MakeDevice();
    Show(device);
    Host().FailAlways(L"IDevice.NeuronID.get");
    Close(device);
    EXPECT_EQ(Tags(), (Lines{kLeftTag, kLeft}));
}

TEST_F(Focus, CloseFocusWithoutWindowsAsksNothing) {
    const auto device = MakeDevice();
    Close(device);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Focus, CloseFocusInsideTheOpeningClosesTheSplashOnly) {
    const auto device = MakeDevice();
    Host().Call(L"Points.Item", 2, [&] { Close(device); });
    Show(device);
    EXPECT_EQ(Tags(), Lines{kLeftTag});
    EXPECT_TRUE(IsWindowVisible(WindowOf(kLeft)->Handle()));
}

// ---- the owner

class OleWindowObject final : public com::Object<IDispatch, IOleWindow> {
public:
    explicit OleWindowObject(HWND window) : m_window(window) {}
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
    STDMETHODIMP GetWindow(HWND* window) override {
        *window = m_window;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }

private:
    HWND m_window;
};

// Has a property hWnd.
class HandleObject final : public com::Object<IDispatch> {
public:
    explicit HandleObject(HWND window) : m_window(window) {}
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = 7;
        return _wcsicmp(names[0], L"hWnd") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (member != 7 || !result) return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_I4;
        result->lVal = static_cast<LONG>(reinterpret_cast<LONG_PTR>(m_window));
        return S_OK;
    }

private:
    HWND m_window;
};

class FocusOwner : public Focus {
protected:
    void SetUp() override {
        Focus::SetUp();
        m_host = CreateWindowW(L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr,
                               nullptr, nullptr, nullptr);
    }
    void TearDown() override {
        CloseAll();
        DestroyWindow(m_host);
        Focus::TearDown();
    }
    HWND SplashOwner(IDispatch* owner) {
        const auto device = MakeDevice();
        Show(device, owner);
        const HWND found = GetWindow(SplashOf(kLeft), GW_OWNER);
        CloseAll();
        return found;
    }
    HWND HostWindow() const { return m_host; }

private:
    HWND m_host = nullptr;
};

TEST_F(FocusOwner, GivesItsWindowByIOleWindow) {
    EXPECT_EQ(SplashOwner(com::Make<OleWindowObject>(HostWindow()).Get()), HostWindow());
}

TEST_F(FocusOwner, GivesItsWindowByItsHWndProperty) {
    EXPECT_EQ(SplashOwner(com::Make<HandleObject>(HostWindow()).Get()), HostWindow());
}

TEST_F(FocusOwner, WithoutEitherThereIsNone) {
    EXPECT_EQ(SplashOwner(nullptr), nullptr);
    EXPECT_EQ(SplashOwner(MakeHandler([] {}).Get()), nullptr);
}

TEST_F(FocusOwner, HandleThatIsNoWindowIsNone) {
    const auto noWindow = reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x7FFF1234));
    EXPECT_EQ(SplashOwner(com::Make<OleWindowObject>(noWindow).Get()), nullptr);
    EXPECT_EQ(SplashOwner(com::Make<HandleObject>(noWindow).Get()), nullptr);
}

// ---- the splash

class Splash : public Focus {};

TEST_F(Splash, IsShownWithThePictureWithoutTakingTheFocus) {
    const auto device = MakeDevice();
    bool shown = false;
    HWND active = nullptr;
    Host().Call(L"IDevice.PollingPID.get", 1, [&] {
        shown = IsWindowVisible(SplashOf(kLeft)) != FALSE;
        active = GetActiveWindow();
    });
    Show(device);
    EXPECT_TRUE(shown) << "while the window loads";
    const HWND splash = SplashOf(kLeft);
    EXPECT_NE(active, splash);
    EXPECT_NE(GetActiveWindow(), splash);
    EXPECT_EQ(GetWindowLongW(splash, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_EQ(GetWindowLongW(splash, GWL_STYLE) & WS_CAPTION, 0) << "borderless";
    EXPECT_NE(SendDlgItemMessageW(splash, IDC_IMAGE1, STM_GETIMAGE, IMAGE_BITMAP, 0), 0);
    EXPECT_EQ(SendMessageW(splash, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
}

TEST_F(Splash, StandsOverTheWindowThatItIsLinkedTo) {
    const auto device = MakeDevice();
    Show(device);
    const auto splash = std::dynamic_pointer_cast<frmVantorSplash>(ui::OpenForms().back());
    ASSERT_TRUE(splash);
    EXPECT_EQ(splash->LinkedForm().lock(), WindowOf(kLeft));
    HWND above = WindowOf(kLeft)->Handle();
    while (above && above != splash->Handle()) above = GetWindow(above, GW_HWNDPREV);
    EXPECT_EQ(above, splash->Handle());
}

TEST_F(Splash, GoesWhenItsTimerOfFiveSecondsTicks) {
    EXPECT_EQ(frmVantorSplash::kMilliseconds, 5000u);
    const auto device = MakeDevice();
    Show(device);
    const HWND splash = SplashOf(kLeft);
    SendMessageW(splash, WM_TIMER, 99, 0);
    EXPECT_TRUE(IsWindow(splash)) << "another timer";
    SendMessageW(splash, WM_TIMER, frmVantorSplash::kTimer, 0);
    EXPECT_FALSE(IsWindow(splash));
    EXPECT_EQ(Tags(), Lines{kLeftTag});
}

TEST_F(Splash, TimerRunsUntilItTicks) {
    const auto device = MakeDevice();
    const DWORD start = GetTickCount();
    Show(device);
    StopTimers(*WindowOf(kLeft));
    EXPECT_TRUE(PumpUntil([&] { return !SplashOf(kLeft); }, 20000));
    EXPECT_GE(GetTickCount() - start, 4900u);
}

TEST_F(Splash, OutlivesItsWindowAndGoesByItself) {
    const auto device = MakeDevice();
    Show(device);
    WindowOf(kLeft)->Unload();
    EXPECT_EQ(Tags(), Lines{kLeft});
    SendMessageW(SplashOf(kLeft), WM_TIMER, frmVantorSplash::kTimer, 0);
    EXPECT_EQ(Tags(), Lines());
}

}  // namespace
}  // namespace quillon::test
