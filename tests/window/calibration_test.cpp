// The calibration procedure, through the window with real messages.
#include "plugin/clock.h"
#include "window/calibration_fixture.h"

namespace quillon::test {
namespace {

using Procedure = CalibrationTest;

TEST_F(Procedure, TwoPointsCalibrateTheUnit) {
    const Window window = OpenPage();
    TakeLow(window);
    EXPECT_EQ(Voltage(*window), L"");
    EXPECT_EQ(Instructions(*window),
              L"Calibrazione LOW eseguita correttamente!\r\nCambiare la posizione "
              L"dell'interruttore su HIGH ed eseguire nuovamente la procedura.");
    EXPECT_EQ(FactoryText(), kUncalibrated);
    EXPECT_EQ(CalibrationFileText(), "");
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(Instructions(*window),
              L"Calibrazione HIGH eseguita correttamente!\r\nCambiare la posizione "
              L"dell'interruttore su LOW ed eseguire nuovamente la procedura.");
    EXPECT_EQ(FactoryText(), kCalibrated);
    EXPECT_EQ(CalibrationFileText(), "[0000000000A1]\r\nCalibration=27103EA80028011C2F\r\n");
    ASSERT_EQ(SeenBoxes(), Lines{kDoneBox});
    EXPECT_EQ(Boxes().Seen()[0].icon, Icon::kInformation);
    EXPECT_EQ(Boxes().Seen()[0].buttons, std::vector<int>{IDOK});
    EXPECT_EQ(Calibration(), CalibrationRecord());
}

TEST_F(Procedure, FinishedWindowShowsTheValuesAndGoesToTheLabel) {
    const Window window = OpenPage();
    TakeHigh(window);
    Boxes().Answer(IDOK);
    TakeLow(window);
    EXPECT_EQ(PageText(*window, kTabCalibration, IDC_LBLAIHIGH), L"10000");
    EXPECT_EQ(PageText(*window, kTabCalibration, IDC_LBLAILOW), L"16040");
    EXPECT_EQ(PageText(*window, kTabCalibration, IDC_LBLAIOFFSET), L"40");
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLYEAR), L"2026");
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLWEEK), L"47");
    EXPECT_EQ(window->SelectedTab(), kTabLabelPrint);
    EXPECT_FALSE(window->TabShown(kTabCalibration));
    EXPECT_TRUE(window->TabShown(kTabLabelPrint));
    EXPECT_EQ(window->Interval(Timer::kTmrHw), 0u);
    EXPECT_FALSE(IsChild(window->PageWindow(kTabCalibration), GetFocus()));
    window->SelectTab(kTabCalibration);
    EXPECT_EQ(window->SelectedTab(), kTabLabelPrint) << "the same window calibrates once";
}

TEST_F(Procedure, NewWindowMayCalibrateAgain) {
    const Window window = OpenPage();
    TakeLow(window);
    Boxes().Answer(IDOK);
    TakeHigh(window);
    window->Unload();
    const Window again = OpenPage();
    EXPECT_EQ(again->SelectedTab(), kTabCalibration);
}

TEST_F(Procedure, ReadingOutsideBothWindowsIsRefused) {
    const Window window = OpenPage();
    const std::wstring before = Instructions(*window);
    const std::pair<int, const wchar_t*> kOutside[] = {
        {1753, L"9.3"},
        {1500, L"2.35"},
        {1753, L"2.5"},
        {1753, L"2,35"},
        {1753, L" "},
        {-1, L"2.35"},
        {6819, L"99999999999999999999999999999999999999999999"}};
    for (const auto& [count, voltage] : kOutside) {
        Boxes().Answer(IDOK);
        TakePoint(window, count, voltage);
        EXPECT_EQ(Voltage(*window), L"");
    }
    EXPECT_EQ(SeenBoxes(),
              Lines(std::size(kOutside), L"Attenzione!!: Il valore di tensione non e' valido!"));
    EXPECT_EQ(Boxes().Seen()[0].icon, Icon::kExclamation);
    EXPECT_EQ(Boxes().Seen()[0].buttons, std::vector<int>{IDOK});
    EXPECT_EQ(Calibration(), CalibrationRecord());
    EXPECT_EQ(Instructions(*window), before);
}

TEST_F(Procedure, ModeMustBePressedAlone) {
    const Window window = OpenPage();
    Type(*window, L"2.35");
    for (const wchar_t* inputs : {L"0000", L"1100", L"0110", L"0101", L"1000", L"0010", L"1111"}) {
        Measure(1753, inputs);
        TickHardware(*window);
    }
    EXPECT_EQ(Voltage(*window), L"2.35");
    EXPECT_EQ(Calibration(), CalibrationRecord());
}

TEST_F(Procedure, ModeWithoutAVoltageIsIgnored) {
    const Window window = OpenPage();
    Measure(1753);
    TickHardware(*window);
    TickHardware(*window);
    EXPECT_EQ(Calibration(), CalibrationRecord());
}

