// The option dialogs on a host that fails, falls silent, or closes windows.
#include "editors_option/option_dialog_test.h"

namespace quillon::test {
namespace {

const wchar_t* const kError = L"error in calculating CP value";

// A dialog of this thread that a window owns, shown or not; null when there is none.
HWND OwnedDialog(HWND owner) {
    for (const HWND dialog : Dialogs())
        if (GetWindow(dialog, GW_OWNER) == owner) return dialog;
    return nullptr;
}

class OptionFaults : public OptionDialogTest {
protected:
    void ExpectErrorBox() {
        ASSERT_EQ(Boxes().Seen().size(), 1u);
        EXPECT_EQ(Boxes().Seen()[0].text, kError);
        EXPECT_EQ(Boxes().Seen()[0].title, L"Quillon");
        EXPECT_EQ(Boxes().Seen()[0].buttons, std::vector<int>{IDOK});
    }
    Step ExpectUp(const wchar_t* checked) {
        return [this, checked] {
            ASSERT_NE(Dialog(), nullptr);
            EXPECT_EQ(Checked(), checked);
        };
    }
};

TEST_F(OptionFaults, RefusedValueIsReportedAndTheDialogStays) {
    OpenFor(kAppModePoint, "AppMode");
    Host().Fail(L"Point.Value.put");
    Boxes().Answer(IDOK);
    Edit({Click(0), ClickOk(), ExpectUp(L"Auto"), ClickOk()});
    ExpectErrorBox();
    EXPECT_EQ(Raw(kAppModePoint), L"00");
}

TEST_F(OptionFaults, RefusedLevelLeavesThePointAlone) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Fail(L"Point.Value.put");
    Boxes().Answer(IDOK);
    Edit({Click(2), ClickOk(), ExpectUp(L"On"), Key(VK_ESCAPE)});
    ExpectErrorBox();
    EXPECT_EQ(Raw(kLightingPoint), L"00FF");
}

TEST_F(OptionFaults, RefusedStatePutsTheLevelBack) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Fail(L"Point.Value.put", 2);
    Boxes().Answer(IDOK);
    Edit({Click(2), ClickOk(), ExpectUp(L"On"), Key(VK_ESCAPE)});
    ExpectErrorBox();
    EXPECT_EQ(Raw(kLightingPoint), L"00FF");
    EXPECT_EQ(Puts(), (Lines{L"Point.Value.put(\"1\")", L"Point.Value.put(\"1\")",
                             L"Point.Value.put(\"0.0\")"}));
}

TEST_F(OptionFaults, SecondChoiceInsideTheWriteIsNotMixedIn) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Call(L"Point.Value.put", 1, [&] {
        SendMessageW(GetParent(Button(0)), WM_COMMAND, MAKEWPARAM(IDC_OPTBUTTON_FIRST, BN_CLICKED),
                     reinterpret_cast<LPARAM>(Button(0)));
        EXPECT_EQ(Checked(), L"Auto");
        SendMessageW(Dialog(), WM_COMMAND, IDOK, 0);
        SendMessageW(Dialog(), WM_COMMAND, IDCANCEL, 0);
    });
    Edit({Click(1), ClickOk()});
    EXPECT_EQ(Puts(), (Lines{L"Point.Value.put(\"0\")", L"Point.Value.put(\"1\")"}));
    EXPECT_EQ(Raw(kLightingPoint), L"0001") << "Off, as OK was pressed for, and not On";
}

TEST_F(OptionFaults, DeviceThatFallsSilentIsAnErrorOnOk) {
    OpenFor(kLightingPoint, "Lighting");
    Boxes().Answer(IDOK);
    Edit({Click(1), [&] { Host().Silence(kLeft, true); }, ClickOk(), ExpectUp(L"Off"),
          [&] { Host().Silence(kLeft, false); }, ClickOk()});
    ExpectErrorBox();
    EXPECT_EQ(Raw(kLightingPoint), L"0001");
}

TEST_F(OptionFaults, SilentDeviceChecksNone) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Silence(kLeft, true);
    Edit({Expect([&] {
              EXPECT_EQ(Checked(), L"");
              EXPECT_FALSE(OkEnabled());
          }),
          Key(VK_ESCAPE)});
    EXPECT_TRUE(TheWindow()->Freeze()) << "the value is read afterwards";
}

TEST_F(OptionFaults, HostThatFailsAtOpeningShowsNothing) {
    OpenFor(kLightingPoint, "Lighting");
    for (const wchar_t* member :
         {L"IDevice.NetworkVariables.get", L"Points.Item", L"Point.NVDirection.get",
          L"Point.Name.get", L"Point.Value.get", L"Point.Fields.get"}) {
        SCOPED_TRACE(Narrow(member));
        Host().Fail(member);
        ExpectNoDialog();
        Host().Restore();
    }
    EXPECT_EQ(Puts(), Lines());
}

