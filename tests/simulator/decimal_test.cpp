#include "catalogue/decimal.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

constexpr RawRange kSigned16{-32768, 32767, std::nullopt};
constexpr Scale kHundredths{1, -2, 0};
constexpr Scale kHalves{5, -1, 0};

TEST(ScaledText, ShowsAllDecimalsOfTheExponent) {
    EXPECT_EQ(ScaledText(0x0A28, kHundredths), L"26.00");
    EXPECT_EQ(ScaledText(5, kHundredths), L"0.05");
    EXPECT_EQ(ScaledText(-5, kHundredths), L"-0.05");
    EXPECT_EQ(ScaledText(0, kHundredths), L"0.00");
    EXPECT_EQ(ScaledText(-32768, {5, -3, 0}), L"-163.840");
    EXPECT_EQ(ScaledText(65535, {5, -4, 0}), L"32.7675");
}

TEST(ScaledText, AddsTheOffsetBeforeScaling) {
    EXPECT_EQ(ScaledText(0, {1, -1, -2740}), L"-274.0");
    EXPECT_EQ(ScaledText(65535, {1, -1, -2740}), L"6279.5");
}

TEST(ScaledText, PositiveExponentAppendsZeros) {
    EXPECT_EQ(ScaledText(-12, {1, 2, 0}), L"-1200");
    EXPECT_EQ(ScaledText(0, {1, 2, 0}), L"0");
}

TEST(RawFromText, ReadsSignDecimalsAndEitherSeparator) {
    EXPECT_EQ(RawFromText(L"26", kHundredths, kSigned16), 2600);
    EXPECT_EQ(RawFromText(L"26.", kHundredths, kSigned16), 2600);
    EXPECT_EQ(RawFromText(L"-.25", kHundredths, kSigned16), -25);
    EXPECT_EQ(RawFromText(L"+0,5", kHundredths, kSigned16), 50);
    EXPECT_EQ(RawFromText(L"  7 ", kHundredths, kSigned16), 700);
    EXPECT_EQ(RawFromText(L"00000000000000000000026", kHundredths, kSigned16), 2600);
    EXPECT_EQ(RawFromText(L"1200", {1, 2, 0}, kSigned16), 12);
}

TEST(RawFromText, RoundsToTheNearestStepHalvesAwayFromZero) {
    EXPECT_EQ(RawFromText(L"26.005", kHundredths, kSigned16), 2601);
    EXPECT_EQ(RawFromText(L"26.0049999999999999999999999", kHundredths, kSigned16), 2600);
    EXPECT_EQ(RawFromText(L"-26.005", kHundredths, kSigned16), -2601);
    EXPECT_EQ(RawFromText(L"0.2", kHalves, kSigned16), 0);
    EXPECT_EQ(RawFromText(L"0.25", kHalves, kSigned16), 1);
    EXPECT_EQ(RawFromText(L"-0.25", kHalves, kSigned16), -1);
    EXPECT_EQ(RawFromText(L"-0.2", kHalves, kSigned16), 0);
}

TEST(RawFromText, LimitsHoldBeforeRounding) {
    constexpr RawRange level{0, 200, 255};
    EXPECT_EQ(RawFromText(L"100", kHalves, level), 200);
    EXPECT_EQ(RawFromText(L"100.1", kHalves, level), std::nullopt);
    EXPECT_EQ(RawFromText(L"100.0000000001", kHalves, level), std::nullopt);
    EXPECT_EQ(RawFromText(L"100.00000000000", kHalves, level), 200);
    EXPECT_EQ(RawFromText(L"-0.0000000001", kHalves, level), std::nullopt);
    EXPECT_EQ(RawFromText(L"0.0000000001", kHalves, level), 0);
    EXPECT_EQ(RawFromText(L"-0", kHalves, level), 0);
}

TEST(RawFromText, ADroppedDigitMovesANegativeLimitTheRightWay) {
    constexpr RawRange belowZero{-200, -100, std::nullopt};
    EXPECT_EQ(RawFromText(L"-50.00000001", kHalves, belowZero), -100);
    EXPECT_EQ(RawFromText(L"-49.99999999", kHalves, belowZero), std::nullopt);
    EXPECT_EQ(RawFromText(L"-100.00000001", kHalves, belowZero), std::nullopt);
}

TEST(RawFromText, TheInvalidValueIsAcceptedExactlyOnly) {
    constexpr RawRange level{0, 200, 255};
    EXPECT_EQ(RawFromText(L"127.5", kHalves, level), 255);
    EXPECT_EQ(RawFromText(L"127.50", kHalves, level), 255);
    EXPECT_EQ(RawFromText(L"127.4", kHalves, level), std::nullopt);
    EXPECT_EQ(RawFromText(L"127.50000000001", kHalves, level), std::nullopt);
}

TEST(RawFromText, RefusesWhatIsNoNumber) {
    for (const auto* text :
         {L"", L" ", L"-", L".", L"-.", L"1.2.3", L"1,2.3", L"1 2", L"1e3", L"0x10", L"--1", L"1-",
          L"26.0C", L"?", L"\x0663", L"9999999999999999999999999"}) {
        EXPECT_EQ(RawFromText(text, kHundredths, kSigned16), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quorvex
