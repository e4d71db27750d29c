// The four lists: where their rows come from and what a row is.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Lists : public WindowTest {
protected:
    struct Place {
        int tab;
        int id;
    };
    static constexpr Place kMonitor{kTabTest, IDC_LVMONITOR};
    static constexpr Place kSetup{kTabSetup, IDC_LVADVANCEDCPS};
    static constexpr Place kTune{kTabTune, IDC_LVCPS};
    static constexpr Place kCov{kTabTune, IDC_LVCOV};
    static constexpr Place kAll[] = {kMonitor, kSetup, kTune, kCov};

    static HWND At(const Window& window, Place place) {
        return PageItem(*window, place.tab, place.id);
    }
    static Lines Sources(const Window& window, int tab, int id) {
        return ListBoxEntries(PageItem(*window, tab, id));
    }
};

TEST_F(Lists, EachHasColumnsItemAndValue) {
    const Window window = Open();
    for (const Place& place : kAll)
        EXPECT_EQ(Headers(At(window, place)), (Lines{L"Item", L"Value"})) << place.id;
}

TEST_F(Lists, RowsStandInTheOrderOfTheSettingsVariablesFirst) {
    const Window window = Open();
    EXPECT_EQ(Rows(At(window, kMonitor)),
              (std::vector<ShownRow>{{L"nviSetpoint", L"21.00 degrees Celsius", L"nvi"},
                                     {L"nvoSpaceTemp", L"22.50 degrees Celsius", L"nvo"},
                                     {L"nviFanSpeedCmd", L"50.0 1", L"nvi"}}));
    EXPECT_EQ(Rows(At(window, kSetup)),
              (std::vector<ShownRow>{{L"nciLocation", L"Lab", L"cp"},
                                     {L"nciFlowFactor", L"1.5 units", L"cp"},
                                     {L"cpUnitName", L"Unit", L"cp"}}));
    EXPECT_EQ(Rows(At(window, kTune)),
              (std::vector<ShownRow>{{L"nciFlowFactor", L"1.5 units", L"cp"},
                                     {L"cpApplCode", L"7 units", L"cp"},
                                     {L"cpFanHigh", L"85.0 % of full level", L"cp"}}));
    EXPECT_EQ(Rows(At(window, kCov)),
              (std::vector<ShownRow>{{L"cpSensorRef", L"21.4 degrees Celsius", L"cp"},
                                     {L"cpHoldOffMode", L"HVAC_OFF", L"cp"}}));
}

TEST_F(Lists, OutputVariableHasTheConfigurationIconInTheSetupLists) {
    WriteSettings(Section("AdvancedNCIs", {"1", "0"}) + Section("CommissioningNCIs", {"1"}));
    const Window window = Open();
    for (const ShownRow& row : Rows(At(window, kSetup))) EXPECT_EQ(row.icon, L"cp");
    EXPECT_EQ(Rows(At(window, kTune)).at(0).icon, L"cp");
}

TEST_F(Lists, EachRowCarriesItsPlace) {
    const Window window = Open();
    for (const Place& place : kAll)
        for (int row = 0; row < ListView_GetItemCount(At(window, place)); ++row) {
            LVITEMW item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            ListView_GetItem(At(window, place), &item);
            EXPECT_EQ(item.lParam, row) << place.id;
        }
}

TEST_F(Lists, SmallImagesAreTheTwentyThreeOfTheDevice) {
    const Window window = Open();
    const HIMAGELIST images = ListView_GetImageList(At(window, kMonitor), LVSIL_SMALL);
    EXPECT_EQ(ImageList_GetImageCount(images), 23);
    for (const Place& place : kAll)
        EXPECT_EQ(ListView_GetImageList(At(window, place), LVSIL_SMALL), images);
}

TEST_F(Lists, ImageKeysStandInTheirOrder) {
    const Lines kOrder = {L"nvi",      L"vantor",    L"error",    L"nvofield", L"nvifield",
                          L"cpfield",  L"nvo",       L"cp",       L"cross",    L"ledoff",
                          L"switchon", L"switchoff", L"ledon",    L"Down_off", L"Down_on",
                          L"Up_off",   L"Up_on",     L"Hand_off", L"Hand_on",  L"Page_off",
                          L"Page_on",  L"Mode_off",  L"Mode_on"};
    EXPECT_EQ(Lines(kImageKeys.begin(), kImageKeys.end()), kOrder);
}

