// What each of the five dialogs offers, shows as chosen and writes.
#include "editors_option/option_dialog_test.h"

namespace quillon::test {
namespace {

class OptionChoice : public OptionDialogTest {
protected:
    // What is checked when a point with these bytes opens.
    std::wstring Shown(int point, const std::string& entry, const char* raw) {
        for (Json& variable : Left()["nvs"])
            if (variable["index"] == point) variable["raw"] = raw;
        CloseAll();
        CloseNetwork();
        OpenFor(point, entry);
        std::wstring checked;
        Edit({Expect([&] {
                  checked = Checked();
                  EXPECT_EQ(OkEnabled(), !checked.empty());
              }),
              Key(VK_ESCAPE)});
        EXPECT_EQ(Puts(), Lines());
        return checked;
    }
    // The bytes of the point after an option is chosen and OK pressed.
    std::wstring Written(int position) {
        Edit({Click(position), ClickOk()});
        return Raw(m_point);
    }
    void OpenPoint(int point, const std::string& entry) {
        m_point = point;
        OpenFor(point, entry);
    }

private:
    int m_point = 0;
};

TEST_F(OptionChoice, DialogHasItsCaptionsAndTheNameOfThePoint) {
    OpenFor(kLightingPoint, "Lighting");
    Edit({Expect([&] {
              EXPECT_EQ(WindowText(Dialog()), L"Edit value");
              EXPECT_EQ(WindowText(GetDlgItem(Dialog(), IDC_FRAME1)), L"nviLighting && more");
              EXPECT_EQ(WindowText(GetDlgItem(Dialog(), IDOK)), L"&OK");
              EXPECT_EQ(WindowText(GetDlgItem(Dialog(), IDCANCEL)), L"&Cancel");
              EXPECT_EQ(GetWindow(Dialog(), GW_OWNER), TheWindow()->Handle());
              EXPECT_FALSE(IsWindowEnabled(TheWindow()->Handle())) << "modal";
          }),
          Key(VK_ESCAPE)});
    EXPECT_TRUE(IsWindowEnabled(TheWindow()->Handle()));
}

TEST_F(OptionChoice, AppModeWritesTheCode) {
    OpenPoint(kAppModePoint, "AppMode");
    Edit({Expect([&] {
              EXPECT_EQ(Labels(),
                        (Lines{L"Auto", L"Heat", L"Cool", L"Off", L"Emerg_Heat", L"Fan_Only"}));
              EXPECT_EQ(Checked(), L"Cool");
          }),
          Key(VK_ESCAPE)});
    const wchar_t* const kBytes[] = {L"00", L"01", L"03", L"06", L"08", L"09"};
    for (int position = 0; position < 6; ++position)
        EXPECT_EQ(Written(position), kBytes[position]) << position;
    EXPECT_EQ(Puts(), (Lines{L"Point.Value.put(\"0\")", L"Point.Value.put(\"1\")",
                             L"Point.Value.put(\"3\")", L"Point.Value.put(\"6\")",
                             L"Point.Value.put(\"8\")", L"Point.Value.put(\"9\")"}));
}

TEST_F(OptionChoice, AppModeThatIsNotOfferedChecksNone) {
    EXPECT_EQ(Shown(kAppModePoint, "AppMode", "02"), L"");
    EXPECT_EQ(Shown(kAppModePoint, "AppMode", "FF"), L"");
    EXPECT_EQ(Shown(kAppModePoint, "AppMode", "09"), L"Fan_Only");
}

TEST_F(OptionChoice, OccupancyOfAPlainPointIsItsValue) {
    OpenPoint(kOccupancyPoint, "Occupancy");
    Edit({Expect([&] {
              EXPECT_EQ(Labels(), (Lines{L"Occupied", L"Unoccupied", L"StandBy", L"Invalid"}));
              EXPECT_EQ(Checked(), L"Invalid");
          }),
          Key(VK_ESCAPE)});
    EXPECT_EQ(Written(2), L"03");
    EXPECT_EQ(Written(3), L"FF");
    EXPECT_EQ(Puts(), (Lines{L"Point.Value.put(\"3\")", L"Point.Value.put(\"255\")"}));
    EXPECT_EQ(Shown(kOccupancyPoint, "Occupancy", "02"), L"");
}

TEST_F(OptionChoice, OccupancyOfAStructureIsItsFirstField) {
    OpenPoint(kOccupancyFieldsPoint, "Occupancy");
    Edit({Expect([&] { EXPECT_EQ(Checked(), L"Unoccupied"); }), Key(VK_ESCAPE)});
    EXPECT_EQ(Written(2), L"030301F3") << "the other fields are left alone";
    EXPECT_EQ(Puts(), Lines{L"Point.Value.put(\"3\")"});
}

TEST_F(OptionChoice, LightingWritesLevelAndState) {
    OpenPoint(kLightingPoint, "Lighting");
    Edit({Expect([&] {
              EXPECT_EQ(Labels(), (Lines{L"Auto", L"Off", L"On"}));
              EXPECT_EQ(Checked(), L"Auto");
          }),
          Key(VK_ESCAPE)});
    EXPECT_EQ(Written(2), L"0201");
    EXPECT_EQ(Written(1), L"0001");
    EXPECT_EQ(Written(0), L"02FF");
    EXPECT_EQ(Puts(), (Lines{L"Point.Value.put(\"1\")", L"Point.Value.put(\"1\")",
                             L"Point.Value.put(\"0\")", L"Point.Value.put(\"1\")",
                             L"Point.Value.put(\"1\")", L"Point.Value.put(\"255\")"}));
}

TEST_F(OptionChoice, LightingShowsStateBeforeLevel) {
    EXPECT_EQ(Shown(kLightingPoint, "Lighting", "64FF"), L"Auto");
    EXPECT_EQ(Shown(kLightingPoint, "Lighting", "6400"), L"Off");
    EXPECT_EQ(Shown(kLightingPoint, "Lighting", "0001"), L"Off");
    EXPECT_EQ(Shown(kLightingPoint, "Lighting", "4B01"), L"On");
}

TEST_F(OptionChoice, EnergyHoldOffWritesLevelAndState) {
    OpenPoint(kHoldOffPoint, "EnergyHoldOff");
    Edit({Expect([&] {
              EXPECT_EQ(Labels(), (Lines{L"Normal", L"Energy Hold Off"}));
              EXPECT_EQ(Checked(), L"Normal");
          }),
          Key(VK_ESCAPE)});
    EXPECT_EQ(Written(1), L"0201");
    EXPECT_EQ(Written(0), L"0001");
    EXPECT_EQ(Shown(kHoldOffPoint, "EnergyHoldOff", "C8FF"), L"Normal");
    EXPECT_EQ(Shown(kHoldOffPoint, "EnergyHoldOff", "C801"), L"Energy Hold Off");
}

TEST_F(OptionChoice, FanWritesLevelAndState) {
    OpenPoint(kFanPoint, "Fan,3");
    Edit({Expect([&] {
              EXPECT_EQ(Labels(),
                        (Lines{L"Auto", L"Off", L"Low speed", L"Medium speed", L"High speed"}));
              EXPECT_EQ(Checked(), L"") << "50 % is none of them";
              EXPECT_FALSE(OkEnabled());
          }),
          Key(VK_ESCAPE)});
    EXPECT_EQ(Written(4), L"B401");
    EXPECT_EQ(Written(3), L"7801");
    EXPECT_EQ(Written(2), L"3C01");
    EXPECT_EQ(Written(1), L"0001");
    EXPECT_EQ(Written(0), L"02FF");
}

TEST_F(OptionChoice, FanShowsTheHighestSpeedOffered) {
    EXPECT_EQ(Shown(kFanPoint, "Fan,1", "B401"), L"Low speed");
    EXPECT_EQ(Shown(kFanPoint, "Fan,2", "B401"), L"Medium speed");
    EXPECT_EQ(Shown(kFanPoint, "Fan,3", "B401"), L"High speed");
    EXPECT_EQ(Shown(kFanPoint, "Fan,0", "B401"), L"Off");
    EXPECT_EQ(Shown(kFanPoint, "Fan,5", "B401"), L"");
    EXPECT_EQ(Shown(kFanPoint, "Fan,5", "3C01"), L"Low speed");
}

TEST_F(OptionChoice, OkWithoutAnotherChoiceWritesTheSameAgain) {
    OpenPoint(kAppModePoint, "AppMode");
    Edit({Key(VK_RETURN)});
    EXPECT_EQ(Puts(), Lines{L"Point.Value.put(\"3\")"});
}

TEST_F(OptionChoice, CancelEscapeAndTheCloseBoxWriteNothing) {
    OpenPoint(kAppModePoint, "AppMode");
    Edit({Click(0), Key(VK_ESCAPE)});
    Edit({Click(0), [&] { PostMessageW(GetDlgItem(Dialog(), IDCANCEL), BM_CLICK, 0, 0); }});
    Edit({Click(0), [&] { PostMessageW(Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0); }});
    EXPECT_EQ(Puts(), Lines());
    EXPECT_EQ(Raw(kAppModePoint), L"03");
}

TEST_F(OptionChoice, ClickChangesTheChoiceOnly) {
    OpenPoint(kAppModePoint, "AppMode");
    Edit({Click(1), Expect([&] { EXPECT_EQ(Checked(), L"Heat"); }), Click(5), Expect([&] {
              EXPECT_EQ(Checked(), L"Fan_Only");
              EXPECT_EQ(Puts(), Lines());
          }),
          Key(VK_ESCAPE)});
}

}  // namespace
}  // namespace quillon::test
