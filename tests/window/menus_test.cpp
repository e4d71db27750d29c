// The menu bar and what its commands and the buttons do.
#include "com/module.h"
#include "plugin/process_state.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Menus : public WindowTest {};

// This program sees a root of the registry as if nothing stood there.
class EmptyRegistry {
public:
    explicit EmptyRegistry(HKEY root) : m_root(root) {
        HKEY empty = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, REG_OPTION_VOLATILE,
                                  KEY_ALL_ACCESS, nullptr, &empty, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(root, empty), ERROR_SUCCESS);
        RegCloseKey(empty);
    }
    EmptyRegistry(const EmptyRegistry&) = delete;
    EmptyRegistry& operator=(const EmptyRegistry&) = delete;
    ~EmptyRegistry() {
        RegOverridePredefKey(m_root, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
    }

private:
    static constexpr const wchar_t* kPath = L"Software\\QuillonTest";
    HKEY m_root;
};

std::wstring FileOf(HMODULE module) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

TEST_F(Menus, BarHasThreeMenus) {
    const Window window = Open();
    EXPECT_EQ(MenuEntries(GetMenu(window->Handle())), (Lines{L"&File", L"&Action", L"?"}));
    EXPECT_EQ(MenuEntries(GetSubMenu(GetMenu(window->Handle()), 0)), Lines{L"E&xit"});
    EXPECT_EQ(MenuEntries(GetSubMenu(GetMenu(window->Handle()), 2)),
              (Lines{L"&Technical Bulletin...", L"&Help", L"-", L"&About"}));
}

TEST_F(Menus, ActionHoldsApplicationSeparatorParametersAndCalibrations) {
    const Window window = Open();
    const HMENU action = ActionMenu(*window);
    EXPECT_EQ(MenuEntries(action),
              (Lines{L"&Application", L"-", L"&Parameters", L"&Calibrations"}));
    EXPECT_EQ(MenuEntries(GetSubMenu(action, 0)), (Lines{L"&Save as...", L"&Download"}));
    EXPECT_EQ(MenuEntries(GetSubMenu(action, 2)), (Lines{L"&save as...", L"&Download"}));
    EXPECT_EQ(MenuEntries(GetSubMenu(action, 3)), (Lines{L"&Save as...", L"&Download"}));
}

TEST_F(Menus, HideAppDownloadTakesOutApplicationAndItsSeparator) {
    WriteSettings("[Settings]\r\nHideAppDownload=1\r\n");
    const Window window = Open();
    EXPECT_EQ(MenuEntries(ActionMenu(*window)), (Lines{L"&Parameters", L"&Calibrations"}));
}

TEST_F(Menus, HideAppDownloadOfZeroShowsIt) {
    WriteSettings("[Settings]\r\nHideAppDownload=0\r\n");
    EXPECT_EQ(MenuEntries(ActionMenu(*Open())).at(0), L"&Application");
}

TEST_F(Menus, ExitClosesTheWindow) {
    const Window window = Open();
    Choose(*window, IDM_FILE_EXIT);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(window->Handle(), nullptr);
}

TEST_F(Menus, WinkAndResetCallTheDevice) {
    const Window window = Open();
    Press(*window, kTabHw, IDC_CMDWINK);
    EXPECT_EQ(Host().Count(L"IDevice.Wink"), 1);
    Press(*window, kTabHw, IDC_HW_RESET);
    EXPECT_EQ(Host().Count(L"IDevice.Reset"), 1);
    Press(*window, kTabMain, IDC_MAIN_RESET);
    EXPECT_EQ(Host().Count(L"IDevice.Reset"), 2);
    EXPECT_EQ(Host().Count(L"IDevice.Wink"), 1);
}

TEST_F(Menus, FailingWinkAndResetAreSilent) {
    const Window window = Open();
    Host().FailAlways(L"IDevice.Wink");
    Host().FailAlways(L"IDevice.Reset");
    Press(*window, kTabHw, IDC_CMDWINK);
    Press(*window, kTabHw, IDC_HW_RESET);
    EXPECT_TRUE(Boxes().Seen().empty());
    EXPECT_TRUE(window->IsOpen());
}