TEST_F(Lists, SelectedRowIsForgottenWhenTheTabChanges) {
    const Window window = Open();
    for (const Place& place : kAll) {
        const HWND list = At(window, place);
        window->SelectTab(place.tab);
        SetFocus(list);
        ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ASSERT_EQ(ListView_GetSelectedCount(list), 1u);
        window->SelectTab(kTabMain);
        window->SelectTab(place.tab);
        SetFocus(list);
        ASSERT_EQ(ListView_GetSelectedCount(list), 0u) << place.id;
        Choose(*window, IDM_EDIT_VALUE);
        EXPECT_EQ(Host().Log(), Lines()) << place.id;
    }
}

TEST_F(Lists, NullTextsAreEmptyOnes) {
    const auto device = MakeDevice();
    com::Variant null;
    null.vt = VT_NULL;
    for (const wchar_t* member : {L"Point.Name.get", L"Point.FormattedValue.get"})
        Host().Answer(member, null);
    const Window window = ShowFocus(device);
    EXPECT_EQ(Rows(At(window, kMonitor)),
              (std::vector<ShownRow>{{L"", L"", L"nvi"}, {L"", L"", L"nvo"}, {L"", L"", L"nvi"}}));
}

TEST_F(Lists, SourcesHoldTheEntriesAsReadAndThoseOfTheTestAsNumbers) {
    WriteSettings(Section("TestNVIs", {"0x", "1.4", "text", "007", "99999999999", "3"}) +
                  Section("CommissioningNCIs", {"7x", "07"}) +
                  Section("CommissioningCPs", {"1 and", "two"}) +
                  Section("AdvancedNCIs", {"5", "6 "}) + Section("AdvancedCPs", {"&H1"}) +
                  Section("ChangeOfValueCPs", {"4.0"}));
    const Window window = Open();
    EXPECT_EQ(Sources(window, kTabTest, IDC_LSTNVIS), (Lines{L"0", L"1", L"0", L"7", L"3"}));
    EXPECT_EQ(Sources(window, kTabTest, IDC_LSTNCIS), (Lines{L"7x", L"07"}));
    EXPECT_EQ(Sources(window, kTabTune, IDC_LSTCPS), (Lines{L"1 and", L"two"}));
    EXPECT_EQ(Sources(window, kTabSetup, IDC_LSTADVANCEDNCIS), (Lines{L"5", L"6"}));
    EXPECT_EQ(Sources(window, kTabSetup, IDC_LSTADVANCEDCPS), (Lines{L"&H1"}));
    EXPECT_EQ(Sources(window, kTabTune, IDC_LSTCOV), (Lines{L"4.0"}));
}

TEST_F(Lists, SourcesAreNotForTheOperator) {
    const Window window = Open();
    const Place kSources[] = {{kTabTest, IDC_LSTNCIS},          {kTabTest, IDC_LSTNVIS},
                              {kTabSetup, IDC_LSTADVANCEDNCIS}, {kTabSetup, IDC_LSTADVANCEDCPS},
                              {kTabTune, IDC_LSTCPS},           {kTabTune, IDC_LSTCOV}};
    for (const Place& place : kSources)
        EXPECT_EQ(GetWindowLongW(At(window, place), GWL_STYLE) & WS_VISIBLE, 0) << place.id;
}

TEST_F(Lists, SectionWithoutKeyZeroIsEmpty) {
    WriteSettings("[TestNVIs]\r\n1=0\r\n2=1\r\n[CommissioningCPs]\r\n1=1\r\n");
    const Window window = Open();
    EXPECT_TRUE(Rows(At(window, kMonitor)).empty());
    EXPECT_TRUE(Rows(At(window, kTune)).empty());
}

TEST_F(Lists, SectionEndsAtItsFirstEmptyKey) {
    WriteSettings("[TestNVIs]\r\n0=0\r\n1=\r\n2=1\r\n[AdvancedCPs]\r\n0=1\r\n2=2\r\n");
    const Window window = Open();
    EXPECT_EQ(Rows(At(window, kMonitor)).size(), 1u);
    EXPECT_EQ(Rows(At(window, kSetup)).size(), 1u);
}

TEST_F(Lists, EntryThatNamesNothingAddsNoRowAndTheNextGoesOn) {
    WriteSettings(Section("TestNVIs", {"77", "0", "-1", "1"}) +
                  Section("CommissioningNCIs", {"none", "7"}) +
                  Section("CommissioningCPs", {"99", "1", "99999999999", "2"}));
    const Window window = Open();
    EXPECT_EQ(Rows(At(window, kMonitor)).size(), 2u);
    EXPECT_EQ(Rows(At(window, kTune)).size(), 3u);
    window->SelectTab(kTabTest);
    for (int tick = 0; tick < 3; ++tick) window->Tick(Timer::kTmrNvs);
    EXPECT_EQ(Only(Host().Log(), L"Points.Item"),
              (Lines{L"Points.Item(\"0\")", L"Points.Item(\"1\")", L"Points.Item(\"0\")"}));
}

