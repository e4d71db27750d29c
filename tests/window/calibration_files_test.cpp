// Calibration files from menu and buttons, with the platform's own file dialogs.
#include "window/calibration_fixture.h"

namespace quillon::test {
namespace {

class CalibrationFiles : public CalibrationTest {
protected:
    void SetUp() override {
        CalibrationTest::SetUp();
        m_file = InFolder(Wide(ProgramId()) + L".tca");
        if (WarmUpFileDialogs(InFolder(L"warm-up.app"))) CountAgain();
    }
    void TearDown() override {
        DeleteFileW(m_file.c_str());
        CalibrationTest::TearDown();
    }
    const std::wstring& File() const { return m_file; }
    void WriteFileFor(const char* neuron, const char* text) const {
        WriteBytes(m_file,
                   "[" + std::string(neuron) + "]\r\nCalibration=" + std::string(text) + "\r\n");
    }
    // Presses the button, or chooses the menu entry.
    static void Save(const Window& window, bool button) {
        if (button)
            Press(*window, kTabGeneralData, IDC_CMDSAVETOFILE);
        else
            Choose(*window, IDM_CALIBRATIONS_SAVE);
    }
    static void Load(const Window& window, bool button) {
        if (button)
            Press(*window, kTabGeneralData, IDC_CMDLOADFROMFILE);
        else
            Choose(*window, IDM_CALIBRATIONS_LOAD);
    }

private:
    std::wstring m_file;
};

TEST_F(CalibrationFiles, MenuAndButtonSaveWhatTheUnitHolds) {
    const Window window = Open();
    for (const bool button : {false, true}) {
        DeleteFileW(File().c_str());
        const FileDialog dialog(File());
        Save(window, button);
        EXPECT_EQ(dialog.Title(), L"Save calibration data to file...");
        EXPECT_EQ(dialog.Proposed(), L"0000000000A1.tca");
        EXPECT_EQ(dialog.Filter(), L"CAL Files (*.tca)");
        EXPECT_EQ(ReadBytes(File()), "[0000000000A1]\r\nCalibration=0102030405061A170C\r\n");
        EXPECT_TRUE(ActionMenuEnabled(*window));
    }
}

TEST_F(CalibrationFiles, MenuAndButtonLoadAndTheWindowShowsIt) {
    const Window window = Open();
    WriteFileFor("0000000000A1", "27103EA80028011C2F");
    for (const bool button : {false, true}) {
        const FileDialog dialog(File());
        Load(window, button);
        EXPECT_EQ(dialog.Title(), L"Download calibration data from file...");
        EXPECT_EQ(dialog.Filter(), L"CAL Files (*.tca)");
        EXPECT_EQ(FactoryText(), kCalibrated);
        EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLYEAR), L"2026");
        EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLWEEK), L"47");
        EXPECT_EQ(PageText(*window, kTabCalibration, IDC_LBLAIHIGH), L"10000");
        EXPECT_TRUE(ActionMenuEnabled(*window));
    }
}

TEST_F(CalibrationFiles, CancelDoesNothing) {
    const Window window = Open();
    for (const bool button : {false, true}) {
        {
            const FileDialog dialog({});
            Save(window, button);
        }
        const FileDialog dialog({});
        Load(window, button);
    }
    EXPECT_EQ(Host().Count(L"IDevice.Focus"), 0);
    EXPECT_EQ(Changes(Host().Log()), Lines());
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(CalibrationFiles, FileWithoutValuesForTheUnitIsToldAndNothingIsWritten) {
    const Window window = Open();
    const std::pair<const char*, const char*> kBad[] = {{"0000000000A2", "27103EA80028011C2F"},
                                                        {"0000000000A1", "27103EA80028011C2"},
                                                        {"0000000000A1", "27103EA80028011C2X"},
                                                        {"0000000000A1", "calibrated"},
                                                        {"0000000000A1", ""}};
    for (const auto& [neuron, text] : kBad) {
        WriteFileFor(neuron, text);
        const FileDialog dialog(File());
        Boxes().Answer(IDOK);
        Load(window, false);
    }
    EXPECT_EQ(SeenBoxes(), Lines(std::size(kBad), kMissingBox));
    EXPECT_EQ(Changes(Host().Log()), Lines());
    EXPECT_EQ(FactoryText(), kUncalibrated);
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLWEEK), L"12") << "what the unit holds";
}

TEST_F(CalibrationFiles, WindowClosedWhileADialogIsUp) {
    for (const bool save : {true, false}) {
        const Window window = Open();
        const FileDialog dialog({}, [&] { window->Unload(); });
        Choose(*window, save ? IDM_CALIBRATIONS_SAVE : IDM_CALIBRATIONS_LOAD);
        EXPECT_FALSE(window->IsOpen());
    }
    EXPECT_EQ(FactoryText(), kUncalibrated);
}

TEST_F(CalibrationFiles, WindowThatNothingElseHoldsLivesUntilItsButtonIsDone) {
    for (const int id : {IDC_CMDSAVETOFILE, IDC_CMDLOADFROMFILE}) {
        const std::weak_ptr<frmVantor> window = Open();
        const HWND button = PageItem(*window.lock(), kTabGeneralData, id);
        const FileDialog dialog({}, [&] {
            window.lock()->Unload();
            EXPECT_FALSE(window.expired()) << "the command is still at work";
        });
        SendMessageW(button, BM_CLICK, 0, 0);
        EXPECT_TRUE(window.expired());
    }
}

TEST_F(CalibrationFiles, WindowClosedWhileTheNeuronIdIsReadAsksForNoFile) {
    for (const bool button : {false, true}) {
        const Window window = Open();
        const NoFileDialog none;
        Host().Call(L"IDevice.NeuronID.get", 1, [&] { window->Unload(); });
        Save(window, button);
        EXPECT_FALSE(window->IsOpen());
        EXPECT_EQ(Host().Count(L"IDevice.NeuronID.get"), 1);
    }
}

TEST_F(CalibrationFiles, WindowClosedWhileTheUnitIsWritten) {
    WriteFileFor("0000000000A1", "27103EA80028011C2F");
    const Window window = Open();
    const FileDialog dialog(File());
    Host().Call(L"IFile.ValueText.put", 1, [&] { window->Unload(); });
    Choose(*window, IDM_CALIBRATIONS_LOAD);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(FactoryText(), kCalibrated) << "what was begun is finished";
}

TEST_F(CalibrationFiles, FrozenWindowOffersNothing) {
    const Window window = Open();
    window->SetFreeze(true);
    EXPECT_FALSE(ActionMenuEnabled(*window));
    EXPECT_FALSE(IsWindowEnabled(window->PageWindow(kTabGeneralData)));
    window->SetFreeze(false);
}

}  // namespace
}  // namespace quillon::test