TEST_F(Procedure, OtherPagesTakeNothing) {
    const Window window = OpenPage();
    Type(*window, L"2.35");
    Measure(1753);
    window->SelectTab(kTabHw);
    window->Tick(Timer::kTmrHw);
    EXPECT_EQ(Voltage(*window), L"2.35");
    EXPECT_EQ(Calibration(), CalibrationRecord());
}

TEST_F(Procedure, SamePointAgainKeepsTheSecondReading) {
    const Window window = OpenPage();
    TakePoint(window, 1999, L"2.49");
    TakeLow(window);
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(FactoryText(), kCalibrated);
}

TEST_F(Procedure, PointsOutliveTheWindow) {
    const Window first = OpenPage();
    TakeLow(first);
    first->Unload();
    const Window second = OpenPage();
    Boxes().Answer(IDOK);
    TakeHigh(second);
    EXPECT_EQ(FactoryText(), kCalibrated);
}

TEST_F(Procedure, LimitsAreReadAtEveryPress) {
    const Window window = OpenPage();
    TakeLow(window);
    WriteSettings(UsualSettings());
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(SeenBoxes(), Lines{L"Attenzione!!: Il valore di tensione non e' valido!"});
}

TEST_F(Procedure, ImpossibleValuesEndSilentlyWithThePointsKept) {
    WriteSettings(UsualSettings() +
                  "[LowCalib]\r\nCountL=1\r\nCountH=9000\r\nVoltL=1\r\nVoltH=2\r\n"
                  "[HighCalib]\r\nCountL=1\r\nCountH=9000\r\nVoltL=9\r\n"
                  "VoltH=11\r\n");
    const Window window = OpenPage();
    TakePoint(window, 1199, L"1.63");
    TakePoint(window, 7352, L"10");
    TakePoint(window, 1199, L"1.63");
    EXPECT_EQ(Calibration(), (CalibrationRecord{1199, 7352, 1.63F, 10.0F}));
    EXPECT_EQ(CalibrationFileText(), "");
    EXPECT_EQ(FactoryText(), kUncalibrated);
    EXPECT_EQ(window->SelectedTab(), kTabCalibration);
    EXPECT_EQ(SeenBoxes(), Lines());
}

TEST_F(Procedure, YearThatTheDeviceCannotHoldEndsSilently) {
    SetToday(Date{2254, 1, 1});
    const Window window = OpenPage();
    TakeLow(window);
    TakeHigh(window);
    EXPECT_TRUE(Calibration().IsComplete());
    EXPECT_EQ(CalibrationFileText(), "");
    EXPECT_EQ(FactoryText(), kUncalibrated);
}

// ---- faults

TEST_F(Procedure, FileThatCannotBeWrittenIsTold) {
    const Window window = OpenPage();
    TakeLow(window);
    ASSERT_TRUE(CreateDirectoryW(CalibrationFile().c_str(), nullptr));
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(SeenBoxes(), Lines{kMissingBox});
    EXPECT_EQ(Boxes().Seen()[0].icon, Icon::kStop);
    EXPECT_EQ(FactoryText(), kUncalibrated);
    EXPECT_TRUE(Calibration().IsComplete());
    EXPECT_EQ(window->SelectedTab(), kTabCalibration);
    ASSERT_TRUE(RemoveDirectoryW(CalibrationFile().c_str()));
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(FactoryText(), kCalibrated);
}

