// Keys as the host's own message loop takes them from the queue; copying rows.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Keyboard : public WindowTest {
protected:
    void TearDown() override {
        Hold({});
        WindowTest::TearDown();
    }
    // Which modifier keys are down.
    static void Hold(std::initializer_list<int> keys) {
        BYTE state[256] = {};
        for (const int key : keys) state[key] = 0x80;
        SetKeyboardState(state);
    }
    // Takes a key message from the queue as a host does. True: it was used up on the way.
    static bool Press(HWND control, WPARAM key, UINT kind = WM_KEYDOWN, LPARAM details = 1) {
        EXPECT_TRUE(PostMessageW(control, kind, key, details));
        MSG message{};
        EXPECT_TRUE(PeekMessageW(&message, control, kind, kind, PM_REMOVE));
        EXPECT_EQ(message.wParam, key);
        return message.message == WM_NULL;
    }
    static HWND Focused(const Window& window, int tab, int id) {
        window->SelectTab(tab);
        const HWND control = PageItem(*window, tab, id);
        SetFocus(control);
        EXPECT_EQ(GetFocus(), control);
        return control;
    }
};

TEST_F(Keyboard, F5ReadsAgain) {
    const Window window = Open();
    EXPECT_TRUE(Press(window->Item(IDC_SSTAB1), VK_F5));
    EXPECT_EQ(Host().Count(L"IDevice.State.get"), 1);
    EXPECT_EQ(Host().Count(L"Points.Item"), 11);
}

TEST_F(Keyboard, F5InAPageReadsAgainToo) {
    const Window window = Open();
    EXPECT_TRUE(Press(Focused(window, kTabTest, IDC_LVMONITOR), VK_F5));
    EXPECT_EQ(Host().Count(L"IDevice.State.get"), 1);
}

TEST_F(Keyboard, ControlTabGoesRoundTheTabs) {
    const Window window = Open();
    const HWND tabs = window->Item(IDC_SSTAB1);
    Hold({VK_CONTROL});
    for (const int tab : {2, 3, 4, 5, 6, 7, 0, 1}) {
        EXPECT_TRUE(Press(tabs, VK_TAB));
        EXPECT_EQ(window->SelectedTab(), tab);
    }
    Hold({VK_CONTROL, VK_SHIFT});
    for (const int tab : {0, 7, 6}) {
        EXPECT_TRUE(Press(tabs, VK_TAB));
        EXPECT_EQ(window->SelectedTab(), tab);
    }
}

TEST_F(Keyboard, ControlTabSkipsHiddenTabs) {
    WriteSettings("");
    const Window window = Open();
    Hold({VK_CONTROL});
    for (const int tab : {2, 3, 4, 6, 1}) {
        Press(window->Item(IDC_SSTAB1), VK_TAB);
        EXPECT_EQ(window->SelectedTab(), tab);
    }
}

TEST_F(Keyboard, ControlTabFromAPageMovesTheFocusOutOfIt) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    Hold({VK_CONTROL});
    EXPECT_TRUE(Press(list, VK_TAB));
    EXPECT_EQ(window->SelectedTab(), kTabSetup);
    EXPECT_EQ(GetFocus(), window->Item(IDC_SSTAB1));
}

TEST_F(Keyboard, FrozenWindowKeepsItsTab) {
    const Window window = Open();
    window->SetFreeze(true);
    Hold({VK_CONTROL});
    Press(window->Handle(), VK_TAB);
    EXPECT_EQ(window->SelectedTab(), kTabMain);
}

TEST_F(Keyboard, TabGoesThroughThePageAndBack) {
    const Window window = Open();
    SetFocus(window->Item(IDC_SSTAB1));
    window->SelectTab(kTabHw);
    Lines names;
    for (int step = 0; step < 3; ++step) {
        EXPECT_TRUE(Press(GetFocus(), VK_TAB));
        names.push_back(WindowText(GetFocus()));
    }
    EXPECT_EQ(names, (Lines{L"&Wink", L"&Reset", L""}));
    EXPECT_EQ(GetFocus(), window->Item(IDC_SSTAB1));
}

