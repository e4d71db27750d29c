// Saving and downloading parameters, and the display's files, from the menu.
#include "com/late.h"
#include "window/parameter_fixture.h"

namespace quillon::test {
namespace {

class Parameters : public ParameterTest {
protected:
    // Answers both dialogs of a download.
    void Download(const Window& window, std::function<void(HWND)> act) {
        const FileDialog file(Source());
        const ParameterForm form(std::move(act));
        Choose(*window, IDM_PARAM_DOWNLOAD);
        m_title = file.Title();
        EXPECT_EQ(file.Filter(), L"CPS Files (*.cps)");
    }
    void Save(const Window& window) {
        const FileDialog file(Source());
        Choose(*window, IDM_PARAM_SAVE);
        m_title = file.Title();
        m_proposed = file.Proposed();
        EXPECT_EQ(file.Filter(), L"CPS Files (*.cps)");
    }
    std::wstring PropertyOf(std::wstring_view neuron, int index) {
        Host().Record(false);
        const com::Ptr<IDevice> device = MakeHostDevice();
        com::Check(device->putref_Network(OpenNetwork()));
        com::Check(device->put_NeuronID(com::Bstr(neuron).Get()));
        com::Ptr<IDispatch> points;
        com::Check(device->get_ConfigProperties(points.Out()));
        const auto point = com::Get(points.Get(), L"Item", {com::Variant(index)}).AsObject();
        const std::wstring value = com::Get(point.Get(), L"Value").AsText();
        Host().Record(true);
        return value;
    }
    static long Downloads() { return Host().Count(L"IDevice.ParameterDownload"); }

