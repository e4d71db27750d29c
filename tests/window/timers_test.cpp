// When the five timers run, and that a tick never runs inside itself.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Timers : public WindowTest {
protected:
    // Takes the timer messages of a window from the queue, so none of them runs.
    static bool TicksByItself(const frmVantor& window, Timer timer) {
        MSG message{};
        const auto seen = [&] {
            const auto id = static_cast<WPARAM>(timer);
            while (PeekMessageW(&message, window.Handle(), WM_TIMER, WM_TIMER, PM_REMOVE))
                if (message.wParam == id) return true;
            return false;
        };
        for (int waited = 0; waited < 200; ++waited) {
            if (seen()) return true;
            Sleep(10);
        }
        return false;
    }
};

TEST_F(Timers, PollingRateOf25GivesHalfASecond) {
    const Window window = Open();
    EXPECT_EQ(window->Interval(Timer::kTmrPolling), 500u);
    EXPECT_EQ(window->Interval(Timer::kTmrAppStatus), 1000u);
    EXPECT_EQ(window->Interval(Timer::kTimer1), 500u);
}

TEST_F(Timers, PollingRateTimesTwentyMilliseconds) {
    const Window window = Open();
    const std::pair<float, std::uint32_t> kRates[] = {{1.0F, 20},     {0.5F, 10}, {12.5F, 250},
                                                      {250.0F, 5000}, {0.0F, 0},  {-3.0F, 0}};
    for (const auto& [rate, interval] : kRates) {
        window->SetPollingRate(rate);
        EXPECT_EQ(window->Interval(Timer::kTmrPolling), interval) << rate;
        EXPECT_EQ(window->Interval(Timer::kTmrAppStatus), 1000u) << rate;
    }
}

TEST_F(Timers, RateOfNothingKillsTheMainViewTimer) {
    const Window window = Open();
    window->SetPollingRate(1);
    LetTimersTick();
    ASSERT_TRUE(TicksByItself(*window, Timer::kTmrPolling));
    window->SetPollingRate(0);
    EXPECT_FALSE(KillTimer(window->Handle(), static_cast<UINT_PTR>(Timer::kTmrPolling)))
        << "it still ran";
}

TEST_F(Timers, ListAndHardwareTimersBelongToTheShownTab) {
    const Window window = Open();
    struct Expected {
        int tab;
        std::uint32_t nvs;
        std::uint32_t hw;
    };
    const Expected kTabs[] = {
        {kTabHw, 0, 500},   {kTabMain, 0, 0},          {kTabTest, 500, 0},
        {kTabSetup, 0, 0},  {kTabCalibration, 0, 300}, {kTabGeneralData, 0, 0},
        {kTabTune, 500, 0}, {kTabLabelPrint, 0, 0},    {kTabTest, 500, 0},
        {kTabHw, 0, 500},   {kTabCalibration, 0, 300}, {kTabTune, 500, 0},
    };
    for (const Expected& expected : kTabs) {
        SCOPED_TRACE(expected.tab);
        window->SelectTab(expected.tab);
        EXPECT_EQ(window->SelectedTab(), expected.tab);
        EXPECT_EQ(window->Interval(Timer::kTmrNvs), expected.nvs);
        EXPECT_EQ(window->Interval(Timer::kTmrHw), expected.hw);
        // A timer that runs can be killed, and only such a one.
        const auto runs = [&](Timer timer) {
            return KillTimer(window->Handle(), static_cast<UINT_PTR>(timer)) != FALSE;
        };
        EXPECT_EQ(runs(Timer::kTmrNvs), expected.nvs != 0);
        EXPECT_EQ(runs(Timer::kTmrHw), expected.hw != 0);
        EXPECT_EQ(window->Interval(Timer::kTmrPolling), 500u) << "not touched by a tab change";
        EXPECT_EQ(window->Interval(Timer::kTmrAppStatus), 1000u);
        EXPECT_EQ(window->Interval(Timer::kTimer1), 500u);
    }
}

TEST_F(Timers, TicksComeByThemselves) {
    const Window window = Open();
    window->SelectTab(kTabTest);
    window->SetPollingRate(25);
    LetTimersTick();
    for (const Timer timer : {Timer::kTmrPolling, Timer::kTmrNvs, Timer::kTmrAppStatus})
        EXPECT_TRUE(TicksByItself(*window, timer)) << static_cast<UINT_PTR>(timer);
    window->SelectTab(kTabHw);
    EXPECT_TRUE(TicksByItself(*window, Timer::kTmrHw));
}

TEST_F(Timers, TimerMessageIsATick) {
    const Window window = Open();
    SendMessageW(window->Handle(), WM_TIMER, static_cast<WPARAM>(Timer::kTmrPolling), 0);
    EXPECT_EQ(Host().Count(L"Points.Item"), 1);
    for (const WPARAM none : {0, 6, 4711}) SendMessageW(window->Handle(), WM_TIMER, none, 0);
    EXPECT_EQ(Host().Count(L"Points.Item"), 1) << "no such timer";
}

struct FirstCall {
    frmVantor::Timer timer;
    const wchar_t* member;
};

const FirstCall kFirstCalls[] = {
    {frmVantor::Timer::kTmrPolling, L"IDevice.NetworkVariables.get"},
    {frmVantor::Timer::kTmrNvs, L"IDevice.NetworkVariables.get"},
    {frmVantor::Timer::kTmrHw, L"IDevice.Files.get"},
    {frmVantor::Timer::kTmrAppStatus, L"IDevice.Files.get"},
    {frmVantor::Timer::kTimer1, L"IDevice.Files.get"},
};

TEST_F(Timers, TickInsideItsOwnHandlerIsLeftOut) {
    const Window window = Open();
    for (const auto& [timer, member] : kFirstCalls) {
        SCOPED_TRACE(static_cast<UINT_PTR>(timer));
        Host().Clear();
        int inside = 0;
        Host().Call(member, 1, [&, tick = timer] {
            ++inside;
            window->Tick(tick);
        });
        window->Tick(timer);
        EXPECT_EQ(inside, 1);
        EXPECT_EQ(Host().Count(member), 1);
        window->Tick(timer);
        EXPECT_EQ(Host().Count(member), 2) << "the next one is done";
    }
}

TEST_F(Timers, TickOfAnotherTimerInsideAHandlerIsDone) {
    const Window window = Open();
    int inside = 0;
    Host().Call(L"IDevice.NetworkVariables.get", 1, [&] {
        ++inside;
        window->Tick(Timer::kTmrNvs);
    });
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(Host().Count(L"Points.Item"), 2);
}

TEST_F(Timers, HostFailureInATickIsSilentAndTheNextTickTriesAgain) {
    const Window window = Open();
    for (const auto& [timer, member] : kFirstCalls) {
        SCOPED_TRACE(static_cast<UINT_PTR>(timer));
        Host().Clear();
        Host().Fail(member);
        window->Tick(timer);
        window->Tick(timer);
        EXPECT_EQ(Host().Count(member), 2);
    }
    EXPECT_TRUE(window->IsOpen());
}

TEST_F(Timers, ClosedWindowTicksNoMore) {
    const Window window = Open();
    window->Unload();
    Host().Clear();
    for (const FirstCall& one : kFirstCalls) window->Tick(one.timer);
    EXPECT_EQ(Host().Log(), Lines());
}

}  // namespace
}  // namespace quillon::test
