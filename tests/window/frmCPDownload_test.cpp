// The parameter dialog by itself: its lists, its keys, the file that it makes.
#include "window/parameter_fixture.h"

namespace quillon::test {
namespace {

using ParameterDialog = ParameterTest;
using Numbers = std::vector<int>;

const std::string kFour =
    FileOfVariables({Entry("NCI_0", "10", "first", "0"), Entry("NCI_1", "11", "second", "1"),
                     Entry("NCI_2", "12", "third", ""), Entry("NCI_3", "13", "fourth", "-2")});

TEST_F(ParameterDialog, ListsEveryEntryByNameAndKeepsItsLine) {
    const std::string properties =
        "[CPs]\r\nTotalNumber=1\r\n" + Entry("CP_0", "a\\b", "last", "1");
    ShowForm(kFour + properties, [](HWND form) {
        EXPECT_EQ(ListBoxEntries(Choice(form)),
                  (Lines{L"first", L"second", L"third", L"fourth", L"last"}));
        EXPECT_EQ(ListBoxEntries(Hidden(form)),
                  (Lines{L"NC\\0\\10", L"NC\\1\\11", L"NC\\2\\12", L"NC\\3\\13", L"CP\\0\\a\\b"}));
        EXPECT_EQ(Selected(Choice(form)), (Numbers{1, 3, 4}));
        EXPECT_EQ(Selected(Hidden(form)), (Numbers{1, 3, 4}));
        PressCancel(form);
    });
}

TEST_F(ParameterDialog, HasItsCaptionsAndItsHiddenList) {
    ShowForm(kFour, [](HWND form) {
        EXPECT_EQ(WindowText(form), L"Parameter download");
        EXPECT_EQ(WindowText(GetDlgItem(form, IDOK)), L"&OK");
        EXPECT_EQ(WindowText(GetDlgItem(form, IDCANCEL)), L"&Cancel");
        EXPECT_TRUE(IsWindowVisible(Choice(form)));
        EXPECT_FALSE(IsWindowVisible(Hidden(form)));
        EXPECT_EQ(GetFocus(), Choice(form));
        PressCancel(form);
    });
}

TEST_F(ParameterDialog, ClickTurnsALineAndItsHiddenOne) {
    ShowForm(kFour, [](HWND form) {
        Click(Choice(form), 0);
        EXPECT_EQ(Selected(Hidden(form)), (Numbers{0, 1, 3}));
        Click(Choice(form), 1);
        EXPECT_EQ(Selected(Choice(form)), (Numbers{0, 3}));
        EXPECT_EQ(Selected(Hidden(form)), (Numbers{0, 3}));
        PressCancel(form);
    });
}

TEST_F(ParameterDialog, OkWritesTheChosenEntriesNumberedAnew) {
    EXPECT_EQ(ShowForm(kFour, PressOk), Temporary());
    EXPECT_EQ(ReadBytes(Temporary()),
              "[GEN_INFO]\r\nProgramId=9F\r\n"
              "[NCI_0]\r\nIndex=1\r\nValue=11\r\n[NCI_1]\r\nIndex=3\r\nValue=13\r\n"
              "[NCIs]\r\nTotalNumber=2\r\n[CPs]\r\nTotalNumber=0\r\n");
}

TEST_F(ParameterDialog, NothingChosenIsAFileWithoutEntries) {
    EXPECT_EQ(ShowForm(FileOfVariables({Entry("NCI_0", "1", "a", "0")}), PressOk), Temporary());
    EXPECT_EQ(ReadBytes(Temporary()),
              "[GEN_INFO]\r\nProgramId=9F\r\n[NCIs]\r\nTotalNumber=0\r\n"
              "[CPs]\r\nTotalNumber=0\r\n");
}

TEST_F(ParameterDialog, CancelGivesNoFileAndTheOldOneIsGone) {
    for (const auto& leave : std::vector<std::function<void(HWND)>>{
             PressCancel, [](HWND form) { SendMessageW(form, WM_CLOSE, 0, 0); },
             [](HWND form) { PostMessageW(Choice(form), WM_KEYDOWN, VK_ESCAPE, 1); }}) {
        WriteBytes(Temporary(), "of an earlier time");
        EXPECT_EQ(ShowForm(kFour, leave), L"");
        EXPECT_FALSE(FileExists(Temporary()));
    }
}

TEST_F(ParameterDialog, MissingSourceOpensWithEmptyLists) {
    EXPECT_EQ(ShowForm([](HWND form) {
                  EXPECT_EQ(ListBoxEntries(Choice(form)), Lines());
                  PressOk(form);
              }),
              Temporary());
    EXPECT_EQ(ReadBytes(Temporary()),
              "[GEN_INFO]\r\nProgramId=\r\n[NCIs]\r\nTotalNumber=0\r\n[CPs]\r\nTotalNumber=0\r\n");
}

TEST_F(ParameterDialog, TotalIsNotBelievedBeyondTheSections) {
    const std::string rest = "\r\n" + Entry("NCI_1", "11", "second", "1");
    ShowForm("[NCIs]\r\nTotalNumber=1000000000" + rest, [](HWND form) {
        EXPECT_EQ(ListBoxEntries(Choice(form)), (Lines{L"", L"second"}));
        EXPECT_EQ(ListBoxEntries(Hidden(form)), (Lines{L"NC\\0\\", L"NC\\1\\11"}));
        PressCancel(form);
    });
    ShowForm("[NCIs]\r\nTotalNumber=-5" + rest, [](HWND form) {
        EXPECT_EQ(ListBoxEntries(Choice(form)), Lines());
        PressCancel(form);
    });
}

TEST_F(ParameterDialog, ValuesArriveAsTheirLineIsCut) {
    const std::string longest(4095, 'x');
    ShowForm(FileOfVariables(
                 {Entry("NCI_0", "a\\b", "0", "1"), Entry("NCI_1", "5 / five", "1", "1"),
                  Entry("NCI_2", "\"'q' \"", "2", "1"), Entry("NCI_3", longest + "y", "3", "1"),
                  Entry("NCI_4", "\xE9 \x80", "\xB0", "1")}),
             [](HWND form) {
                 EXPECT_EQ(ListBoxEntries(Choice(form)).back(), L"\x00B0");
                 PressOk(form);
             });
    EXPECT_EQ(ReadBytes(Temporary()),
              "[GEN_INFO]\r\nProgramId=9F\r\n[NCI_0]\r\nIndex=0\r\nValue=a\r\n"
              "[NCI_1]\r\nIndex=1\r\nValue=5\r\n[NCI_2]\r\nIndex=2\r\nValue='q'\r\n"
              "[NCI_3]\r\nIndex=3\r\nValue=" +
                  longest +
                  "\r\n[NCI_4]\r\nIndex=4\r\nValue=\xE9 \x80\r\n"
                  "[NCIs]\r\nTotalNumber=5\r\n[CPs]\r\nTotalNumber=0\r\n");
}

// ---- keys

class ParameterKeys : public ParameterTest {
protected:
    void TearDown() override {
        Hold(0);
        ParameterTest::TearDown();
    }
    // Which modifier key is down; 0: none.
    static void Hold(int key) {
        BYTE state[256] = {};
        if (key != 0) state[key] = 0x80;
        SetKeyboardState(state);
    }
    static void Key(HWND control, WPARAM key) {
        SendMessageW(control, WM_KEYDOWN, key, 1);
        SendMessageW(control, WM_KEYUP, key, 1);
    }
};

TEST_F(ParameterKeys, ControlASelectsAll) {
    ShowForm(kFour, [](HWND form) {
        Key(Choice(form), 'A');
        EXPECT_EQ(Selected(Choice(form)), (Numbers{1, 3})) << "a letter alone selects nothing";
        Hold(VK_CONTROL);
        Key(Choice(form), 'A');
        Hold(0);
        EXPECT_EQ(Selected(Choice(form)), (Numbers{0, 1, 2, 3}));
        EXPECT_EQ(Selected(Hidden(form)), (Numbers{0, 1, 2, 3}));
        PressCancel(form);
    });
}

TEST_F(ParameterKeys, BlankTurnsTheLineThatTheArrowsReach) {
    ShowForm(kFour, [](HWND form) {
        SendMessageW(Choice(form), LB_SETCARETINDEX, 0, 0);
        Key(Choice(form), VK_DOWN);
        Key(Choice(form), VK_DOWN);
        Key(Choice(form), VK_SPACE);
        EXPECT_EQ(Selected(Choice(form)), (Numbers{1, 2, 3}));
        EXPECT_EQ(Selected(Hidden(form)), (Numbers{1, 2, 3}));
        PressCancel(form);
    });
}

TEST_F(ParameterKeys, TabGoesFromTheListToTheButtons) {
    ShowForm(kFour, [](HWND form) {
        Numbers order;
        HWND control = Choice(form);
        for (int step = 0; step < 3; ++step) {
            control = GetNextDlgTabItem(form, control, FALSE);
            order.push_back(GetDlgCtrlID(control));
        }
        EXPECT_EQ(order, (Numbers{IDOK, IDCANCEL, IDC_LSTCP_CHOICE}));
        PressCancel(form);
    });
}

TEST_F(ParameterKeys, EnterIsOk) {
    EXPECT_EQ(
        ShowForm(kFour, [](HWND form) { PostMessageW(Choice(form), WM_KEYDOWN, VK_RETURN, 1); }),
        Temporary());
}

// ---- a temporary file that is in the way

class UnsharedFile {
public:
    explicit UnsharedFile(const std::wstring& path)
        : m_file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {
        EXPECT_NE(m_file, INVALID_HANDLE_VALUE);
    }
    UnsharedFile(const UnsharedFile&) = delete;
    UnsharedFile& operator=(const UnsharedFile&) = delete;
    ~UnsharedFile() { CloseHandle(m_file); }

private:
    HANDLE m_file;
};

TEST_F(ParameterDialog, OldFileThatCannotBeDeletedGivesNoFile) {
    WriteBytes(Temporary(), "of an earlier time");
    {
        const UnsharedFile open(Temporary());
        EXPECT_EQ(ShowForm(kFour, PressOk), L"");
    }
    EXPECT_EQ(ReadBytes(Temporary()), "of an earlier time");
}

TEST_F(ParameterDialog, FolderInTheFilesPlaceGivesNoFile) {
    ASSERT_TRUE(CreateDirectoryW(Temporary().c_str(), nullptr));
    EXPECT_EQ(ShowForm(kFour, PressOk), L"");
    EXPECT_TRUE(RemoveDirectoryW(Temporary().c_str()));
}

TEST_F(ParameterDialog, FileThatCannotBeWrittenGivesNoFile) {
    EXPECT_EQ(ShowForm(kFour,
                       [this](HWND form) {
                           const UnsharedFile open(Temporary());
                           PressOk(form);
                       }),
              L"");
}

// ---- what happens while messages are handled

TEST_F(ParameterDialog, CancelWhileTheFileIsMadeGivesNoFile) {
    EXPECT_EQ(ShowForm(kFour,
                       [this](HWND form) {
                           Posted().Post([form] { PressCancel(form); });
                           PressOk(form);
                       }),
              L"");
    EXPECT_FALSE(FileExists(Temporary()));
}

TEST_F(ParameterDialog, SecondOkWhileTheFileIsMadeIsLeftOut) {
    EXPECT_EQ(ShowForm(kFour,
                       [this](HWND form) {
                           Posted().Post([form] { PressOk(form); });
                           PressOk(form);
                       }),
              Temporary());
    EXPECT_EQ(ReadBytes(Temporary()).find("NCI_2"), std::string::npos);
}

TEST_F(ParameterDialog, DialogGoneWhileTheFileIsMadeGivesNoFile) {
    EXPECT_EQ(ShowForm(kFour,
                       [this](HWND form) {
                           Posted().Post([form] { DestroyWindow(form); });
                           PressOk(form);
                       }),
              L"");
}

TEST_F(ParameterDialog, QuitMessageEndsItWithoutAFile) {
    EXPECT_EQ(ShowForm(kFour, [](HWND) { PostQuitMessage(7); }), L"");
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u) << "the host's own loop ends, too";
}

TEST_F(ParameterDialog, GrowsWithItsList) {
    ShowForm(kFour, [](HWND form) {
        RECT before{};
        GetWindowRect(Choice(form), &before);
        RECT whole{};
        GetWindowRect(form, &whole);
        SetWindowPos(form, nullptr, 0, 0, whole.right - whole.left + 50,
                     whole.bottom - whole.top + 30, SWP_NOMOVE | SWP_NOZORDER);
        RECT after{};
        GetWindowRect(Choice(form), &after);
        EXPECT_EQ(after.right - after.left, before.right - before.left + 50);
        EXPECT_EQ(after.bottom - after.top, before.bottom - before.top + 30);
        PressCancel(form);
    });
}

}  // namespace
}  // namespace quillon::test