TEST_F(Keyboard, EscapeDoesNothing) {
    const Window window = Open();
    EXPECT_TRUE(Press(window->Item(IDC_SSTAB1), VK_ESCAPE));
    EXPECT_TRUE(window->IsOpen());
    EXPECT_TRUE(IsWindowVisible(window->Handle()));
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Keyboard, EnterNeverPressesAButton) {
    const Window window = Open();
    for (const auto& [tab, id] :
         {std::pair{kTabMain, IDC_MAIN_RESET}, std::pair{kTabHw, IDC_HW_RESET}})
        EXPECT_TRUE(Press(Focused(window, tab, id), VK_RETURN));
    EXPECT_TRUE(Press(window->Item(IDC_SSTAB1), VK_RETURN));
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Keyboard, BlankPressesTheFocusedButton) {
    const Window window = Open();
    const HWND button = Focused(window, kTabHw, IDC_CMDWINK);
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 1);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 1);
    EXPECT_EQ(Host().Count(L"IDevice.Wink"), 1);
}

TEST_F(Keyboard, EnterAndF2OnARowAreUsedUp) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    EXPECT_TRUE(Press(list, VK_RETURN));
    EXPECT_TRUE(Press(list, VK_F2));
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Keyboard, EditorOfARowOpensAfterTheKeyNotInsideIt) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    // The editor fails before it comes up.
    Host().FailAlways(L"Type.GenType.get");
    for (const WPARAM key : {VK_RETURN, VK_F2}) {
        Host().Clear();
        EXPECT_TRUE(Press(list, key));
        EXPECT_EQ(Host().Log(), Lines());
        Poster::Drain();
        EXPECT_EQ(Host().Count(L"Type.GenType.get"), 1);
    }
}

TEST_F(Keyboard, KeyThatIsHeldDownOpensNoEditor) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Host().FailAlways(L"Type.GenType.get");
    for (const WPARAM key : {VK_RETURN, VK_F2})
        EXPECT_TRUE(Press(list, key, WM_KEYDOWN, 1 | KF_REPEAT << 16));
    Poster::Drain();
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Keyboard, OtherWindowsKeysAreLeftAlone) {
    const Window window = Open();
    const HWND other = CreateWindowW(L"EDIT", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 10, 10,
                                     nullptr, nullptr, nullptr, nullptr);
    for (const WPARAM key : {VK_F5, VK_ESCAPE, VK_TAB, VK_RETURN})
        EXPECT_FALSE(Press(other, key)) << key;
    EXPECT_EQ(Host().Log(), Lines());
    DestroyWindow(other);
}

TEST_F(Keyboard, WithTwoWindowsAKeyGoesToItsOwn) {
    const Window left = Open();
    const Window right = Open(kRight);
    Hold({VK_CONTROL});
    Press(left->Item(IDC_SSTAB1), VK_TAB);
    EXPECT_EQ(left->SelectedTab(), kTabTest);
    EXPECT_EQ(right->SelectedTab(), kTabMain);
    left->Unload();
    Press(right->Item(IDC_SSTAB1), VK_TAB);
    EXPECT_EQ(right->SelectedTab(), kTabTest) << "also when the other is gone";
}

TEST_F(Keyboard, LookingAtAKeyDoesNotUseItUp) {
    const Window window = Open();
    PostMessageW(window->Item(IDC_SSTAB1), WM_KEYDOWN, VK_F5, 1);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE));
    EXPECT_EQ(Host().Log(), Lines());
    PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE);
    EXPECT_EQ(Host().Count(L"IDevice.State.get"), 1);
}

TEST_F(Keyboard, WindowClosedByItsOwnKeyDoesNoHarm) {
    const Window window = Open();
    Host().Call(L"IDevice.State.get", 1, [&] { window->Unload(); });
    EXPECT_TRUE(Press(window->Item(IDC_SSTAB1), VK_F5));
    EXPECT_FALSE(window->IsOpen());
}