TEST_F(Lists, FailingLookUpsAndReadsAddNoRow) {
    const wchar_t* const kMembers[] = {L"Points.Item", L"Point.Name.get", L"Point.Key.get",
                                       L"Point.FormattedValue.get"};
    const auto device = MakeDevice();
    for (const wchar_t* member : kMembers) {
        Host().Restore();
        Host().Fail(member, 2);
        const Window window = ShowFocus(device);
        EXPECT_EQ(Rows(At(window, kSetup)).size(), 2u) << Narrow(member);
        EXPECT_EQ(Rows(At(window, kCov)).size(), 2u);
        EXPECT_EQ(Rows(At(window, kMonitor)).size(), 3u);
        window->Unload();
    }
}

TEST_F(Lists, VariableIsLookedUpByTextAndPropertyByNumber) {
    WriteSettings(Section("AdvancedNCIs", {"07"}) + Section("AdvancedCPs", {"02x"}));
    const Window window = ShowFocus(MakeDevice());
    EXPECT_EQ(Only(Host().Log(), L"Points.Item"),
              (Lines{L"Points.Item(\"07\")", L"Points.Item(2)"}));
}

TEST_F(Lists, TwoThousandRows) {
    std::vector<std::string> entries(2000);
    for (std::size_t entry = 0; entry < entries.size(); ++entry)
        entries[entry] = std::to_string(entry % 2);
    WriteSettings(Section("TestNVIs", entries));
    const Window window = Open();
    EXPECT_EQ(ListView_GetItemCount(At(window, kMonitor)), 2000);
    EXPECT_EQ(CellText(At(window, kMonitor), 1999, 0), L"nvoSpaceTemp");
    EXPECT_EQ(Host().Count(L"Points.Item"), 0) << "the log was emptied after loading";
    for (int tick = 0; tick < 2001; ++tick) window->Tick(Timer::kTmrNvs);
    EXPECT_EQ(Host().Count(L"Points.Item"), 2001);
}

TEST_F(Lists, AmpersandInANameIsShownAsItIs) {
    const auto device = MakeDevice();
    Host().Answer(L"Point.Name.get", L"Heat & Cool && Fan");
    const Window window = ShowFocus(device);
    EXPECT_EQ(CellText(At(window, kMonitor), 0, 0), L"Heat & Cool && Fan");
}

TEST_F(Lists, UpdateReadsEverythingAgain) {
    const Window window = Open();
    WriteSettings(Section("TestNVIs", {"2"}) + Section("ChangeOfValueCPs", {"1"}));
    window->Update();
    EXPECT_EQ(Rows(At(window, kMonitor)),
              (std::vector<ShownRow>{{L"nviOccCmd", L"OC_NUL", L"nvi"}}));
    EXPECT_EQ(Rows(At(window, kCov)), (std::vector<ShownRow>{{L"cpApplCode", L"7 units", L"cp"}}));
    EXPECT_TRUE(Rows(At(window, kSetup)).empty());
    EXPECT_TRUE(Rows(At(window, kTune)).empty());
    EXPECT_GT(Host().Count(L"IDevice.State.get"), 0);
    EXPECT_GT(Host().Count(L"IDevice.Name.get"), 0);
    EXPECT_GT(Host().Count(L"IDevice.ProgramId.get"), 0);
}

TEST_F(Lists, UpdateTwiceGivesTheSameRows) {
    const Window window = Open();
    const auto before = Rows(At(window, kTune));
    window->Update();
    window->Update();
    EXPECT_EQ(Rows(At(window, kTune)), before);
    EXPECT_EQ(Sources(window, kTabTest, IDC_LSTNVIS).size(), 3u);
}

TEST_F(Lists, ColumnsFillTheListAtEverySize) {
    const Window window = Open();
    for (const SIZE size : {SIZE{700, 500}, SIZE{1400, 900}, SIZE{100, 100}}) {
        SetWindowPos(window->Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER);
        for (const Place& place : kAll) {
            RECT client{};
            GetClientRect(At(window, place), &client);
            EXPECT_EQ(ListView_GetColumnWidth(At(window, place), 0) +
                          ListView_GetColumnWidth(At(window, place), 1),
                      client.right);
        }
    }
}

}  // namespace
}  // namespace quillon::test
