// Application export and download from the menu, with the platform's own file dialogs.
#include "window/file_dialog.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Transfer : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        m_file = InFolder(Wide(ProgramId()) + L".app");
        if (WarmUpFileDialogs(InFolder(L"warm-up.app"))) CountAgain();
    }
    void TearDown() override {
        DeleteFileW(m_file.c_str());
        WindowTest::TearDown();
    }
    const std::wstring& File() const { return m_file; }
    // The focus is on a selected row that has an editor, which fails before it comes up.
    static HWND SelectRow(const Window& window) {
        window->SelectTab(kTabTune);
        const HWND list = PageItem(*window, kTabTune, IDC_LVCPS);
        SetFocus(list);
        ListView_SetItemState(list, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        Host().FailAlways(L"Type.GenType.get");
        return list;
    }
    // All that an operator can do to a row, and to what may stop a command that runs.
    static void Meddle(const Window& window, HWND list) {
        Choose(*window, IDM_EDIT_VALUE);
        NMITEMACTIVATE click{};
        click.hdr = {list, IDC_LVCPS, static_cast<UINT>(NM_DBLCLK)};
        SendMessageW(GetParent(list), WM_NOTIFY, IDC_LVCPS, reinterpret_cast<LPARAM>(&click));
        PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
        MSG key{};
        PeekMessageW(&key, list, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE);
        Press(*window, kTabHw, IDC_CMDWINK);
        Press(*window, kTabHw, IDC_HW_RESET);
        Press(*window, kTabMain, IDC_MAIN_RESET);
        for (const int command : {IDM_ABOUT, IDM_DOCUMENTATION, IDM_HELP_TOPICS})
            Choose(*window, command);
    }
    static void ExpectNothingCameOfIt() {
        Poster::Drain();
        EXPECT_EQ(Host().Count(L"Type.GenType.get"), 0) << "an editor";
        EXPECT_EQ(Host().Count(L"IDevice.Wink"), 0);
        EXPECT_EQ(Host().Count(L"IDevice.Reset"), 0);
    }

private:
    std::wstring m_file;
};

TEST_F(Transfer, ExportWritesTheFileThatTheOperatorNames) {
    const Window window = Open();
    const FileDialog dialog(File());
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_EQ(dialog.Title(), L"Save Application to file...");
    EXPECT_EQ(dialog.Proposed(), L"Left.app");
    EXPECT_EQ(dialog.Filter(), L"APP Files (*.app)");
    EXPECT_TRUE(FileExists(File()));
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(Transfer, ProposedNameIsOneThatAFileCanHave) {
    Left()["displayName"] = "1/2: \"A\"";
    const Window window = Open();
    const FileDialog dialog({});
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_EQ(dialog.Proposed(), L"1_2_ _A_.app");
}

TEST_F(Transfer, CancelDoesNothing) {
    const Window window = Open();
    for (const int command : {IDM_APPLICATION_SAVE, IDM_APPLICATION_DOWNLOAD}) {
        const FileDialog dialog({});
        Choose(*window, command);
        EXPECT_TRUE(ActionMenuEnabled(*window));
    }
    EXPECT_EQ(Host().Count(L"Point.RawValue.get"), 0);
    EXPECT_EQ(Changes(Host().Log()), Lines());
    EXPECT_EQ(Host().Reports(), Lines());
}

TEST_F(Transfer, ActionMenuRestsAndTheSameCommandIsLeftOutMeanwhile) {
    const Window window = Open();
    const FileDialog dialog(File());
    bool enabled = true;
    Host().Call(L"Point.Name.get", 1, [&] {
        enabled = ActionMenuEnabled(*window);
        Choose(*window, IDM_APPLICATION_SAVE);
        Choose(*window, IDM_APPLICATION_DOWNLOAD);
        window->Update();
    });
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(Transfer, NothingOpensAndNothingIsResetWhileACommandWorks) {
    const Window window = Open();
    const HWND list = SelectRow(window);
    int meddled = 0;
    const auto meddleAt = [&](const wchar_t* member) {
        Host().Call(member, 1, [&] {
            ++meddled;
            SetFocus(list);
            Meddle(window, list);
        });
    };
    meddleAt(L"Point.Name.get");
    {
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_SAVE);
    }
    ExpectNothingCameOfIt();
    SelectRow(window);
    meddleAt(L"IDevice.SISD.get");
    {
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_DOWNLOAD);
    }
    ExpectNothingCameOfIt();
    SelectRow(window);
    // The lists are empty then; buttons and boxes are there.
    meddleAt(L"IDevice.ConfigProperties.get");
    window->Update();
    ExpectNothingCameOfIt();
    EXPECT_EQ(meddled, 3);
    EXPECT_TRUE(Boxes().Seen().empty());
    SelectRow(window);
    Choose(*window, IDM_EDIT_VALUE);
    EXPECT_EQ(Host().Count(L"Type.GenType.get"), 1) << "after the command";
}

