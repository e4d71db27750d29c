// Opening a window: the steps and their order, and that no failing one keeps it from opening.
#include <algorithm>

#include "plugin/process_state.h"
#include "window/host_calls.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Loading : public WindowTest {
protected:
    // The members of a log without arguments, neighbours that are equal taken as one.
    static Lines Members(const Lines& log) {
        Lines members;
        for (const std::wstring& line : log) {
            std::wstring member = line.substr(0, line.find(L'('));
            if (members.empty() || members.back() != member) members.push_back(std::move(member));
        }
        return members;
    }
};

TEST_F(Loading, HostIsAskedInTheOrderOfTheSteps) {
    const auto device = MakeDevice();
    ASSERT_TRUE(ShowFocus(device));
    const Lines log = Host().Log();
    const Lines kOrder = {L"IFile.ValueText.get()",     // factory data
                          L"IDevice.NeuronID.get()",    // the tag
                          L"IDevice.PollingPID.get()",  // the settings path
                          L"Points.Item(\"5\")",        // Setup: variables
                          L"Points.Item(\"7\")",
                          L"Points.Item(0)",  // Setup: properties
                          L"Points.Item(4)",  // change of value
                          L"Points.Item(3)",
                          L"Points.Item(\"7\")",  // Tune: variables
                          L"Points.Item(1)",      // Tune: properties
                          L"Points.Item(2)",
                          L"Points.Item(\"0\")",  // Test
                          L"Points.Item(\"1\")",       L"Points.Item(\"3\")",
                          L"IDevice.ProgramId.get()",  // General Data
                          L"IDevice.SISD.get()",       L"IDevice.State.get()"};
    auto place = log.begin();
    for (const std::wstring& step : kOrder) {
        place = std::find(place, log.end(), step);
        ASSERT_NE(place, log.end()) << Narrow(step) << " is missing or too early";
        ++place;
    }
    EXPECT_EQ(Only(log, L"Points.Item").size(), 11u);
    EXPECT_EQ(Only(log, L"IDevice.State.get").size(), 1u);
}

TEST_F(Loading, RowCostsOneLookUpAndItsOwnTexts) {
    ASSERT_TRUE(ShowFocus(MakeDevice()));
    EXPECT_EQ(Host().Count(L"Points.Item"), 11);
    EXPECT_EQ(Host().Count(L"Point.Name.get"), 11);
    EXPECT_EQ(Host().Count(L"Point.Key.get"), 11);
    EXPECT_EQ(Host().Count(L"Point.FormattedValue.get"), 11);
    EXPECT_EQ(Host().Count(L"Point.NVDirection.get"), 3) << "of the Test list alone";
    EXPECT_EQ(Host().Count(L"Point.Value.get"), 0);
    EXPECT_EQ(Host().Count(L"Points.Count.get"), 0);
}

TEST_F(Loading, WindowIsShownWithTheMainViewWhenItIsLoaded) {
    const auto device = MakeDevice();
    bool visible = true;
    Host().Call(L"IDevice.State.get", 1,
                [&] { visible = IsWindowVisible(WindowOf(kLeft)->Handle()) != FALSE; });
    const Window window = ShowFocus(device);
    EXPECT_FALSE(visible) << "not before";
    EXPECT_TRUE(IsWindowVisible(window->Handle()));
    EXPECT_EQ(window->SelectedTab(), kTabMain);
    for (int tab = 0; tab < kTabCount; ++tab)
        EXPECT_EQ(IsWindowVisible(window->PageWindow(tab)) != FALSE, tab == kTabMain) << tab;
    EXPECT_EQ(WindowText(window->Handle()), L"Merrowind Nimbra PlugIn");
}

TEST_F(Loading, TickBeforeTheWindowKnowsItsSettingsReadsNothing) {
    const auto device = MakeDevice();
    int ticked = 0;
    Host().Call(L"IDevice.PollingPID.get", 1, [&] {
        for (std::size_t timer = 1; timer <= frmVantor::kTimers; ++timer, ++ticked)
            WindowOf(kLeft)->Tick(static_cast<Timer>(timer));
    });
    const Window window = ShowFocus(device);
    EXPECT_EQ(ticked, 5);
    EXPECT_EQ(PageText(*window, kTabMain, IDC_LBLNV_FIRST), L"");
    EXPECT_EQ(Host().Count(L"Point.Value.get"), 0);
}

TEST_F(Loading, LabelPrintPageSaysToChooseAModel) {
    const Window window = Open();
    EXPECT_EQ(PageText(*window, kTabLabelPrint, IDC_LABELFILENAME),
              L"Selezionare modello Ostel New dalla lista");
    EXPECT_EQ(PageText(*window, kTabLabelPrint, IDC_LABELCOMSETTINGS), L"");
}

