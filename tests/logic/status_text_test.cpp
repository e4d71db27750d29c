#include "plugin/status_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

struct Known {
    std::int32_t code;
    const wchar_t* text;
    std::uint32_t color;
};

class KnownStatusTest : public testing::TestWithParam<Known> {};

TEST_P(KnownStatusTest, HasItsLabelAndColour) {
    EXPECT_EQ(StatusText(GetParam().code), GetParam().text);
    EXPECT_EQ(StatusColor(GetParam().code), GetParam().color);
}

INSTANTIATE_TEST_SUITE_P(
    AllCodes, KnownStatusTest,
    testing::Values(Known{-1, L"Absent", 0x80000011}, Known{2, L"Unconfigured", 0xFF0000},
                    Known{3, L"Applicationless Unconf.", 0x0000FF}, Known{4, L"On Line", 0x00FF00},
                    Known{6, L"Hard Off Line", 0xFF00FF}, Known{12, L"Soft Off Line", 0x00FFFF},
                    Known{140, L"Configured Bypass", 0x000000}));

TEST(StatusText, UnknownCodeIsShownAsItsNumber) {
    EXPECT_EQ(StatusText(5), L"Status: 5");
    EXPECT_EQ(StatusText(0), L"Status: 0");
    EXPECT_EQ(StatusText(-2), L"Status: -2");
    EXPECT_EQ(StatusText(std::numeric_limits<std::int32_t>::min()), L"Status: -2147483648");
}

TEST(StatusColor, UnknownCodeIsWhite) {
    EXPECT_EQ(StatusColor(5), 0xFFFFFFu);
    EXPECT_EQ(StatusColor(-2), 0xFFFFFFu);
}

}  // namespace
}  // namespace quillon
