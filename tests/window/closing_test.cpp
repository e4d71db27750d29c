// Closing the window at any moment: inside a tick, while it loads, during an export, under a box.
#include "window/host_calls.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Closing : public WindowTest {
protected:
    static void PostClose() {
        if (const Window window = WindowOf(kLeft)) PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
    }
    static void CloseNow() {
        if (const Window window = WindowOf(kLeft)) window->Unload();
    }
    void ExpectGone(const com::Ptr<CDevice>& device) {
        EXPECT_FALSE(WindowOf(kLeft));
        CloseAll();
        Host().Restore();
        EXPECT_TRUE(device);
    }
    enum class State { kAbsent, kOpen };
    // Acts once to see what that calls, then closes the window at each of these calls.
    void CloseAtEachCall(State before, const std::function<void(const com::Ptr<CDevice>&)>& act,
                         void (*close)()) {
        const auto device = MakeDevice();
        const auto prepare = [&] {
            if (before == State::kOpen) ShowFocus(device);
            Host().Clear();
        };
        prepare();
        act(device);
        const auto calls = Tried(CallsOf(Host().Log()));
        ASSERT_FALSE(calls.empty());
        CloseAll();
        for (const auto& [member, nth] : calls) {
            SCOPED_TRACE(Narrow(member) + " " + std::to_string(nth));
            prepare();
            Host().Call(member, nth, close);
            act(device);
            CloseAll();
            Host().Restore();
            Poster::Drain();
        }
    }
    static void Show(const com::Ptr<CDevice>& device) {
        IDispatch* none = nullptr;
        long rate = 25;
        EXPECT_EQ(device.As<IDeviceEx>()->ShowFocus(&none, &rate), S_OK);
    }
};

TEST_F(Closing, CloseBoxUnloadsTheWindow) {
    const Window window = Open();
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(window->Handle(), nullptr);
}

TEST_F(Closing, WindowDestroyedFromOutsideIsUnloadedToo) {
    const Window window = Open();
    DestroyWindow(window->Handle());
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Closing, UnloadingTwiceDoesNothing) {
    const Window window = Open();
    window->Unload();
    window->Unload();
    window->Update();
    window->SelectTab(kTabTest);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Closing, PostedCloseInTheRowLoopEndsTheLoading) {
    for (long row = 1; row <= 11; ++row) {
        const auto device = MakeDevice();
        Host().Call(L"Points.Item", row, PostClose);
        Show(device);
        EXPECT_LE(Host().Count(L"Points.Item"), row + 1);
        EXPECT_EQ(Host().Count(L"IDevice.State.get"), 0);
        ExpectGone(device);
        CloseAll();
    }
}

TEST_F(Closing, PostedCloseAtAnyCallOfTheLoading) {
    CloseAtEachCall(State::kAbsent, Show, PostClose);
}

TEST_F(Closing, WindowGoneInsideAnyCallOfTheLoading) {
    CloseAtEachCall(State::kAbsent, Show, CloseNow);
}

TEST_F(Closing, CloseWhileAnotherWindowsLoadingHandlesMessages) {
    const Window left = Open(kLeft);
    const auto right = MakeDevice(kRight);
    Host().Call(L"Points.Item", 2, PostClose);
    Show(right);
    EXPECT_FALSE(left->IsOpen());
    EXPECT_EQ(Rows(PageItem(*WindowOf(kRight), kTabTest, IDC_LVMONITOR)).size(), 3u);
}

template <frmVantor::Timer kTimer>
void TickOnce(const std::shared_ptr<frmVantor>& window) {
    if (window) window->Tick(kTimer);
}

using TickFunction = void (*)(const std::shared_ptr<frmVantor>&);
constexpr TickFunction kTicks[] = {
    TickOnce<frmVantor::Timer::kTmrPolling>, TickOnce<frmVantor::Timer::kTmrAppStatus>,
    TickOnce<frmVantor::Timer::kTmrNvs>, TickOnce<frmVantor::Timer::kTmrHw>,
    TickOnce<frmVantor::Timer::kTimer1>};