TEST_F(Loading, CalibrationPageShowsItsFourLinesOfInstructions) {
    const Window window = Open();
    EXPECT_EQ(PageText(*window, kTabCalibration, IDC_LBLISTRUZIONI),
              L"Posizionare l'interruttore di calibrazione su una delle due posizioni (HIGH o "
              L"LOW)\r\n"
              L"Attendere di ottenere sul tester un valore stabile di tensione e trascrivere\r\n"
              L"il valore letto nella casella 'Tensione rilevata', quindi premere il pulsante MODE "
              L"dell'Nimbra\r\n"
              L"N.B.: Trascrivere il valore di tensione inserendo il carattere '.' come separatore "
              L"decimale!");
}

TEST_F(Loading, GeneralDataComesFromTheDevice) {
    const Window window = Open();
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLPROGRAMID), Wide(ProgramId()));
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLDEVICECODE), L"0102");
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLFWID), L"0210");
    EXPECT_NE(PageText(*window, kTabGeneralData, IDC_LBLWEEK), L"");
    EXPECT_NE(PageText(*window, kTabGeneralData, IDC_LBLYEAR), L"");
}

TEST_F(Loading, WeekAndYearAreThoseOfTheDeviceObject) {
    const auto device = MakeDevice();
    const Window window = ShowFocus(device);
    com::Bstr week;
    com::Bstr year;
    EXPECT_EQ(device->get_ProductionWeek(week.Out()), S_OK);
    EXPECT_EQ(device->get_ProductionYear(year.Out()), S_OK);
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLWEEK), week.Text());
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLYEAR), year.Text());
}

TEST_F(Loading, CalibrationValuesAreTheFactoryData) {
    const auto device = MakeDevice();
    const Window window = ShowFocus(device);
    const std::pair<int, HRESULT (STDMETHODCALLTYPE _CDevice::*)(short*)> kValues[] = {
        {IDC_LBLAIHIGH, &_CDevice::get_AnalogInput1_High},
        {IDC_LBLAIOFFSET, &_CDevice::get_AnalogInput1_Offset},
        {IDC_LBLAILOW, &_CDevice::get_AnalogInput1_Low}};
    for (const auto& [id, member] : kValues) {
        short value = 0;
        EXPECT_EQ((device.Get()->*member)(&value), S_OK);
        EXPECT_NE(value, 0);
        EXPECT_EQ(PageText(*window, kTabCalibration, id), std::to_wstring(value));
    }
}

TEST_F(Loading, ProcessPathIsSetOnlyWhenStillEmpty) {
    Process().settingsPath = L"C:\\of\\another.ini";
    const Window window = Open();
    EXPECT_EQ(Process().settingsPath, L"C:\\of\\another.ini");
    EXPECT_EQ(Rows(PageItem(*window, kTabTest, IDC_LVMONITOR)).size(), 3u)
        << "the window has a path of its own";
    window->Unload();
    Process().settingsPath.clear();
    Open();
    EXPECT_EQ(Process().settingsPath, InFolder(Wide(ProgramId()) + L".ini"));
}

TEST_F(Loading, NormalIconIsShown) {
    const Window window = Open();
    EXPECT_NE(SendMessageW(window->Handle(), WM_GETICON, ICON_SMALL, 0), 0);
    EXPECT_NE(SendMessageW(window->Handle(), WM_GETICON, ICON_BIG, 0), 0);
}

TEST_F(Loading, FocusIsOnTheTabs) {
    const Window window = Open();
    EXPECT_EQ(GetFocus(), window->Item(IDC_SSTAB1));
}

// ---- what fails is left out

TEST_F(Loading, WithoutSettingsFileTheListsAreEmpty) {
    DeleteFileW(InFolder(Wide(ProgramId()) + L".ini").c_str());
    const Window window = Open();
    ASSERT_TRUE(window);
    EXPECT_TRUE(IsWindowVisible(window->Handle()));
    EXPECT_TRUE(Rows(PageItem(*window, kTabTest, IDC_LVMONITOR)).empty());
    EXPECT_TRUE(Rows(PageItem(*window, kTabSetup, IDC_LVADVANCEDCPS)).empty());
    EXPECT_TRUE(Rows(PageItem(*window, kTabTune, IDC_LVCPS)).empty());
    EXPECT_TRUE(Rows(PageItem(*window, kTabTune, IDC_LVCOV)).empty());
    EXPECT_FALSE(window->TabShown(kTabHw));
}

