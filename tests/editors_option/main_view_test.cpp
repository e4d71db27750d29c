// Editing from the main view: which values take the focus, which dialog they open, what is read.
#include "editors/editors_resource.h"
#include "editors_option/option_dialog_test.h"

namespace quillon::test {
namespace {

class MainViewEditing : public OptionDialogTest {
protected:
    HWND Label(int index) const {
        return PageItem(*TheWindow(), kTabMain, IDC_LBLNV_FIRST + index);
    }
    // Takes a key from the queue as the host's loop does.
    static void Press(HWND control, WPARAM key) {
        PostMessageW(control, WM_KEYDOWN, key, 1);
        MSG message{};
        EXPECT_TRUE(PeekMessageW(&message, control, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
        EXPECT_EQ(message.message, static_cast<UINT>(WM_NULL)) << "used up";
    }
};

TEST_F(MainViewEditing, FiveValuesTakeTheFocusAndTheSixthDoesNot) {
    OpenFor(kAppModePoint, "AppMode");
    for (int index = 0; index < 6; ++index) {
        const LONG style = GetWindowLongW(Label(index), GWL_STYLE);
        EXPECT_EQ((style & WS_TABSTOP) != 0, index < 5) << index;
        EXPECT_EQ((style & SS_NOTIFY) != 0, index < 5) << index;
        SetFocus(TheWindow()->Item(IDC_SSTAB1));
        SendMessageW(Label(index), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        EXPECT_EQ(GetFocus() == Label(index), index < 5) << index;
    }
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(MainViewEditing, TabGoesThroughTheFiveValues) {
    OpenFor(kAppModePoint, "AppMode");
    SetFocus(TheWindow()->Item(IDC_SSTAB1));
    for (int index = 0; index < 5; ++index) {
        Press(GetFocus(), VK_TAB);
        EXPECT_EQ(GetFocus(), Label(index)) << index;
    }
    Press(GetFocus(), VK_TAB);
    EXPECT_EQ(GetFocus(), PageItem(*TheWindow(), kTabMain, IDC_MAIN_RESET));
}

TEST_F(MainViewEditing, FocusIsVisible) {
    OpenFor(kAppModePoint, "AppMode");
    const auto corner = [&] {
        const HDC context = CreateCompatibleDC(nullptr);
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, 8, -8, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        const HBITMAP bitmap =
            CreateDIBSection(context, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
        const HGDIOBJ before = SelectObject(context, bitmap);
        SendMessageW(Label(0), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT);
        const COLORREF color = GetPixel(context, 0, 0);
        SelectObject(context, before);
        DeleteObject(bitmap);
        DeleteDC(context);
        return color;
    };
    SetFocus(TheWindow()->Item(IDC_SSTAB1));
    const COLORREF without = corner();
    EXPECT_NE(without, GetSysColor(COLOR_HIGHLIGHT));
    SetFocus(Label(0));
    EXPECT_EQ(corner(), GetSysColor(COLOR_HIGHLIGHT));
    SetFocus(TheWindow()->Item(IDC_SSTAB1));
    EXPECT_EQ(corner(), without);
}

TEST_F(MainViewEditing, EnterF2AndDoubleClickOpenTheDialog) {
    OpenFor(kAppModePoint, "AppMode");
    SetFocus(Label(0));
    const HWND window = TheWindow()->Handle();
    const std::vector<Step> look{Expect([&] { EXPECT_EQ(Checked(), L"Cool"); }), Key(VK_ESCAPE)};
    for (const WPARAM key : {VK_RETURN, VK_F2})
        Run(
            window, [&] { Press(Label(0), key); }, look);
    Run(
        window, [&] { SendMessageW(Label(0), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(2, 2)); },
        look);
}

TEST_F(MainViewEditing, FocusComesBackToTheValue) {
    OpenFor(kAppModePoint, "AppMode");
    SetFocus(Label(0));
    Run(TheWindow()->Handle(), [&] { Press(Label(0), VK_RETURN); }, {Key(VK_ESCAPE)});
    EXPECT_EQ(GetFocus(), Label(0));
}

TEST_F(MainViewEditing, KeyRepeatedWhileTheDialogComesUpOpensNoSecondOne) {
    OpenFor(kAppModePoint, "AppMode");
    SetFocus(Label(0));
    Run(TheWindow()->Handle(),
        [&] {
            Press(Label(0), VK_RETURN);
            Press(Label(0), VK_RETURN);
        },
        {Key(VK_ESCAPE), Expect([&] { EXPECT_EQ(Dialog(), nullptr); })});
    EXPECT_EQ(Host().Count(L"Point.NVDirection.get"), 1);
}

TEST_F(MainViewEditing, DoubleClickOnTheSixthLabelOpensNothing) {
    OpenFor(kAppModePoint, "AppMode");
    SendMessageW(Label(5), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(2, 2));
    ExpectNoDialog(5);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(MainViewEditing, OutputOpensNothingAndIsAskedForItFirst) {
    OpenFor(1, "AppMode");
    ExpectNoDialog();
    EXPECT_EQ(Host().Log(), (Lines{L"IDevice.NetworkVariables.get()", L"Points.Item(\"1\")",
                                   L"Point.NVDirection.get()"}));
}

TEST_F(MainViewEditing, OpeningAsksNoMemberTwice) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({Expect([&] {
              EXPECT_EQ(Host().Log(), (Lines{L"IDevice.NetworkVariables.get()",
                                             L"Points.Item(\"20\")", L"Point.NVDirection.get()",
                                             L"Point.Value.get()", L"Point.Name.get()"}));
              Host().Clear();
          }),
          Key(VK_DOWN), Key(VK_SPACE), Key(VK_TAB),
          Expect([&] { EXPECT_EQ(Host().Log(), Lines()) << "a key costs no call"; }),
          Key(VK_ESCAPE)});
}

TEST_F(MainViewEditing, EditedValueAndOnlyThatOneIsReadAtOnce) {
    OpenFor(kAppModePoint, "AppMode");
    EXPECT_EQ(WindowText(Label(0)), L"");
    Edit({Click(3), [&] { Host().Clear(); }, ClickOk()});
    EXPECT_EQ(WindowText(Label(0)), L"HVAC_OFF");
    EXPECT_EQ(Host().Log(),
              (Lines{L"Point.Value.put(\"6\")", L"IDevice.NetworkVariables.get()",
                     L"Points.Item(\"20\")", L"Point.Value.get()", L"Point.SNVType.get()",
                     L"Type.InvalidValue.get()", L"Point.FormattedValue.get()"}));
}

TEST_F(MainViewEditing, ReadingDoesNotMoveThePollingOn) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({Key(VK_ESCAPE)});
    Host().Clear();
    TheWindow()->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Only(Host().Log(), L"Points.Item"), Lines{L"Points.Item(\"20\")"});
}

TEST_F(MainViewEditing, PollingGoesOnWhileTheDialogIsUp) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({[&] { TheWindow()->Tick(Timer::kTmrPolling); },
          Expect([&] { EXPECT_EQ(WindowText(Label(0)), L"HVAC_COOL"); }), Key(VK_ESCAPE)});
}

TEST_F(MainViewEditing, WithoutAnEntryTheTypeChoosesTheEditor) {
    for (const char* entry : {"", "Fan", "Fan,x", "occupancy", "Dimmer"}) {
        SCOPED_TRACE(entry);
        OpenFor(kOccupancyPoint, entry);
        Edit({Expect([&] {
                  EXPECT_NE(GetDlgItem(Dialog(), IDC_CBOENUM), nullptr);
                  EXPECT_EQ(GetDlgItem(Dialog(), IDC_FRAME1), nullptr);
              }),
              Key(VK_ESCAPE)});
        CloseAll();
    }
}

TEST_F(MainViewEditing, EditorOfTheTypeIsFollowedByAReadingToo) {
    OpenFor(0, "");
    Edit({[&] { SetWindowTextW(GetDlgItem(Dialog(), IDC_TXTNEWCPVALUE), L"19"); },
          [&] { PostMessageW(GetDlgItem(Dialog(), IDOK), BM_CLICK, 0, 0); }});
    EXPECT_EQ(WindowText(Label(0)), L"19.00 degrees Celsius");
}

TEST_F(MainViewEditing, TypeThatCannotBeChangedIsRefusedWithAMessage) {
    OpenFor(8, "");
    Boxes().Answer(IDOK);
    SendMessageW(TheWindow()->Handle(), WM_COMMAND, IDC_LBLNV_FIRST, 0);
    ASSERT_EQ(Boxes().Seen().size(), 1u);
    EXPECT_EQ(Boxes().Seen()[0].text, L"Unknown or Not modificable Attribute");
    EXPECT_EQ(WindowText(Label(0)), L"") << "nothing was edited, so nothing is read";
}

TEST_F(MainViewEditing, ValueThatCannotBeReadAfterwardsIsGreyedUntilItIs) {
    OpenFor(kAppModePoint, "AppMode");
    TheWindow()->Tick(Timer::kTmrPolling);
    const auto color = [&] {
        const HDC context = GetDC(Label(0));
        SetTextColor(context, RGB(1, 2, 3));
        SendMessageW(TheWindow()->PageWindow(kTabMain), WM_CTLCOLORSTATIC,
                     reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(Label(0)));
        const COLORREF text = GetTextColor(context);
        ReleaseDC(Label(0), context);
        return text;
    };
    const COLORREF usual = color();
    EXPECT_NE(usual, GetSysColor(COLOR_GRAYTEXT));
    Edit({Click(0), [&] { Host().Fail(L"Point.FormattedValue.get"); }, ClickOk()});
    EXPECT_EQ(Raw(kAppModePoint), L"00");
    EXPECT_EQ(WindowText(Label(0)), L"HVAC_COOL");
    EXPECT_EQ(color(), GetSysColor(COLOR_GRAYTEXT)) << "it is not the value any more";
    for (int tick = 0; tick < 5; ++tick) TheWindow()->Tick(Timer::kTmrPolling);
    EXPECT_EQ(WindowText(Label(0)), L"HVAC_AUTO");
    EXPECT_EQ(color(), usual);
}

TEST_F(MainViewEditing, ValueThatNamesNoVariableOpensNothing) {
    OpenFor(77, "AppMode");
    ExpectNoDialog();
    EXPECT_EQ(Boxes().Seen().size(), 0u);
}

}  // namespace
}  // namespace quillon::test