TEST_F(Closing, WindowGoneInsideAnyCallOfATick) {
    for (const TickFunction tick : kTicks)
        for (const auto close : {PostClose, CloseNow})
            CloseAtEachCall(
                State::kOpen, [&](const com::Ptr<CDevice>&) { tick(WindowOf(kLeft)); }, close);
}

TEST_F(Closing, WindowGoneInsideAnyCallOfUpdate) {
    for (const auto close : {PostClose, CloseNow})
        CloseAtEachCall(
            State::kOpen, [](const com::Ptr<CDevice>&) { WindowOf(kLeft)->Update(); }, close);
}

TEST_F(Closing, WindowGoneInsideAnyCallOfAnEvent) {
    for (const auto close : {PostClose, CloseNow})
        CloseAtEachCall(
            State::kOpen,
            [](const com::Ptr<CDevice>& device) {
                com::Bstr point(L"NVS\\0");
                com::Bstr text(L"x");
                long reason = 0;
                EXPECT_EQ(device.As<IDevice>()->NVCPChanged(point.InOut()), S_OK);
                EXPECT_EQ(device.As<IDevice>()->ChangedName(text.InOut(), &reason), S_OK);
                EXPECT_EQ(device.As<IDevice>()->ChangedStatus(text.InOut(), &reason), S_OK);
                device->RaiseChangedApplication();
            },
            close);
}

TEST_F(Closing, WindowGoneInsideAnyCallOfAButton) {
    for (const auto close : {PostClose, CloseNow})
        CloseAtEachCall(
            State::kOpen,
            [](const com::Ptr<CDevice>&) {
                Press(*WindowOf(kLeft), kTabHw, IDC_CMDWINK);
                if (const Window window = WindowOf(kLeft)) Press(*window, kTabMain, IDC_MAIN_RESET);
            },
            close);
}

TEST_F(Closing, WindowThatNothingElseHoldsLivesUntilItsButtonIsDone) {
    const std::weak_ptr<frmVantor> window = Open();
    const HWND button = PageItem(*window.lock(), kTabHw, IDC_CMDWINK);
    Host().Call(L"IDevice.Wink", 1, [&] {
        window.lock()->Unload();
        EXPECT_FALSE(window.expired()) << "the page is still at work";
    });
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_EQ(Host().Count(L"IDevice.Wink"), 1);
    EXPECT_TRUE(window.expired());
}

TEST_F(Closing, LastReferenceDroppedInsideATick) {
    for (const TickFunction tick : kTicks) {
        auto device = MakeDevice();
        Window window = ShowFocus(device);
        device.Reset();
        for (const wchar_t* member : {L"IDevice.NetworkVariables.get", L"IFiles.Item"})
            Host().Call(member, 1, [&] {
                if (window->IsOpen()) window->Unload();
            });
        tick(window);
        window->Unload();
        window.reset();
        Host().Restore();
        EXPECT_EQ(Host().LiveObjects(), 1) << "the network alone";
    }
}

// ---- under a box

TEST_F(Closing, WhileTheAboutBoxIsUp) {
    const Window window = Open();
    Boxes().Answer(IDOK, [&] { window->Unload(); });
    Choose(*window, IDM_ABOUT);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Closing, WhileAMessageBoxIsUp) {
    const Window window = Open();
    SetActiveWindow(window->Handle());
    Boxes().Answer(IDOK, [&] { SendMessageW(window->Handle(), WM_CLOSE, 0, 0); });
    Choose(*window, IDM_DOCUMENTATION);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Closing, TwoWindowsWhileABoxOfOneIsUp) {
    const Window left = Open(kLeft);
    const Window right = Open(kRight);
    Boxes().Answer(IDOK, [] { CloseAll(); });
    Choose(*left, IDM_ABOUT);
    EXPECT_TRUE(ui::OpenForms().empty());
}

}  // namespace
}  // namespace quillon::test