TEST_F(Menus, ListCommandsWithoutAListInFocusDoNothing) {
    const Window window = Open();
    for (const int command : {IDM_EDIT_VALUE, IDM_COPY, IDM_SELECT_ALL, 4711})
        Choose(*window, command);
    EXPECT_EQ(Host().Log(), Lines());
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(Menus, AboutShowsModelsAndVersion) {
    const Window window = Open();
    Boxes().Answer(IDOK);
    Choose(*window, IDM_ABOUT);
    ASSERT_EQ(Boxes().Seen().size(), 1u);
    const Box& box = Boxes().Seen()[0];
    EXPECT_EQ(box.title, L"About Merrowind New_Nimbra PlugIn");
    EXPECT_EQ(box.text,
              L"Merrowind New_Nimbra PlugIn enables you to test and commission the following "
              L"models of Nimbra Modules: KX-4410-0xxxVersion 2.1.14");
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    EXPECT_TRUE(box.hadOwner);
    EXPECT_TRUE(IsWindowEnabled(window->Handle())) << "usable again";
}

TEST_F(Menus, AboutIsClosedByEscapeToo) {
    const Window window = Open();
    Boxes().Answer(IDOK,
                   [] { SendMessageW(GetActiveWindow(), WM_COMMAND, MAKELONG(IDCANCEL, 0), 0); });
    Choose(*window, IDM_ABOUT);
    EXPECT_EQ(Boxes().Seen().size(), 1u);
}

// ---- help and documentation

class Documentation : public Menus {
protected:
    // The only message that the command shows, or an empty text.
    std::wstring Open(const Window& window, bool message = true) {
        const std::size_t before = Boxes().Seen().size();
        if (message) Boxes().Answer(IDOK);
        Choose(*window, IDM_DOCUMENTATION);
        if (Boxes().Seen().size() == before) return {};
        const Box& box = Boxes().Seen().back();
        EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
        EXPECT_EQ(box.icon, Icon::kNone);
        return box.text;
    }
    using WindowTest::Open;
};

const wchar_t* const kNotAvailable = L"Technical bullettin not available";

TEST_F(Documentation, FileThatDoesNotExist) {
    EXPECT_EQ(Open(WindowTest::Open()), kNotAvailable);
}

TEST_F(Documentation, MissingOrUnreadableIdentityIsAFileThatDoesNotExist) {
    RemoveFile(Left(), "FFFA");
    const Window window = WindowTest::Open();
    EXPECT_EQ(Open(window), kNotAvailable);
    Host().FailAlways(L"IFile.ValueText.get");
    EXPECT_EQ(Open(window), kNotAvailable);
    Host().Restore();
    Host().AnswerNothing(L"IDevice.Files.get");
    EXPECT_EQ(Open(window), kNotAvailable);
}

TEST_F(Documentation, IdentityThatIsNoNumberLeadsNowhere) {
    // What a path built blindly would lead to, and no viewer that would show it.
    const std::wstring outside = InFolder(L"..\\x.pdf");
    WriteBytes(outside, "%PDF-1.4");
    const Window window = WindowTest::Open();
    const EmptyRegistry withoutViewers(HKEY_CLASSES_ROOT);
    for (const wchar_t* text : {L"..\\x", L"?", L"", L"123", L"C:\\a"}) {
        Host().Answer(L"IFile.ValueText.get", text);
        EXPECT_EQ(Open(window), kNotAvailable);
    }
    DeleteFileW(outside.c_str());
}

TEST_F(Documentation, FileWithoutAViewerSaysSo) {
    const std::wstring file = InFolder(L"0001.pdf");
    WriteBytes(file, "%PDF-1.4");
    const Window window = WindowTest::Open();
    const EmptyRegistry withoutViewers(HKEY_CLASSES_ROOT);
    const std::wstring text = Open(window);
    DeleteFileW(file.c_str());
    EXPECT_EQ(text, L"Viewer not Available. Please install the viewer to see the documentation");
}

// The viewer's DLL stays loaded once it was needed; each of these tests begins and ends without it.
class Help : public Menus {
protected:
    void SetUp() override {
        Menus::SetUp();
        Unload();
        // What the viewer makes for ever is made before it is counted.
        ChooseWith("absent.chm");
        Unload();
        CountAgain();
    }
    void TearDown() override {
        Unload();
        Menus::TearDown();
    }

    static HMODULE Viewer() { return GetModuleHandleW(L"hhctrl.ocx"); }
    static void Unload() {
        while (Viewer()) FreeLibrary(Viewer());
    }
    // Opens help in a window whose settings name this file.
    void ChooseWith(const std::string& file) {
        WriteSettings("[Settings]\r\nHtmlHelp=" + file + "\r\n");
        const Window window = Open();
        Choose(*window, IDM_HELP_TOPICS);
        window->Unload();
    }
};

TEST_F(Help, NameThatLeavesTheFolderIsAMissingFile) {
    for (const char* file :
         {"..\\room.chm", "help\\..\\..\\room.chm", "C:\\room.chm", "C:room.chm", "\\room.chm",
          "\\\\server\\share\\room.chm", "room.chm:stream", "NUL", "room.chm.", ""}) {
        SCOPED_TRACE(file);
        ChooseWith(file);
        EXPECT_FALSE(Viewer()) << "the viewer was asked for it";
    }
    ChooseWith("help\\room.chm");
    EXPECT_TRUE(Viewer()) << "a folder in there is fine";
}

TEST_F(Help, ViewerPlantedBesideTheHostIsNotLoaded) {
    const std::wstring planted = InFolder(L"hhctrl.ocx");
    // Any DLL will do.
    ASSERT_TRUE(
        CopyFileW(FileOf(GetModuleHandleW(L"Quorvex.dll")).c_str(), planted.c_str(), FALSE));
    ChooseWith("room.chm");
    const std::wstring loaded = Viewer() ? FileOf(Viewer()) : L"none";
    Unload();
    DeleteFileW(planted.c_str());
    wchar_t system[MAX_PATH];
    GetSystemDirectoryW(system, MAX_PATH);
    EXPECT_EQ(CompareStringOrdinal(loaded.c_str(), -1,
                                   (std::wstring(system) + L"\\hhctrl.ocx").c_str(), -1, TRUE),
              CSTR_EQUAL)
        << Narrow(loaded);
}

TEST_F(Help, WithoutTheViewerTheInstallationIsAskedFor) {
    const Window window = Open();
    const EmptyRegistry withoutViewer(HKEY_LOCAL_MACHINE);
    Boxes().Answer(IDOK);
    Choose(*window, IDM_HELP_TOPICS);
    ASSERT_EQ(Boxes().Seen().size(), 1u);
    const Box& box = Boxes().Seen()[0];
    EXPECT_EQ(box.text, L"Please insert the Tessaly CD-ROM and install the Help viewer");
    EXPECT_EQ(box.title, L"Help viewer non installed on this machine");
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(box.icon, Icon::kNone);
    EXPECT_TRUE(box.hadOwner);
}

}  // namespace
}  // namespace quillon::test
