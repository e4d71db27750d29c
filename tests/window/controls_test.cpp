// What the window shows besides values: tabs, captions, controls, status bar, state display.
#include "com/module.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Controls : public WindowTest {
protected:
    static void ExpectText(const Window& window, int tab, int id, const wchar_t* text) {
        EXPECT_EQ(PageText(*window, tab, id), text) << id;
    }
};

TEST_F(Controls, EightTabsByNumberAndCaption) {
    const Window window = Open();
    EXPECT_EQ(ShownTabs(*window), (Lines{L"Hw", L"Nimbra", L"Test", L"Setup", L"General Data",
                                         L"Calibration", L"Tune", L"Label Print"}));
    EXPECT_EQ(ShownTabNumbers(*window), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

struct DisplayHw {
    const char* setting;
    bool shown;
};

class ControlsByDisplayHw : public Controls, public ::testing::WithParamInterface<DisplayHw> {};

TEST_P(ControlsByDisplayHw, HardwareTabsAreThereOrTakenOut) {
    const auto& [setting, shown] = GetParam();
    WriteSettings(setting);
    const Window window = Open();
    const std::vector<int> kWithout{1, 2, 3, 4, 6};
    const std::vector<int> kWith{0, 1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(ShownTabNumbers(*window), shown ? kWith : kWithout);
    for (const int tab : {kTabHw, kTabCalibration, kTabLabelPrint})
        EXPECT_EQ(window->TabShown(tab), shown);
    EXPECT_EQ(window->SelectedTab(), kTabMain);
}

INSTANTIATE_TEST_SUITE_P(Settings, ControlsByDisplayHw,
                         ::testing::Values(DisplayHw{"[Settings]\r\nDisplayHW=1", true},
                                           DisplayHw{"[Settings]\r\nDisplayHW=0", false},
                                           DisplayHw{"", false},
                                           DisplayHw{"[Settings]\r\nDisplayHW=", false},
                                           DisplayHw{"[Settings]\r\nDisplayHW=-1", true},
                                           DisplayHw{"[Settings]\r\nDisplayHW=0.5", true},
                                           DisplayHw{"[Settings]\r\nDisplayHW=no", false},
                                           DisplayHw{"[Settings]\r\nDisplayHW=2 pages", true}));

TEST_F(Controls, TabIsSelectedByItsNumberWhereOthersAreHidden) {
    WriteSettings("");
    const Window window = Open();
    window->SelectTab(kTabTune);
    EXPECT_EQ(window->SelectedTab(), kTabTune);
    EXPECT_TRUE(IsWindowVisible(window->PageWindow(kTabTune)));
    EXPECT_EQ(window->Interval(Timer::kTmrNvs), 500u);
    window->SelectTab(kTabHw);
    EXPECT_EQ(window->SelectedTab(), kTabTune) << "a hidden one cannot be selected";
}

TEST_F(Controls, ClickOnATabShowsItsPageAlone) {
    const Window window = Open();
    const HWND tabs = window->Item(IDC_SSTAB1);
    for (int place = 0; place < kTabCount; ++place) {
        RECT rect{};
        TabCtrl_GetItemRect(tabs, place, &rect);
        const LPARAM point = MAKELPARAM(rect.left + 2, rect.top + 2);
        SendMessageW(tabs, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(tabs, WM_LBUTTONUP, 0, point);
        EXPECT_EQ(window->SelectedTab(), place);
        for (int tab = 0; tab < kTabCount; ++tab)
            EXPECT_EQ(IsWindowVisible(window->PageWindow(tab)) != FALSE, tab == place);
    }
}

TEST_F(Controls, ButtonsAndFramesHaveTheirCaptions) {
    const Window window = Open();
    ExpectText(window, kTabHw, IDC_CMDWINK, L"&Wink");
    ExpectText(window, kTabHw, IDC_HW_RESET, L"&Reset");
    ExpectText(window, kTabMain, IDC_MAIN_RESET, L"&Reset");
    ExpectText(window, kTabGeneralData, IDC_FRAME3, L"General Data");
    ExpectText(window, kTabGeneralData, IDC_CMDLOADFROMFILE, L"&Download...");
    ExpectText(window, kTabGeneralData, IDC_CMDSAVETOFILE, L"&Save as...");
    ExpectText(window, kTabTune, IDC_FRAME4, L"Send / Receive HeartBeat");
    ExpectText(window, kTabTune, IDC_FRAME5, L"Change of values (COV)");
    ExpectText(window, kTabLabelPrint, IDC_FRAME6, L"Instructions");
    ExpectText(window, kTabLabelPrint, IDC_NIMBRA_PRINTBUTTON, L"&Print Label");
    ExpectText(window, kTabCalibration, IDC_TXTVOLTAGE, L"");
    ExpectText(window, kTabCalibration, IDC_LBLCOUNTS, L"");
}

TEST_F(Controls, FixedCaptions) {
    const Window window = Open();
    EXPECT_EQ(FixedTexts(*window, kTabMain),
              (Lines{L"Space Temperature:", L"Set Point", L"Effective", L"Remote", L" Occupancy",
                     L"Remote", L"Manual Command"}));
    EXPECT_EQ(FixedTexts(*window, kTabGeneralData),
              (Lines{L"Production week", L"Production Year", L"Program ID", L"Firmware Code:",
                     L"Firmware Version:"}));
    EXPECT_EQ(FixedTexts(*window, kTabCalibration),
              (Lines{L"A/D Counts:", L"Tensione rilevata:", L"Analog Input High:",
                     L"Analog Input Offset:", L"Analog Input Low:"}));
}

TEST_F(Controls, EveryControlIsThere) {
    const Window window = Open();
    const std::pair<int, std::vector<int>> kIds[] = {
        {kTabHw,
         {IDC_CMDWINK, IDC_HW_RESET, IDC_PICTURE2, IDC_LED_FIRST, IDC_LED_LAST, IDC_LEDTEXT_FIRST,
          IDC_LEDTEXT_LAST}},
        {kTabMain,
         {IDC_LBLNV_FIRST, IDC_LBLNV_FIRST + 1, IDC_LBLNV_FIRST + 2, IDC_LBLNV_FIRST + 3,
          IDC_LBLNV_FIRST + 4, IDC_LBLNV_LAST}},
        {kTabTest, {IDC_LVMONITOR, IDC_LSTNCIS, IDC_LSTNVIS}},
        {kTabSetup, {IDC_LVADVANCEDCPS, IDC_LSTADVANCEDNCIS, IDC_LSTADVANCEDCPS}},
        {kTabGeneralData,
         {IDC_LBLWEEK, IDC_LBLYEAR, IDC_LBLPROGRAMID, IDC_LBLDEVICECODE, IDC_LBLFWID}},
        {kTabCalibration,
         {IDC_TXTVOLTAGE, IDC_LBLISTRUZIONI, IDC_LBLAIHIGH, IDC_LBLAIOFFSET, IDC_LBLAILOW,
          IDC_LBLCOUNTS}},
        {kTabTune, {IDC_LVCPS, IDC_LSTCPS, IDC_LVCOV, IDC_LSTCOV}},
        {kTabLabelPrint, {IDC_NIMBRA_MODEL_LIST, IDC_LABELCOMSETTINGS, IDC_LABELFILENAME}},
    };
    for (const auto& [tab, ids] : kIds)
        for (const int id : ids) EXPECT_NE(PageItem(*window, tab, id), nullptr) << id;
}

TEST_F(Controls, NoButtonIsTheDefaultOne) {
    const Window window = Open();
    const LRESULT answer = SendMessageW(window->Handle(), DM_GETDEFID, 0, 0);
    EXPECT_EQ(GetDlgItem(window->Handle(), LOWORD(answer)), nullptr) << LOWORD(answer);
    for (const auto& [tab, id] : {std::pair{kTabHw, IDC_CMDWINK}, std::pair{kTabHw, IDC_HW_RESET},
                                  std::pair{kTabMain, IDC_MAIN_RESET}})
        EXPECT_EQ(GetWindowLongW(PageItem(*window, tab, id), GWL_STYLE) & BS_TYPEMASK,
                  BS_PUSHBUTTON);
}

TEST_F(Controls, LabelsThatShowDeviceTextsTakeNoAmpersandAsAnAccessKey) {
    const Window window = Open();
    const std::pair<int, int> kLabels[] = {
        {kTabGeneralData, IDC_LBLWEEK},      {kTabGeneralData, IDC_LBLYEAR},
        {kTabGeneralData, IDC_LBLPROGRAMID}, {kTabGeneralData, IDC_LBLDEVICECODE},
        {kTabGeneralData, IDC_LBLFWID},      {kTabCalibration, IDC_LBLCOUNTS},
        {kTabLabelPrint, IDC_LABELFILENAME}};
    for (const auto& [tab, id] : kLabels)
        EXPECT_NE(GetWindowLongW(PageItem(*window, tab, id), GWL_STYLE) & SS_NOPREFIX, 0) << id;
    EXPECT_NE(GetWindowLongW(window->Item(IDC_LBLDEVSTATE), GWL_STYLE) & SS_NOPREFIX, 0);
}

TEST_F(Controls, ListsAndTabsGrowWithTheWindow) {
    const Window window = Open();
    const auto size = [&](HWND control) {
        RECT rect{};
        GetWindowRect(control, &rect);
        return SIZE{rect.right - rect.left, rect.bottom - rect.top};
    };
    const HWND list = PageItem(*window, kTabTest, IDC_LVMONITOR);
    const SIZE frame = size(window->Handle());
    const SIZE before = size(list);
    SetWindowPos(window->Handle(), nullptr, 0, 0, frame.cx + 200, frame.cy + 100,
                 SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_EQ(size(list).cx, before.cx + 200);
    EXPECT_EQ(size(list).cy, before.cy + 100);
}

// ---- status bar and state display

TEST_F(Controls, StatusBarShowsDeviceNameAndState) {
    const Window window = Open();
    EXPECT_EQ(SendMessageW(window->Item(IDC_STATUSBAR1), SB_GETPARTS, 0, 0), 3);
    EXPECT_EQ(Panel(*window, 0), L"Device:");
    EXPECT_EQ(Panel(*window, 1), L"Left");
    EXPECT_EQ(Panel(*window, 2), L"On Line");
}

TEST_F(Controls, AmpersandAndTabInTheDeviceNameAreShownAsTheyAre) {
    Left()["name"] = "Heat & Cool && Co";
    const Window window = Open();
    EXPECT_EQ(Panel(*window, 1), L"Heat & Cool && Co");
}

struct StateCase {
    const wchar_t* text;
    std::int32_t number;
    const wchar_t* shown;
};

class ControlsByState : public Controls, public ::testing::WithParamInterface<StateCase> {
protected:
    struct Colors {
        COLORREF text;
        COLORREF background;
        COLORREF brush;
    };
    static Colors Ask(const Window& window, int id) {
        const HWND control = window->Item(id);
        const HDC context = GetDC(control);
        const auto brush = reinterpret_cast<HBRUSH>(
            SendMessageW(window->Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                         reinterpret_cast<LPARAM>(control)));
        LOGBRUSH description{};
        GetObjectW(brush, sizeof description, &description);
        const Colors colors{GetTextColor(context), GetBkColor(context), description.lbColor};
        ReleaseDC(control, context);
        return colors;
    }
};

TEST_P(ControlsByState, ShowsTextAndColorOfTheNumber) {
    const auto& [text, number, shown] = GetParam();
    Host().Answer(L"IDevice.State.get", text);
    const Window window = Open();
    EXPECT_EQ(window->StateNumberShown(), number);
    EXPECT_EQ(WindowText(window->Item(IDC_LBLDEVSTATE)), shown);
    EXPECT_EQ(Panel(*window, 2), shown);
    for (const int id : {IDC_LBLDEVSTATE, IDC_PCTDEVSTATE}) {
        const Colors colors = Ask(window, id);
        EXPECT_EQ(colors.background, colors.brush);
        EXPECT_GE(Contrast(colors.text, colors.background), 4.5) << "readable";
    }
}

INSTANTIATE_TEST_SUITE_P(
    States, ControlsByState,
    ::testing::Values(StateCase{L"04", 4, L"On Line"}, StateCase{L"0C", 12, L"Soft Off Line"},
                      StateCase{L"", -1, L"Absent"}, StateCase{L"8C", 140, L"Configured Bypass"},
                      StateCase{L"02", 2, L"Unconfigured"},
                      StateCase{L"03", 3, L"Applicationless Unconf."},
                      StateCase{L"06", 6, L"Hard Off Line"}, StateCase{L"13", 19, L"Status: 19"}));

TEST_F(ControlsByState, BlackStateHasLightText) {
    Host().Answer(L"IDevice.State.get", L"8C");
    const Window window = Open();
    const Colors colors = Ask(window, IDC_LBLDEVSTATE);
    EXPECT_EQ(colors.background, RGB(0, 0, 0));
    EXPECT_EQ(colors.text, RGB(255, 255, 255));
}

TEST_F(Controls, StateThatCannotBeReadLeavesTheOneShown) {
    const auto device = MakeDevice();
    const Window window = ShowFocus(device);
    for (const bool unreadable : {true, false}) {
        Host().Restore();
        if (unreadable)
            Host().Answer(L"IDevice.State.get", L"no number");
        else
            Host().FailAlways(L"IDevice.State.get");
        com::Bstr status(L"x");
        long reason = 0;
        EXPECT_EQ(device.As<IDevice>()->ChangedStatus(status.InOut(), &reason), S_OK);
        EXPECT_EQ(window->StateNumberShown(), 4);
        EXPECT_EQ(Panel(*window, 2), L"On Line");
    }
}

}  // namespace
}  // namespace quillon::test