TEST_F(OptionFaults, MissingFieldsShowNothing) {
    OpenFor(kAppModePoint, "Lighting");
    ExpectNoDialog();
    CloseAll();
    OpenFor(kAppModePoint, "Fan,3");
    ExpectNoDialog();
}

TEST_F(OptionFaults, PlainPointThatRefusesItsFieldsIsPlain) {
    OpenFor(kOccupancyPoint, "Occupancy");
    Host().FailAlways(L"Point.Fields.get");
    Edit({Click(0), ClickOk()});
    EXPECT_EQ(Raw(kOccupancyPoint), L"00");
}

TEST_F(OptionFaults, StructureThatRefusesItsFieldsShowsNothing) {
    OpenFor(kOccupancyFieldsPoint, "Occupancy");
    for (const wchar_t* member : {L"Point.Fields.get", L"Points.Item"}) {
        SCOPED_TRACE(Narrow(member));
        // The window asks for the point itself by the first Item.
        Host().Fail(member, std::wstring_view(member) == L"Points.Item" ? 2 : 1);
        ExpectNoDialog();
        Host().Restore();
    }
    EXPECT_EQ(Puts(), Lines()) << "a code is not the value of a whole structure";
    EXPECT_EQ(Raw(kOccupancyFieldsPoint), L"010301F3");
}

TEST_F(OptionFaults, PlainPointWhoseTypeCannotBeReadEitherShowsNothing) {
    OpenFor(kOccupancyPoint, "Occupancy");
    Host().Fail(L"Point.Fields.get");
    Host().Fail(L"Type.GenType.get");
    ExpectNoDialog();
}

TEST_F(OptionFaults, EveryFailingCallWhileOpeningEndsQuietly) {
    OpenFor(kFanPoint, "Fan,3");
    Host().Clear();
    Edit({Key(VK_ESCAPE)});
    const Lines calls = Host().Log();
    for (std::size_t call = 0; call < calls.size(); ++call) {
        const std::wstring member = calls[call].substr(0, calls[call].find(L'('));
        long nth = 0;
        for (std::size_t before = 0; before <= call; ++before)
            if (calls[before].starts_with(member + L"(")) ++nth;
        SCOPED_TRACE(Narrow(member) + " " + std::to_string(nth));
        Host().Fail(member, nth);
        bool over = false;
        // Until the command is over, whenever its dialog comes up.
        const std::function<void()> cancel = [&] {
            if (over) return;
            // The system shows a dialog when nothing is posted any more, which is never here.
            if (const HWND dialog = OwnedDialog(TheWindow()->Handle()))
                PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            Posted().Post(cancel);
        };
        Posted().Post(cancel);
        SendMessageW(TheWindow()->Handle(), WM_COMMAND, IDC_LBLNV_FIRST, 0);
        over = true;
        Poster::Drain();
        Host().Restore();
    }
    EXPECT_EQ(Puts(), Lines());
}

TEST_F(OptionFaults, DeviceWindowClosedMeanwhileTakesTheDialogAlong) {
    OpenFor(kLightingPoint, "Lighting");
    Edit({Click(2), [&] { TheWindow()->Unload(); }});
    EXPECT_FALSE(TheWindow()->IsOpen());
    EXPECT_EQ(Puts(), Lines());
    EXPECT_EQ(Raw(kLightingPoint), L"00FF");
}

TEST_F(OptionFaults, DeviceWindowClosedWhileTheErrorIsShown) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Fail(L"Point.Value.put");
    Boxes().Answer(IDOK, [&] { TheWindow()->Unload(); });
    Edit({Click(2), ClickOk()});
    EXPECT_EQ(Raw(kLightingPoint), L"00FF");
}

TEST_F(OptionFaults, DeviceWindowClosedInsideTheWriteLeavesNoHalfValue) {
    OpenFor(kLightingPoint, "Lighting");
    Host().Call(L"Point.Value.put", 1, [&] { TheWindow()->Unload(); });
    Edit({Click(2), ClickOk()});
    EXPECT_FALSE(TheWindow()->IsOpen());
    EXPECT_EQ(Raw(kLightingPoint), L"0201");
}

TEST_F(OptionFaults, HostThatLetsGoOfTheDeviceMeanwhile) {
    OpenFor(kLightingPoint, "Lighting");
    Edit({Click(2), [&] { CloseNetwork(); }, ClickOk()});
    EXPECT_EQ(Puts().size(), 2u);
}

TEST_F(OptionFaults, DialogsOfTwoDevicesStandTogether) {
    OpenFor(kLightingPoint, "Lighting");
    const Window right = Open(kRight);
    StopTimers(*right);
    Edit({Click(1), [&] { right->Unload(); }, ClickOk()});
    EXPECT_EQ(Raw(kLightingPoint), L"0001");
}

}  // namespace
}  // namespace quillon::test
