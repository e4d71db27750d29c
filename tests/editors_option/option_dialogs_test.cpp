// The option dialogs by keyboard, and where their buttons stand.
#include "editors/OptionDialog.h"
#include "editors_option/option_dialog_test.h"
#include "window/host_points.h"

namespace quillon::test {
namespace {

class OptionKeys : public OptionDialogTest {
protected:
    Step ExpectChecked(const wchar_t* label) {
        return [this, label] { EXPECT_EQ(Checked(), label); };
    }
    Step ExpectFocus(int position) {
        return
            [this, position] { EXPECT_EQ(WindowText(GetFocus()), WindowText(Button(position))); };
    }
    Step ExpectFocusOn(int id) {
        return [this, id] { EXPECT_EQ(GetFocus(), GetDlgItem(Dialog(), id)) << id; };
    }
};

TEST_F(OptionKeys, FocusIsOnTheCheckedButtonAtFirst) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({ExpectFocus(2), ExpectChecked(L"Cool"), Key(VK_ESCAPE)});
}

TEST_F(OptionKeys, FocusAloneChecksNothing) {
    OpenFor(kFanPoint, "Fan,3");
    Edit({ExpectFocus(0), ExpectChecked(L""), Key(VK_TAB), ExpectFocusOn(IDCANCEL), ShiftTab(),
          ExpectFocus(0), ExpectChecked(L""), [&] { SetFocus(Button(3)); }, ExpectChecked(L""),
          Expect([&] { EXPECT_FALSE(OkEnabled()); }), Key(VK_ESCAPE)});
}

TEST_F(OptionKeys, EnterDoesNothingWhileNoneIsChecked) {
    OpenFor(kFanPoint, "Fan,3");
    Edit({Key(VK_RETURN), AccessKey(L'o'), Expect([&] { EXPECT_NE(Dialog(), nullptr); }),
          Key(VK_ESCAPE)});
    EXPECT_EQ(Puts(), Lines());
}

TEST_F(OptionKeys, HeldEnterPressesNothing) {
    OpenFor(kAppModePoint, "AppMode");
    const Step expectUp = Expect([&] { EXPECT_NE(Dialog(), nullptr); });
    Edit({HeldKey(VK_RETURN), expectUp, [&] { SetFocus(GetDlgItem(Dialog(), IDOK)); },
          HeldKey(VK_RETURN), expectUp, Expect([&] { EXPECT_EQ(Puts(), Lines()); }),
          Key(VK_RETURN)});
    EXPECT_EQ(Puts(), Lines{L"Point.Value.put(\"3\")"});
}

TEST_F(OptionKeys, SpaceChecksTheFocusedButton) {
    OpenFor(kFanPoint, "Fan,3");
    Edit({Key(VK_SPACE), ExpectChecked(L"Auto"), Expect([&] { EXPECT_TRUE(OkEnabled()); }),
          Key(VK_RETURN)});
    EXPECT_EQ(Raw(kFanPoint), L"02FF");
}

TEST_F(OptionKeys, ArrowsGoRoundAndCheck) {
    OpenFor(kFanPoint, "Fan,2");
    Edit({Key(VK_DOWN), ExpectChecked(L"Off"), ExpectFocus(1), Key(VK_RIGHT),
          ExpectChecked(L"Low speed"), Key(VK_DOWN), Key(VK_DOWN), ExpectChecked(L"Auto"),
          Key(VK_UP), ExpectChecked(L"Medium speed"), Key(VK_LEFT), ExpectChecked(L"Low speed"),
          Key(VK_RETURN)});
    EXPECT_EQ(Raw(kFanPoint), L"3C01");
}

TEST_F(OptionKeys, TabGoesFromTheCheckedButtonToOkAndCancelAndBack) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({Key(VK_TAB), ExpectFocusOn(IDOK), Key(VK_TAB), ExpectFocusOn(IDCANCEL), Key(VK_TAB),
          ExpectFocus(2), Key(VK_DOWN), ShiftTab(), ExpectFocusOn(IDCANCEL), ShiftTab(), ShiftTab(),
          ExpectFocus(3), Key(VK_ESCAPE)});
}

