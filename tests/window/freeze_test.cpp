// Resting while the device does not answer, and waking when it does.
#include "plugin/process_state.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Freezing : public WindowTest {
protected:
    static void Tick(const Window& window, int times = 1) {
        for (int tick = 0; tick < times; ++tick) window->Tick(Timer::kTmrPolling);
    }
    static void ExpectFrozen(const Window& window, bool frozen) {
        EXPECT_EQ(IsWindowEnabled(window->Item(IDC_SSTAB1)) != FALSE, !frozen);
        for (int tab = 0; tab < kTabCount; ++tab)
            EXPECT_EQ(IsWindowEnabled(window->PageWindow(tab)) != FALSE, !frozen) << tab;
        EXPECT_EQ(ActionMenuEnabled(*window), !frozen);
    }
    static std::wstring Label(const Window& window, int index) {
        return PageText(*window, kTabMain, IDC_LBLNV_FIRST + index);
    }
    static void TellStatus(const com::Ptr<CDevice>& device) {
        com::Bstr status(L"04");
        long reason = 0;
        EXPECT_EQ(device.As<IDevice>()->ChangedStatus(status.InOut(), &reason), S_OK);
    }
    static HWND Monitor(const Window& window) { return PageItem(*window, kTabTest, IDC_LVMONITOR); }
};

TEST_F(Freezing, QuestionMarkDisablesTabsPagesAndActionMenu) {
    const Window window = Open();
    ExpectFrozen(window, false);
    Tick(window);
    const std::wstring shown = Label(window, 0);
    Host().Silence(kLeft, true);
    Tick(window, 5);
    EXPECT_TRUE(window->Freeze());
    ExpectFrozen(window, true);
    EXPECT_EQ(Label(window, 0), shown);
    EXPECT_EQ(Label(window, 1), L"");
}

TEST_F(Freezing, LongerTextWithAQuestionMarkIsAValue) {
    const Window window = Open();
    for (const wchar_t* text : {L"?? ", L" ?", L"", L"\uFF1F"}) {
        Host().Answer(L"Point.Value.get", text);
        Tick(window);
        EXPECT_FALSE(window->Freeze());
    }
    ExpectFrozen(window, false);
}

TEST_F(Freezing, SilentTickDoesNotAdvanceTheMainView) {
    const Window window = Open();
    Host().Silence(kLeft, true);
    Tick(window, 2);
    EXPECT_EQ(Only(Host().Log(), L"Points.Item"),
              (Lines{L"Points.Item(\"1\")", L"Points.Item(\"1\")"}));
    EXPECT_EQ(Host().Count(L"Point.SNVType.get"), 0);
}

TEST_F(Freezing, TestListFreezesToo) {
    const Window window = Open();
    window->SelectTab(kTabTest);
    Host().Silence(kLeft, true);
    window->Tick(Timer::kTmrNvs);
    ExpectFrozen(window, true);
}

TEST_F(Freezing, FocusLeavesThePageFirst) {
    const Window window = Open();
    window->SelectTab(kTabTest);
    SetFocus(PageItem(*window, kTabTest, IDC_LVMONITOR));
    ASSERT_EQ(GetFocus(), PageItem(*window, kTabTest, IDC_LVMONITOR));
    window->SetFreeze(true);
    EXPECT_EQ(GetFocus(), window->Handle());
    window->SetFreeze(false);
    EXPECT_EQ(GetFocus(), window->Item(IDC_SSTAB1));
}

TEST_F(Freezing, FocusElsewhereIsLeftAlone) {
    const Window left = Open();
    const Window right = Open(kRight);
    SetFocus(right->Item(IDC_SSTAB1));
    left->SetFreeze(true);
    EXPECT_EQ(GetFocus(), right->Item(IDC_SSTAB1));
    left->SetFreeze(false);
    EXPECT_EQ(GetFocus(), right->Item(IDC_SSTAB1));
}

TEST_F(Freezing, NextGoodReadThaws) {
    const Window window = Open();
    Host().Silence(kLeft, true);
    Tick(window);
    Host().Silence(kLeft, false);
    Tick(window);
    EXPECT_FALSE(window->Freeze());
    ExpectFrozen(window, false);
    EXPECT_NE(Label(window, 0), L"");
}

TEST_F(Freezing, GoodReadThatFailsLaterStillThaws) {
    const Window window = Open();
    window->SetFreeze(true);
    Host().Fail(L"Point.SNVType.get");
    Tick(window);
    EXPECT_FALSE(window->Freeze());
    ExpectFrozen(window, false);
}

TEST_F(Freezing, ChangedStatusThaws) {
    const auto device = MakeDevice();
    const Window window = ShowFocus(device);
    Host().Silence(kLeft, true);
    Tick(window);
    ExpectFrozen(window, true);
    TellStatus(device);
    EXPECT_FALSE(window->Freeze());
    ExpectFrozen(window, false);
}

TEST_F(Freezing, ListHardwareAndStatusTimersRest) {
    const Window window = Open();
    window->SetFreeze(true);
    Host().Clear();
    for (const Timer timer : {Timer::kTmrNvs, Timer::kTmrHw, Timer::kTmrAppStatus})
        window->Tick(timer);
    EXPECT_EQ(Host().Log(), Lines());
    window->Tick(Timer::kTimer1);
    EXPECT_GT(Host().Count(L"IDevice.Files.get"), 0) << "the outputs are still read";
}

TEST_F(Freezing, LoadingClearsTheFlag) {
    const Window left = Open();
    left->SetFreeze(true);
    const Window right = Open(kRight);
    EXPECT_FALSE(right->Freeze());
    ExpectFrozen(right, false);
    ExpectFrozen(left, true);
}

