#include "window/device_state.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

constexpr int kGreyTextIndex = 17;

StateView ViewWithGreyText(std::int32_t state, std::uint32_t greyText) {
    return ViewOfState(state, [greyText](int index) {
        EXPECT_EQ(index, kGreyTextIndex);
        return greyText;
    });
}

TEST(StateNumber, IsTheValueOfTwoHexadecimalDigits) {
    EXPECT_EQ(StateNumber(L"0C"), 12);
    EXPECT_EQ(StateNumber(L"04"), 4);
    EXPECT_EQ(StateNumber(L"8c"), 140);
}

TEST(StateNumber, EmptyTextIsAbsent) {
    EXPECT_EQ(StateNumber(L""), -1);
}

TEST(StateNumber, LongerTextGivesItsTwelfthByte) {
    EXPECT_EQ(StateNumber(std::wstring(22, L'0') + L"06" + L"FF"), 6);
}

TEST(StateNumber, TextThatCannotBeReadHasNone) {
    EXPECT_EQ(StateNumber(L"4"), std::nullopt);
    EXPECT_EQ(StateNumber(L"?"), std::nullopt);
    EXPECT_EQ(StateNumber(L"xy"), std::nullopt);
    EXPECT_EQ(StateNumber(L"0004"), std::nullopt);
    EXPECT_EQ(StateNumber(std::wstring(10000, L'z')), std::nullopt);
}

TEST(ViewOfState, ShowsLabelAndColourOfTheState) {
    const StateView view = ViewWithGreyText(4, 0);
    EXPECT_EQ(view.text, L"On Line");
    EXPECT_EQ(view.color, 0x00FF00u);
    EXPECT_TRUE(view.darkText);
}

TEST(ViewOfState, BlackStateHasWhiteText) {
    const StateView view = ViewWithGreyText(140, 0);
    EXPECT_EQ(view.text, L"Configured Bypass");
    EXPECT_EQ(view.color, 0x000000u);
    EXPECT_FALSE(view.darkText);
}

TEST(ViewOfState, UnknownStateIsWhiteWithDarkText) {
    const StateView view = ViewWithGreyText(5, 0);
    EXPECT_EQ(view.text, L"Status: 5");
    EXPECT_EQ(view.color, 0xFFFFFFu);
    EXPECT_TRUE(view.darkText);
}

TEST(ViewOfState, AbsentStateTakesTheSystemsGreyTextWhateverItIs) {
    const StateView light = ViewWithGreyText(-1, 0xA0A0A0);
    EXPECT_EQ(light.text, L"Absent");
    EXPECT_EQ(light.color, 0xA0A0A0u);
    EXPECT_TRUE(light.darkText);
    const StateView dark = ViewWithGreyText(-1, 0x404040);
    EXPECT_EQ(dark.color, 0x404040u);
    EXPECT_FALSE(dark.darkText);
}

TEST(ViewOfState, ColourHasNothingAboveItsThreeBytes) {
    EXPECT_EQ(ViewWithGreyText(-1, 0xFF808080).color, 0x808080u);
}

TEST(ViewOfState, TextIsReadableOnEveryState) {
    for (std::int32_t state = -1; state <= 255; ++state) {
        const StateView view = ViewWithGreyText(state, 0x808080);
        EXPECT_FALSE(view.text.empty());
        EXPECT_GE(Contrast(view.color, view.darkText ? 0x000000 : 0xFFFFFF), 4.5) << state;
    }
}

TEST(WantsDarkText, TheBetterTextIsReadableOnAnyColour) {
    for (std::uint32_t color = 0; color <= 0xFFFFFF; color += 0x10305) {
        EXPECT_GE(Contrast(color, WantsDarkText(color) ? 0x000000 : 0xFFFFFF), 4.5) << color;
    }
    for (std::uint32_t grey = 0; grey <= 0xFF; ++grey) {
        const std::uint32_t color = grey * 0x010101;
        EXPECT_GE(Contrast(color, WantsDarkText(color) ? 0x000000 : 0xFFFFFF), 4.5) << grey;
    }
}

TEST(WantsDarkText, BlueIsDarkAndGreenAndYellowAreLight) {
    EXPECT_FALSE(WantsDarkText(0xFF0000));
    EXPECT_TRUE(WantsDarkText(0x00FF00));
    EXPECT_TRUE(WantsDarkText(0x00FFFF));
}

TEST(Contrast, RunsFromNoneToBlackOnWhite) {
    EXPECT_NEAR(Contrast(0x000000, 0xFFFFFF), 21, 1e-9);
    EXPECT_NEAR(Contrast(0xFFFFFF, 0x000000), 21, 1e-9);
    EXPECT_NEAR(Contrast(0x123456, 0x123456), 1, 1e-9);
    EXPECT_NEAR(Contrast(0x80000000, 0xFFFFFF), 21, 1e-9);
    EXPECT_NEAR(Contrast(0x0000FF, 0xFFFFFF), 3.998, 1e-3);
}

TEST(ShowsHardware, AbsentOrZeroHidesTheTabs) {
    for (const wchar_t* text : {L"", L"0", L" 0 ", L"0.0", L"-0", L"yes", L"true", L"&H0"}) {
        EXPECT_FALSE(ShowsHardware(text)) << text;
    }
}

TEST(ShowsHardware, AnyOtherNumberShowsThem) {
    for (const wchar_t* text : {L"1", L"-1", L"2", L"0.5", L" 1", L"1 hw", L"&H1", L"&HFFFF"}) {
        EXPECT_TRUE(ShowsHardware(text)) << text;
    }
}

TEST(ShowsHardware, NumberTooLargeToReadIsNotZero) {
    EXPECT_TRUE(ShowsHardware(std::wstring(400, L'9')));
    EXPECT_TRUE(ShowsHardware(L"&H123456789"));
}

TEST(ShowsTab, HardwareCalibrationAndLabelPrintGoTogether) {
    for (const int tab : {0, 5, 7}) {
        EXPECT_TRUE(ShowsTab(tab, true)) << tab;
        EXPECT_FALSE(ShowsTab(tab, false)) << tab;
    }
}

TEST(ShowsTab, OtherTabsAreAlwaysShown) {
    for (const int tab : {1, 2, 3, 4, 6}) {
        EXPECT_TRUE(ShowsTab(tab, true)) << tab;
        EXPECT_TRUE(ShowsTab(tab, false)) << tab;
    }
}

TEST(ShowsTab, NumberThatIsNoTabIsNotShown) {
    EXPECT_FALSE(ShowsTab(-1, true));
    EXPECT_FALSE(ShowsTab(8, true));
}

}  // namespace
}  // namespace quillon