TEST_F(Procedure, OlderFileThatCannotBeReplacedIsNotLoaded) {
    const std::string older = "[0000000000A1]\r\nCalibration=111122223333010101\r\n";
    WriteBytes(CalibrationFile(), older);
    const Window window = OpenPage();
    TakeLow(window);
    const HANDLE held = CreateFileW(CalibrationFile().c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    Boxes().Answer(IDOK);
    TakeHigh(window);
    CloseHandle(held);
    EXPECT_EQ(SeenBoxes(), Lines{kMissingBox});
    EXPECT_EQ(FactoryText(), kUncalibrated);
    EXPECT_EQ(CalibrationFileText(), older);
}

TEST_F(Procedure, NeuronIdThatNamesNoFileWritesNone) {
    const Window window = OpenPage();
    TakeLow(window);
    Type(*window, L"9.3");
    Measure(6819);
    Host().Answer(L"IDevice.NeuronID.get", L"..\\out");
    Boxes().Answer(IDOK);
    TickHardware(*window);
    EXPECT_EQ(SeenBoxes(), Lines{kMissingBox});
    Host().Restore();
    EXPECT_FALSE(FileExists(InFolder(L"..\\out.tca")));
    EXPECT_EQ(FactoryText(), kUncalibrated);
}

TEST_F(Procedure, UnitThatDoesNotConfirmEndsSilentlyWithThePointsKept) {
    const Window window = OpenPage();
    TakeLow(window);
    for (const wchar_t* member : {L"IFile.ValueText.put", L"IDevice.NeuronID.get"}) {
        Type(*window, L"9.3");
        Measure(6819);
        Host().FailAlways(member);
        TickHardware(*window);
        Host().Restore();
        EXPECT_EQ(SeenBoxes(), Lines());
        EXPECT_TRUE(Calibration().IsComplete());
        EXPECT_EQ(FactoryText(), kUncalibrated);
        EXPECT_EQ(window->SelectedTab(), kTabCalibration);
    }
    Boxes().Answer(IDOK);
    TakeHigh(window);
    EXPECT_EQ(SeenBoxes(), Lines{kDoneBox});
    EXPECT_EQ(FactoryText(), kCalibrated);
}

TEST_F(Procedure, SuccessIsNotToldOfAUnitThatHoldsSomethingElse) {
    const Window window = OpenPage();
    TakeLow(window);
    Type(*window, L"9.3");
    Measure(6819);
    Host().Answer(L"IFile.ValueText.put", L"");
    TickHardware(*window);
    Host().Restore();
    EXPECT_EQ(SeenBoxes(), Lines());
    EXPECT_TRUE(Calibration().IsComplete());
}

TEST_F(Procedure, EndWithoutSuccessShowsTheInstructionsAgain) {
    const Window window = OpenPage();
    const std::wstring instructions = Instructions(*window);
    TakeLow(window);
    for (const wchar_t* member : {L"IFile.ValueText.put", L"IDevice.NeuronID.get"}) {
        SCOPED_TRACE(Narrow(member));
        Type(*window, L"9.3");
        Measure(6819);
        Host().FailAlways(member);
        TickHardware(*window);
        Host().Restore();
        EXPECT_EQ(Instructions(*window), instructions);
        EXPECT_TRUE(Calibration().IsComplete());
    }
    SetToday(Date{2254, 1, 1});
    TakeHigh(window);
    EXPECT_EQ(Instructions(*window), instructions) << "a year that gives no values";
}

TEST_F(Procedure, UnitWhoseEntryIsLongerThanTheFactoryDataIsFinished) {
    const Window window = OpenPage();
    TakeLow(window);
    Type(*window, L"9.3");
    Measure(6819);
    Host().Call(L"IFile.ValueText.put", 1,
                [] { Host().Answer(L"IFile.ValueText.get", std::wstring(kCalibrated) + L"AABB"); });
    Boxes().Answer(IDOK);
    TickHardware(*window);
    Host().Restore();
    EXPECT_EQ(SeenBoxes(), Lines{kDoneBox});
    EXPECT_EQ(FactoryText(), kCalibrated);
    EXPECT_EQ(Calibration(), CalibrationRecord());
    EXPECT_FALSE(window->TabShown(kTabCalibration));
}

// ---- what happens meanwhile

TEST_F(Procedure, WindowClosedWhileABoxIsUp) {
    const Window window = OpenPage();
    Boxes().Answer(IDOK, [&] { window->Unload(); });
    TakePoint(window, 1, L"1");
    EXPECT_FALSE(window->IsOpen());
    const Window second = OpenPage();
    TakeLow(second);
    Boxes().Answer(IDOK, [&] { second->Unload(); });
    TakeHigh(second);
    EXPECT_FALSE(second->IsOpen());
    EXPECT_EQ(FactoryText(), kCalibrated);
    EXPECT_EQ(Calibration(), CalibrationRecord());
}

TEST_F(Procedure, WindowClosedWhileTheUnitIsCalibrated) {
    for (const bool posted : {true, false}) {
        const Window window = OpenPage();
        TakeLow(window);
        Type(*window, L"9.3");
        Measure(6819);
        Host().Call(L"IFile.ValueText.put", 1, [&] {
            if (posted)
                PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
            else
                window->Unload();
        });
        Boxes().Answer(IDOK);
        TickHardware(*window);
        EXPECT_FALSE(window->IsOpen());
        EXPECT_EQ(FactoryText(), kCalibrated);
        EXPECT_EQ(Calibration(), CalibrationRecord());
    }
}

TEST_F(Procedure, StepOfAnotherWindowWaitsForTheOneAtWork) {
    const Window left = OpenPage();
    const Window right = OpenPage(kRight);
    TakeLow(left);
    Type(*right, L"2.4");
    Measure(kRight, 1800, L"0100");
    Boxes().Answer(IDOK, [&] {
        TickHardware(*right);
        TickHardware(*left);
    });
    TakeHigh(left);
    EXPECT_EQ(Voltage(*right), L"2.4") << "still to be taken";
    EXPECT_EQ(Calibration(), CalibrationRecord());
    EXPECT_EQ(FactoryText(kRight), kUncalibrated);
    TickHardware(*right);
    EXPECT_EQ(Calibration(), (CalibrationRecord{1800, 0, 2.4F, 0}));
}

TEST_F(Procedure, FrozenWindowTakesNothing) {
    const Window window = OpenPage();
    Type(*window, L"2.35");
    Measure(1753);
    window->SetFreeze(true);
    TickHardware(*window);
    EXPECT_EQ(Voltage(*window), L"2.35");
    window->SetFreeze(false);
    TickHardware(*window);
    EXPECT_EQ(Calibration(), (CalibrationRecord{1753, 0, 2.35F, 0}));
}

}  // namespace
}  // namespace quillon::test