// ---- the clipboard

class CopyRows : public Keyboard {
protected:
    static std::wstring Clipboard() {
        if (!OpenClipboard(nullptr)) return L"(no clipboard)";
        std::wstring text = L"(nothing)";
        if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
            text = static_cast<const wchar_t*>(GlobalLock(memory));
            GlobalUnlock(memory);
        }
        CloseClipboard();
        return text;
    }
    static void Empty() {
        OpenClipboard(nullptr);
        EmptyClipboard();
        CloseClipboard();
    }
    void TearDown() override {
        Empty();
        Keyboard::TearDown();
    }
};

const wchar_t* const kAllRows =
    L"nviSetpoint\t21.00 degrees Celsius\r\nnvoSpaceTemp\t22.50 degrees Celsius\r\n"
    L"nviFanSpeedCmd\t50.0 1\r\n";

TEST_F(CopyRows, ControlAAndControlCCopyTheWholeList) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    Empty();
    Hold({VK_CONTROL});
    EXPECT_TRUE(Press(list, 'A'));
    EXPECT_EQ(ListView_GetSelectedCount(list), 3u);
    EXPECT_TRUE(Press(list, 'C'));
    EXPECT_EQ(Clipboard(), kAllRows);
}

TEST_F(CopyRows, SelectedRowsAloneAreCopied) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
    Hold({VK_CONTROL});
    Press(list, 'C');
    EXPECT_EQ(Clipboard(), L"nvoSpaceTemp\t22.50 degrees Celsius\r\n");
}

TEST_F(CopyRows, NothingSelectedLeavesTheClipboard) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    Hold({VK_CONTROL});
    Press(list, 'A');
    Press(list, 'C');
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    Press(list, 'C');
    EXPECT_EQ(Clipboard(), kAllRows);
}

TEST_F(CopyRows, MenuCommandsDoTheSame) {
    const Window window = Open();
    Focused(window, kTabTest, IDC_LVMONITOR);
    Choose(*window, IDM_SELECT_ALL);
    Choose(*window, IDM_COPY);
    EXPECT_EQ(Clipboard(), kAllRows);
}

TEST_F(CopyRows, LetterWithoutControlIsTheListsOwn) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    Empty();
    Press(list, 'C');
    Press(list, 'A');
    EXPECT_EQ(ListView_GetSelectedCount(list), 0u);
    EXPECT_EQ(Clipboard(), L"(nothing)");
}

TEST_F(CopyRows, LongAndOddTextsStayOneLineARow) {
    const std::wstring text = L"a\tb\r\nc" + std::wstring(10000, L'q');
    const auto device = MakeDevice();
    Host().Answer(L"Point.FormattedValue.get", text);
    const Window window = ShowFocus(device);
    const HWND list = Focused(window, kTabTune, IDC_LVCOV);
    Hold({VK_CONTROL});
    Press(list, 'A');
    Press(list, 'C');
    const std::wstring value = L"a b  c" + std::wstring(10000, L'q') + L"\r\n";
    EXPECT_EQ(Clipboard(), L"cpSensorRef\t" + value + L"cpHoldOffMode\t" + value);
}

// ---- the lists' context menu

class ListMenu : public Keyboard {};

TEST_F(ListMenu, OffersEditingCopyingAndSelecting) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(ContextMenu(list),
              (Lines{L"&Edit Value\tEnter", L"-", L"&Copy\tCtrl+C", L"Select &all\tCtrl+A"}));
}

TEST_F(ListMenu, WithoutASelectionThereIsNothingToEditOrCopy) {
    const Window window = Open();
    const HWND list = Focused(window, kTabTest, IDC_LVMONITOR);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    EXPECT_EQ(ContextMenu(list).at(0), L"&Edit Value\tEnter (greyed)");
    EXPECT_EQ(ContextMenu(list).at(2), L"&Copy\tCtrl+C (greyed)");
}

}  // namespace
}  // namespace quillon::test