TEST_F(Loading, ProgramIdThatIsNoFileNameGivesEmptyLists) {
    // What a path built blindly would lead to.
    const std::wstring outside = InFolder(L"..\\quillon-other.ini");
    WriteBytes(outside, UsualSettings());
    const auto device = MakeDevice();
    for (const wchar_t* id : {L"", L"..\\quillon-other", L"C:\\x", L"a*b", L"NUL"}) {
        Host().Answer(L"IDevice.PollingPID.get", id);
        const Window window = ShowFocus(device);
        ASSERT_TRUE(window);
        EXPECT_TRUE(Rows(PageItem(*window, kTabTest, IDC_LVMONITOR)).empty());
        window->Unload();
    }
    DeleteFileW(outside.c_str());
}

TEST_F(Loading, WindowOpensWhicheverCallOfTheHostFails) {
    const auto device = MakeDevice();
    ASSERT_TRUE(ShowFocus(device));
    std::vector<HostCall> calls = CallsOf(Host().Log());
    CloseAll();
    // From the window's making on; what stands before decides whether there is a window at all.
    calls.erase(calls.begin(),
                std::ranges::find(calls, L"IDevice.PollingPID.get", &HostCall::member));
    ASSERT_FALSE(calls.empty());
    // The last one is asked by this test, after the opening.
    std::erase_if(calls,
                  [](const HostCall& call) { return call.member == L"IDevice.NeuronID.get"; });
    for (const auto& [member, nth] : Tried(calls)) {
        SCOPED_TRACE(Narrow(member) + " " + std::to_string(nth));
        Host().Restore();
        Host().Fail(member, nth);
        const Window window = ShowFocus(device);
        ASSERT_TRUE(window);
        EXPECT_TRUE(IsWindowVisible(window->Handle()));
        EXPECT_EQ(window->SelectedTab(), kTabMain);
        EXPECT_EQ(window->Interval(Timer::kTimer1), 500u);
        window->Unload();
        EXPECT_TRUE(ui::OpenForms().empty());
    }
}

TEST_F(Loading, HostThatFailsInEveryCallOfAMemberStillGetsItsWindow) {
    const auto device = MakeDevice();
    ASSERT_TRUE(ShowFocus(device));
    Lines members = Members(Host().Log());
    CloseAll();
    std::sort(members.begin(), members.end());
    members.erase(std::unique(members.begin(), members.end()), members.end());
    std::erase(members, L"IDevice.NeuronID.get");
    for (const std::wstring& member : members) {
        SCOPED_TRACE(Narrow(member));
        Host().Restore();
        Host().FailAlways(member);
        Window window = ShowFocus(device);
        ASSERT_TRUE(window);
        window->Unload();
        Host().Restore();
        Host().AnswerNothing(member);
        window = ShowFocus(device);
        ASSERT_TRUE(window) << "answering nothing";
        window->Unload();
    }
    for (const std::wstring& member : members) Host().FailAlways(member);
    EXPECT_TRUE(ShowFocus(device)) << "with all of them failing";
}

TEST_F(Loading, SilentDeviceGetsItsWindow) {
    const auto device = MakeDevice();
    Host().Silence(kLeft, true);
    const Window window = ShowFocus(device);
    ASSERT_TRUE(window);
    EXPECT_EQ(CellText(PageItem(*window, kTabTest, IDC_LVMONITOR), 0, 1), L"?");
}

TEST_F(Loading, NeuronIdThatCannotBeReadMakesNoWindow) {
    const auto device = MakeDevice();
    Host().FailAlways(L"IDevice.NeuronID.get");
    IDispatch* none = nullptr;
    long rate = 25;
    EXPECT_EQ(device.As<IDeviceEx>()->ShowFocus(&none, &rate), S_OK);
    EXPECT_TRUE(ui::OpenForms().empty());
}

TEST_F(Loading, TenThousandCharactersInEveryTextAreShownWhole) {
    const auto device = MakeDevice();
    const std::wstring text(10000, L'z');
    for (const wchar_t* member : {L"Point.Name.get", L"Point.FormattedValue.get",
                                  L"IDevice.Name.get", L"IDevice.ProgramId.get"})
        Host().Answer(member, text);
    const Window window = ShowFocus(device);
    const HWND list = PageItem(*window, kTabTest, IDC_LVMONITOR);
    EXPECT_EQ(CellText(list, 0, 0), text);
    EXPECT_EQ(CellText(list, 0, 1), text);
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLPROGRAMID), text);
}

}  // namespace
}  // namespace quillon::test