TEST_F(Freezing, OnlyTheWindowOfTheSilentDeviceIsDisabled) {
    const Window left = Open();
    const Window right = Open(kRight);
    Host().Silence(kLeft, true);
    Tick(left);
    ExpectFrozen(left, true);
    ExpectFrozen(right, false);
}

TEST_F(Freezing, GoodReadOfAnotherWindowClearsTheFlagButThisWindowStaysDisabled) {
    const Window left = Open();
    const Window right = Open(kRight);
    Host().Silence(kLeft, true);
    Tick(left);
    Tick(right);
    EXPECT_FALSE(left->Freeze());
    ExpectFrozen(left, true);
    Host().Silence(kLeft, false);
    Tick(left);
    ExpectFrozen(left, false);
}

TEST_F(Freezing, ChangedStatusOfOneDeviceThawsItsWindowAlone) {
    const auto leftDevice = MakeDevice(kLeft);
    const auto rightDevice = MakeDevice(kRight);
    const Window left = ShowFocus(leftDevice);
    const Window right = ShowFocus(rightDevice);
    Host().Silence(kLeft, true);
    Host().Silence(kRight, true);
    Tick(left);
    Tick(right);
    TellStatus(leftDevice);
    ExpectFrozen(left, false);
    ExpectFrozen(right, true);
}

TEST_F(Freezing, ClosingTheFrozenWindowLetsTheOthersGoOn) {
    const Window left = Open();
    const Window right = Open(kRight);
    Host().Silence(kLeft, true);
    Tick(left);
    ASSERT_TRUE(right->Freeze());
    left->Unload();
    EXPECT_FALSE(right->Freeze());
    Host().Clear();
    right->Tick(Timer::kTmrNvs);
    EXPECT_EQ(Host().Count(L"Point.Value.get"), 1);
}

TEST_F(Freezing, ClosingAWindowLeavesAnotherOneFrozen) {
    const Window left = Open();
    const Window right = Open(kRight);
    Host().Silence(kLeft, true);
    Tick(left);
    right->Unload();
    EXPECT_TRUE(left->Freeze());
    ExpectFrozen(left, true);
}

// ---- F5

TEST_F(Freezing, F5LeavesTheListsOfASilentDeviceUntilItAnswers) {
    const Window window = Open();
    const auto rows = Rows(Monitor(window));
    Host().Silence(kLeft, true);
    Tick(window);
    window->Update();
    EXPECT_EQ(Rows(Monitor(window)), rows);
    EXPECT_TRUE(IsRowGreyed(Monitor(window), 0)) << "asked for and not read";
    EXPECT_EQ(Host().Count(L"Point.FormattedValue.get"), 0);
    Host().Silence(kLeft, false);
    PutValue(kLeft, 0, L"24");
    Tick(window);
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"24.00 degrees Celsius");
    EXPECT_FALSE(IsRowGreyed(Monitor(window), 0));
    Host().Clear();
    Tick(window);
    EXPECT_EQ(Host().Count(L"Point.Name.get"), 0) << "once is enough";
}

TEST_F(Freezing, StatusChangeThatThawsTheWindowBringsWhatF5AskedFor) {
    const auto device = MakeDevice();
    const Window window = ShowFocus(device);
    window->SetFreeze(true);
    window->Update();
    PutValue(kLeft, 0, L"24");
    TellStatus(device);
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"24.00 degrees Celsius");
}

TEST_F(Freezing, F5ReadsTheStateThatThePollingRestsIn) {
    Host().Answer(L"IDevice.State.get", L"06");
    const Window window = Open();
    window->SetFreeze(true);
    Tick(window);
    ExpectFrozen(window, true);
    Host().Answer(L"IDevice.State.get", L"04");
    window->Update();
    EXPECT_EQ(window->StateNumberShown(), 4);
    Tick(window);
    ExpectFrozen(window, false);
}

TEST_F(Freezing, WindowThatThawsReadsNothingThatNobodyAskedFor) {
    const Window window = Open();
    window->SetFreeze(true);
    Tick(window);
    ExpectFrozen(window, false);
    EXPECT_EQ(Host().Count(L"Point.Name.get"), 0);
}

class FreezingByState : public Freezing,
                        public ::testing::WithParamInterface<std::pair<const char*, bool>> {};

TEST_P(FreezingByState, MainViewRestsInSomeStatesOnly) {
    const auto& [state, rests] = GetParam();
    Host().Answer(L"IDevice.State.get", Wide(state));
    const Window window = Open();
    window->SetFreeze(true);
    Host().Clear();
    Tick(window, 3);
    EXPECT_EQ(Host().Log().empty(), rests);
    EXPECT_EQ(window->Freeze(), rests);
    window->SetFreeze(false);
    Host().Clear();
    Tick(window);
    EXPECT_FALSE(Host().Log().empty()) << "in any state while it is not frozen";
}

INSTANTIATE_TEST_SUITE_P(States, FreezingByState,
                         ::testing::Values(std::pair{"", true}, std::pair{"03", true},
                                           std::pair{"06", true}, std::pair{"02", false},
                                           std::pair{"04", false}, std::pair{"0C", false},
                                           std::pair{"8C", false}, std::pair{"FFFF", true},
                                           std::pair{"13", false}));

TEST_F(Freezing, WindowInAnyStateIsThawedByItsStatusChange) {
    for (const wchar_t* state : {L"", L"03", L"06", L"04", L"0C"}) {
        Host().Answer(L"IDevice.State.get", state);
        const auto device = MakeDevice();
        const Window window = ShowFocus(device);
        window->SetFreeze(true);
        TellStatus(device);
        ExpectFrozen(window, false);
        window->Unload();
    }
}

}  // namespace
}  // namespace quillon::test