TEST_F(OptionKeys, AccessKeysPressOkAndCancel) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({Key(VK_UP), AccessKey(L'o')});
    EXPECT_EQ(Raw(kAppModePoint), L"01");
    Edit({Key(VK_UP), AccessKey(L'c')});
    EXPECT_EQ(Raw(kAppModePoint), L"01");
}

TEST_F(OptionKeys, SpaceOnCancelCancels) {
    OpenFor(kAppModePoint, "AppMode");
    Edit({Key(VK_UP), Key(VK_TAB), Key(VK_TAB), Key(VK_SPACE)});
    EXPECT_EQ(Puts(), Lines());
}

// ---- the column

// A dialog over a list of the test's own.
class ListDialog final : public OptionDialog {
public:
    explicit ListDialog(const std::wstring& list)
        : OptionDialog(OptionSet::OfCodes(list, PointShape::kPlain)) {}
};

class OptionColumn : public OptionKeys {
protected:
    void Show(const std::wstring& list, const std::vector<Step>& steps) {
        OpenFor(kAppModePoint, "AppMode");
        const com::Ptr<IDevice> device = MakeHostDevice();
        com::Check(device->putref_Network(OpenNetwork()));
        com::Check(device->put_NeuronID(com::Bstr(kLeft).Get()));
        com::Ptr<IDispatch> points;
        com::Check(device->get_NetworkVariables(points.Out()));
        ListDialog dialog(list);
        dialog.SetDataPoint(DataPoint(FindPoint(points.Get(), com::Variant(kAppModePoint))));
        const HWND owner = TheWindow()->Handle();
        Run(
            owner, [&] { dialog.Show(owner); }, steps);
    }
    int TopOf(int position) const {
        RECT rect{};
        GetWindowRect(Button(position), &rect);
        return static_cast<int>(rect.top);
    }
    static std::wstring Entries(int count) {
        std::wstring list;
        for (int code = 0; code < count; ++code)
            list += std::to_wstring(code) + L",Entry " + std::to_wstring(code) + L";";
        return list;
    }
    bool Visible(int position) const {
        RECT button{};
        RECT column{};
        RECT both{};
        GetWindowRect(Button(position), &button);
        GetWindowRect(GetParent(Button(position)), &column);
        return IntersectRect(&both, &button, &column) && EqualRect(&both, &button);
    }
};

TEST_F(OptionColumn, ButtonsStand400TwipsApart) {
    Show(Entries(20),
         {Expect([&] {
              const HDC context = GetDC(Dialog());
              const int dpi = GetDeviceCaps(context, LOGPIXELSY);
              ReleaseDC(Dialog(), context);
              for (int position = 0; position < 20; ++position)
                  EXPECT_EQ(TopOf(position) - TopOf(0), MulDiv(400 * position, dpi, 1440))
                      << position;
              for (const int position : {0, 19}) EXPECT_TRUE(Visible(position)) << position;
          }),
          Key(VK_ESCAPE)});
}

TEST_F(OptionColumn, FrameAndDialogHoldWhatTheyOffer) {
    Show(Entries(12), {Expect([&] {
                           RECT dialog{};
                           RECT frame{};
                           RECT last{};
                           GetWindowRect(Dialog(), &dialog);
                           GetWindowRect(GetDlgItem(Dialog(), IDC_FRAME1), &frame);
                           GetWindowRect(Button(11), &last);
                           EXPECT_LT(frame.bottom, dialog.bottom);
                           EXPECT_LT(last.bottom, frame.bottom);
                           EXPECT_LT(last.right, frame.right);
                       }),
                       Key(VK_ESCAPE)});
}