TEST_F(Transfer, FrozenWindowStaysDisabledAfterAnExport) {
    const Window window = Open();
    const FileDialog dialog(File());
    Host().Call(L"Point.Name.get", 1, [&] { window->SetFreeze(true); });
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_FALSE(ActionMenuEnabled(*window));
}

TEST_F(Transfer, DownloadGivesTheFileToTheDeviceAndRefreshesTheState) {
    const Window window = Open();
    {
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_SAVE);
    }
    Host().Clear();
    const FileDialog dialog(File());
    Choose(*window, IDM_APPLICATION_DOWNLOAD);
    EXPECT_EQ(dialog.Title(), L"Download Application from file...");
    EXPECT_EQ(dialog.Filter(), L"APP Files (*.app)");
    EXPECT_EQ(Host().Reports().size(), 1u);
    EXPECT_GT(Host().Count(L"IDevice.State.get"), 0);
}

TEST_F(Transfer, ListsShowWhatTheDeviceHoldsAfterADownload) {
    const Window window = Open();
    {
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_SAVE);
    }
    const HWND monitor = PageItem(*window, kTabTest, IDC_LVMONITOR);
    const auto download = [&] {
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_DOWNLOAD);
    };
    PutValue(kLeft, 0, L"24");
    download();
    EXPECT_EQ(CellText(monitor, 0, 1), L"24.00 degrees Celsius");
    // Also where the device took only a part.
    PutValue(kLeft, 0, L"25");
    Host().FailAlways(L"IDevice.GoOnLine");
    download();
    EXPECT_EQ(Host().Reports().back().substr(0, 8), L"8004032F");
    EXPECT_EQ(CellText(monitor, 0, 1), L"25.00 degrees Celsius");
}

TEST_F(Transfer, ApplicationThatChangesDuringAnExportIsShownAfterIt) {
    const com::Ptr<CDevice> device = MakeDevice();
    const Window window = ShowFocus(device);
    const FileDialog dialog(File());
    Host().Call(L"Point.Name.get", 1, [&] {
        PutValue(kLeft, 0, L"24");
        device->RaiseChangedApplication();
    });
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_EQ(CellText(PageItem(*window, kTabTest, IDC_LVMONITOR), 0, 1), L"24.00 degrees Celsius");
}

TEST_F(Transfer, WindowClosedDuringAnExport) {
    for (const bool posted : {true, false}) {
        const Window window = Open();
        const FileDialog dialog(File());
        Host().Call(L"Point.Name.get", 2, [&] {
            if (posted)
                PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
            else
                window->Unload();
        });
        Choose(*window, IDM_APPLICATION_SAVE);
        EXPECT_FALSE(window->IsOpen());
        DeleteFileW(File().c_str());
    }
}

TEST_F(Transfer, WindowClosedDuringADownload) {
    {
        const Window window = Open();
        const FileDialog dialog(File());
        Choose(*window, IDM_APPLICATION_SAVE);
        window->Unload();
    }
    for (const bool posted : {true, false}) {
        const Window window = Open();
        const FileDialog dialog(File());
        Host().Call(L"IDevice.SISD.get", 1, [&] {
            if (posted)
                PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
            else
                window->Unload();
        });
        Choose(*window, IDM_APPLICATION_DOWNLOAD);
        EXPECT_FALSE(window->IsOpen());
    }
}

TEST_F(Transfer, WindowClosedWhileTheDevicesNameIsReadAsksForNoFile) {
    const Window window = Open();
    const NoFileDialog none;
    Host().Call(L"IDevice.DisplayName.get", 1, [&] { window->Unload(); });
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Transfer, WindowClosedWhileTheFileDialogIsUp) {
    const Window window = Open();
    const FileDialog dialog({}, [&] { window->Unload(); });
    Choose(*window, IDM_APPLICATION_SAVE);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_FALSE(FileExists(File()));
}

}  // namespace
}  // namespace quillon::test