    std::wstring m_title;
    std::wstring m_proposed;
};

TEST_F(Parameters, SaveHandsTheNamedFileToTheDevice) {
    const Window window = Open();
    Save(window);
    EXPECT_EQ(m_title, L"Save parameters to file...");
    EXPECT_EQ(m_proposed, L"Left.cps");
    EXPECT_EQ(Host().Count(L"IDevice.ParameterExport"), 1);
    EXPECT_NE(ReadBytes(Source()).find("Name=cpFanHigh"), std::string::npos);
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(Parameters, CancelledFileDialogsDoNothing) {
    const Window window = Open();
    for (const int command : {IDM_PARAM_SAVE, IDM_PARAM_DOWNLOAD}) {
        const FileDialog dialog({});
        Choose(*window, command);
        EXPECT_TRUE(ActionMenuEnabled(*window));
    }
    EXPECT_EQ(Host().Count(L"IDevice.ParameterExport"), 0);
    EXPECT_EQ(Downloads(), 0);
}

TEST_F(Parameters, SavedOfOneDeviceChosenAndDownloadedIntoAnother) {
    {
        const Window left = Open(kLeft);
        Save(left);
        left->Unload();
    }
    const std::wstring code = PropertyOf(kRight, 1);
    const Window right = Open(kRight);
    Download(right, [](HWND form) {
        const Lines names = ListBoxEntries(Choice(form));
        EXPECT_EQ(names.size(), 10u) << "four variables and six properties";
        for (int line = 0; line < 10; ++line)
            if (names[static_cast<std::size_t>(line)] != L"cpFanHigh") Click(Choice(form), line);
        EXPECT_EQ(Selected(Hidden(form)).size(), 1u);
        PressOk(form);
    });
    EXPECT_EQ(m_title, L"Download parameters from file...");
    EXPECT_EQ(Downloads(), 1);
    EXPECT_EQ(PropertyOf(kRight, 2), PropertyOf(kLeft, 2));
    EXPECT_EQ(PropertyOf(kRight, 1), code) << "was not chosen";
    const std::wstring shown = CellText(PageItem(*right, kTabTune, IDC_LVCPS), 2, 1);
    EXPECT_TRUE(shown.starts_with(PropertyOf(kRight, 2))) << "not read again: " << Narrow(shown);
    EXPECT_TRUE(ActionMenuEnabled(*right));
}

TEST_F(Parameters, CancelledDialogDownloadsNothing) {
    const Window window = Open();
    Save(window);
    Download(window, PressCancel);
    EXPECT_EQ(Downloads(), 0);
    EXPECT_TRUE(IsWindowEnabled(window->Handle())) << "usable again";
}

TEST_F(Parameters, FailingDeviceIsItsOwnReporter) {
    const Window window = Open();
    Host().FailAlways(L"IDevice.ParameterExport");
    Host().FailAlways(L"IDevice.ParameterDownload");
    Save(window);
    WriteSource(FileOfVariables({Entry("NCI_0", "1", "first", "1")}));
    Download(window, PressOk);
    EXPECT_TRUE(Boxes().Seen().empty());
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(Parameters, NameThatTheDeviceDoesNotTellIsProposedEmpty) {
    const Window window = Open();
    Host().FailAlways(L"IDevice.DisplayName.get");
    const FileDialog dialog({});
    Choose(*window, IDM_PARAM_SAVE);
    EXPECT_EQ(dialog.Proposed(), L".cps");
}

TEST_F(Parameters, CurrentFolderStaysTheHosts) {
    wchar_t before[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, before);
    const Window window = Open();
    Save(window);
    Download(window, PressOk);
    wchar_t after[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_EQ(std::wstring(after), before);
}

TEST_F(Parameters, WindowClosedWhileTheDialogIsUpDownloadsNothing) {
    const Window window = Open();
    Save(window);
    Download(window, [&](HWND form) {
        window->Unload();
        EXPECT_FALSE(IsWindow(form)) << "goes with its owner";
    });
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(Downloads(), 0);
}

TEST_F(Parameters, WindowClosedWhileTheFileIsMadeDownloadsNothing) {
    const Window window = Open();
    Save(window);
    Download(window, [&](HWND form) {
        Posted().Post([&] { window->Unload(); });
        PressOk(form);
    });
    EXPECT_EQ(Downloads(), 0);
}

TEST_F(Parameters, WindowClosedWhileTheDeviceIsWritten) {
    const Window window = Open();
    Save(window);
    Host().Call(L"IDevice.ParameterDownload", 1, [&] { window->Unload(); });
    Download(window, PressOk);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(Downloads(), 1);
}

// Both would write the same temporary file.
TEST_F(Parameters, SecondWindowWaitsForTheFirstOnesDownload) {
    const Window left = Open(kLeft);
    const Window right = ShowFocus(MakeDevice(kRight));
    Save(left);
    Host().Clear();
    Host().Call(L"IDevice.ParameterDownload", 1, [&] { Choose(*right, IDM_PARAM_DOWNLOAD); });
    Download(left, [&](HWND form) {
        Choose(*right, IDM_PARAM_DOWNLOAD);
        EXPECT_EQ(ShownParameterForm(), form);
        PressOk(form);
    });
    EXPECT_EQ(Downloads(), 1);
    Download(right, PressOk);
    EXPECT_EQ(Downloads(), 2);
}

TEST_F(Parameters, ActionMenuRestsMeanwhile) {
    const Window window = Open();
    Save(window);
    Download(window, [&](HWND form) {
        EXPECT_FALSE(ActionMenuEnabled(*window));
        Choose(*window, IDM_PARAM_SAVE);
        PressCancel(form);
    });
    EXPECT_EQ(Host().Count(L"IDevice.ParameterExport"), 1);
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(Parameters, DisplayCommandsAskForAFile) {
    const auto ask = [](const Window& window, int command) {
        const FileDialog dialog({});
        Choose(*window, command);
        return Lines{dialog.Title(), dialog.Proposed(), dialog.Filter()};
    };
    {
        // What the system keeps after it has listed files of every kind is not counted.
        const Window window = Open();
        ask(window, IDM_DISPLAY_SAVE);
        ask(window, IDM_DISPLAY_DOWNLOAD);
        window->Unload();
    }
    CountAgain();
    const Window window = Open();
    EXPECT_EQ(ask(window, IDM_DISPLAY_SAVE),
              (Lines{L"Save Display to file...", L"Left", L"All Files (*.*)"}));
    EXPECT_EQ(ask(window, IDM_DISPLAY_DOWNLOAD),
              (Lines{L"Download Display from file...", L"", L"All Files (*.*)"}));
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

}  // namespace
}  // namespace quillon::test