TEST_F(OptionColumn, LongLabelMakesTheDialogWiderUpToTheScreen) {
    LONG width = 0;
    const auto measure = [&] {
        RECT rect{};
        GetWindowRect(Dialog(), &rect);
        width = rect.right - rect.left;
    };
    Show(L"3,Cool;", {measure, Key(VK_ESCAPE)});
    const LONG narrow = width;
    Show(L"3," + std::wstring(60, L'W') + L";", {measure, Key(VK_ESCAPE)});
    EXPECT_GT(width, narrow);
    Show(L"3," + std::wstring(5000, L'W') + L";", {measure, Key(VK_ESCAPE)});
    EXPECT_LE(width, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(OptionColumn, LongListIsScrolledWithTheFocus) {
    Show(Entries(10'000),
         {Expect([&] {
              EXPECT_EQ(Buttons().size(), OptionButtons::kMostButtons);
              EXPECT_EQ(Checked(), L"Entry 3");
              RECT rect{};
              GetWindowRect(Dialog(), &rect);
              EXPECT_LE(rect.bottom - rect.top, GetSystemMetrics(SM_CYSCREEN));
              EXPECT_TRUE(Visible(3));
              EXPECT_FALSE(Visible(999));
          }),
          Key(VK_UP), Key(VK_UP), Key(VK_UP), Key(VK_UP), Expect([&] {
              EXPECT_EQ(Checked(), L"Entry 999");
              EXPECT_TRUE(Visible(999));
              EXPECT_FALSE(Visible(0));
          }),
          Key(VK_DOWN), Expect([&] {
              EXPECT_EQ(Checked(), L"Entry 0");
              EXPECT_TRUE(Visible(0));
          }),
          [&] { PostMessageW(GetParent(Button(0)), WM_VSCROLL, SB_PAGEDOWN, 0); },
          Expect([&] { EXPECT_FALSE(Visible(0)); }),
          [&] { PostMessageW(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, 100 * WHEEL_DELTA), 0); },
          Expect([&] { EXPECT_TRUE(Visible(0)); }), Key(VK_ESCAPE)});
}

TEST_F(OptionColumn, CurrentValueBeyondWhatIsOfferedChecksNone) {
    std::wstring list;
    for (int entry = 0; entry < 1500; ++entry) list += L"77,x;";
    Show(list + L"3,Cool;", {Expect([&] {
                                 EXPECT_EQ(Checked(), L"");
                                 EXPECT_FALSE(OkEnabled());
                             }),
                             Key(VK_ESCAPE)});
}

TEST_F(OptionColumn, EmptyListOffersNothingAndCanBeCancelled) {
    for (const wchar_t* list : {L"", L";;;", L"Auto;Off;"})
        Show(list, {Expect([&] {
                        EXPECT_EQ(Buttons().size(), 0u);
                        EXPECT_FALSE(OkEnabled());
                    }),
                    Key(VK_RETURN), Key(VK_ESCAPE)});
    EXPECT_EQ(Puts(), Lines());
}

TEST_F(OptionColumn, FirstOfEqualCodesIsChecked) {
    Show(L"3,one;3,two;",
         {ExpectChecked(L"one"), Key(VK_DOWN), ExpectChecked(L"two"), Key(VK_RETURN)});
    EXPECT_EQ(Puts(), Lines{L"Point.Value.put(\"3\")"});
}

TEST_F(OptionColumn, LastEntryNeedsNoEndAndACodeMayBeNoNumber) {
    Show(L"x,zero;3,three", {Expect([&] {
                                 EXPECT_EQ(Labels(), (Lines{L"zero", L"three"}));
                             }),
                             ExpectChecked(L"three"), Key(VK_UP), Key(VK_RETURN)});
    EXPECT_EQ(Puts(), Lines{L"Point.Value.put(\"0\")"});
}

TEST_F(OptionColumn, AmpersandInALabelIsItsAccessKey) {
    Show(L"1,H&eat;3,&Kool;", {AccessKey(L'e'), ExpectChecked(L"H&eat"), AccessKey(L'k'),
                               ExpectChecked(L"&Kool"), Key(VK_ESCAPE)});
}

}  // namespace
}  // namespace quillon::test
