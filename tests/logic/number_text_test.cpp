#include "plugin/number_text.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace quillon {
namespace {

constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

TEST(LenientNumber, EmptyAndNonNumericTextsAreZero) {
    for (const wchar_t* text :
         {L"", L"   ", L"abc", L"true", L".", L"-", L"+.", L"- 1", L"/ off", L",5", L"\uFF11"}) {
        EXPECT_EQ(LenientNumber(text), 0) << text;
    }
}

TEST(LenientNumber, ReadsTheLeadingNumericCharacters) {
    EXPECT_EQ(LenientNumber(L"1"), 1);
    EXPECT_EQ(LenientNumber(L"1.0"), 1);
    EXPECT_EQ(LenientNumber(L"5 seconds"), 5);
    EXPECT_EQ(LenientNumber(L"0010"), 10);
    EXPECT_EQ(LenientNumber(L"1.5.7"), 1.5);
    EXPECT_EQ(LenientNumber(L"2,5"), 2);
    EXPECT_EQ(LenientNumber(L".25x"), 0.25);
    EXPECT_EQ(LenientNumber(L"7."), 7);
}

TEST(LenientNumber, SkipsLeadingSpacesAndTabsOnly) {
    EXPECT_EQ(LenientNumber(L" \t 12"), 12);
    EXPECT_EQ(LenientNumber(L"\n12"), 0);
    EXPECT_EQ(LenientNumber(std::wstring(L"\0001", 2)), 0);
}

TEST(LenientNumber, TakesOneSign) {
    EXPECT_EQ(LenientNumber(L"-3"), -3);
    EXPECT_EQ(LenientNumber(L"+3"), 3);
    EXPECT_EQ(LenientNumber(L"-.5"), -0.5);
    EXPECT_EQ(LenientNumber(L"--3"), 0);
}

TEST(LenientNumber, KnowsNoExponent) {
    EXPECT_EQ(LenientNumber(L"1e3"), 1);
    EXPECT_EQ(LenientNumber(L"1D3"), 1);
}

TEST(LenientScientific, TakesTheExponentBehindTheDigits) {
    EXPECT_EQ(LenientScientific(L"5e-06"), 5e-06);
    EXPECT_EQ(LenientScientific(L"-3.4E+38"), -3.4E+38);
    EXPECT_EQ(LenientScientific(L" \t1e3 m"), 1000);
    EXPECT_EQ(LenientScientific(L"1.e2"), 100);
    EXPECT_EQ(LenientScientific(L".5E1"), 5);
    EXPECT_EQ(LenientScientific(L"1e0003"), 1000);
    EXPECT_EQ(LenientScientific(L"1e2.5"), 100) << "which is whole";
    EXPECT_EQ(LenientScientific(L"1e2e3"), 100);
}

TEST(LenientScientific, ExponentWithoutDigitsOrWithoutANumberIsIgnored) {
    for (const wchar_t* text : {L"7e", L"7E+", L"7e-", L"7e x", L"7 e3", L"7e 3", L"7e--3", L"7D3"})
        EXPECT_EQ(LenientScientific(text), 7) << text;
    for (const wchar_t* text : {L"e3", L".e3", L"-e3", L"", L"NaN", L"inf"})
        EXPECT_EQ(LenientScientific(text), 0) << text;
}

TEST(LenientScientific, ReadsWithoutAnExponentAsTheLenientNumber) {
    for (const wchar_t* text : {L"5 s", L"-.5", L"1.5.7", L"abc", L"&HFF9C", L"&h1E5", L"2,5"})
        EXPECT_EQ(LenientScientific(text), LenientNumber(text)) << text;
}

TEST(LenientScientific, BeyondTheRangeOfADoubleFailsAndBelowItIsZero) {
    const std::wstring zeros(400, L'0');
    for (const std::wstring& text :
         {std::wstring(L"1e309"), std::wstring(L"-1e309"), std::wstring(L"0.001e312"),
          L"1e" + std::wstring(50, L'9'), L"1" + zeros + L"e-1", L"0." + zeros + L"1e800"})
        EXPECT_THROW(LenientScientific(text), NumberError) << text;
    for (const std::wstring& text : {std::wstring(L"1e-400"), L"1e-" + std::wstring(50, L'9'),
                                     std::wstring(L"0e999999999999"), L"0." + zeros + L"1e1"})
        EXPECT_EQ(LenientScientific(text), 0) << text;
    EXPECT_EQ(LenientScientific(L"1" + zeros + L"e-400"), 1);
    EXPECT_EQ(LenientScientific(L"0." + zeros + L"1e401"), 1);
}

TEST(IsScientific, SaysWhetherTheWholeTextIsANumber) {
    for (const wchar_t* text : {L"5", L" -3.4E+38\t", L"5e-06", L".5", L"7.", L"1e999"})
        EXPECT_TRUE(IsScientific(text)) << text;
    for (const wchar_t* text : {L"", L" ", L"NaN", L"1.#QNAN", L"5 s", L"5e", L"5e+", L"e5", L"-",
                                L".", L"1 2", L"1,5", L"&H10", L"1e2.5"})
        EXPECT_FALSE(IsScientific(text)) << text;
}

TEST(LenientNumber, HexadecimalOfUpToFourDigitsIsSigned16Bit) {
    EXPECT_EQ(LenientNumber(L"&HFF9C"), -100);
    EXPECT_EQ(LenientNumber(L"&h7fff"), 32767);
    EXPECT_EQ(LenientNumber(L"&H8000"), -32768);
    EXPECT_EQ(LenientNumber(L"&HFF"), 255);
    EXPECT_EQ(LenientNumber(L"  &H10 and more"), 16);
}

TEST(LenientNumber, HexadecimalOfFiveToEightDigitsIsSigned32Bit) {
    EXPECT_EQ(LenientNumber(L"&H0FFFA"), 65530);
    EXPECT_EQ(LenientNumber(L"&HFFFFFFFF"), -1);
    EXPECT_EQ(LenientNumber(L"&H80000000"), kSmallest);
    EXPECT_EQ(LenientNumber(L"&H7FFFFFFF"), kLargest);
}

TEST(LenientNumber, HexadecimalBeyondEightDigitsFails) {
    EXPECT_THROW(LenientNumber(L"&H100000000"), NumberError);
    EXPECT_THROW(LenientNumber(L"&H000000001"), NumberError);
}

TEST(LenientNumber, HexadecimalWithoutDigitsOrBehindASignIsZero) {
    EXPECT_EQ(LenientNumber(L"&H"), 0);
    EXPECT_EQ(LenientNumber(L"&HXY"), 0);
    EXPECT_EQ(LenientNumber(L"&"), 0);
    EXPECT_EQ(LenientNumber(L"-&H10"), 0);
    EXPECT_EQ(LenientNumber(L"& H10"), 0);
}

TEST(LenientNumber, BeyondTheRangeOfADoubleFails) {
    EXPECT_THROW(LenientNumber(L"-1" + std::wstring(400, L'0')), NumberError);
}

TEST(LenientNumber, ManyLeadingZerosOrATinyFractionDoNotFail) {
    EXPECT_EQ(LenientNumber(std::wstring(5000, L'0') + L"7"), 7);
    EXPECT_EQ(LenientNumber(L"0." + std::wstring(5000, L'0') + L"7"), 0);
    EXPECT_EQ(LenientNumber(L"2." + std::wstring(5000, L'0') + L"7"), 2);
}

TEST(LenientNumber, DoesNotDependOnTheLocaleOfTheProcess) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const bool isSet = std::setlocale(LC_ALL, "it_IT.UTF-8") ||
                       std::setlocale(LC_ALL, "Italian_Italy.1252") ||
                       std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (!isSet) GTEST_SKIP() << "no locale with a decimal comma on this machine";
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(LenientNumber(L"1.5"), 1.5);
    EXPECT_EQ(LenientNumber(L"1,5"), 1);
    EXPECT_EQ(StrictNumber(L"-2.25"), -2.25);
    std::setlocale(LC_ALL, before.c_str());
}

TEST(LenientWhole, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(LenientWhole(L"0.5"), 0);
    EXPECT_EQ(LenientWhole(L"1.5"), 2);
    EXPECT_EQ(LenientWhole(L"2.5"), 2);
    EXPECT_EQ(LenientWhole(L"-1.5"), -2);
    EXPECT_EQ(LenientWhole(L"-2.5"), -2);
    EXPECT_EQ(LenientWhole(L"1.4"), 1);
}

TEST(LenientWhole, BeyondSigned32BitFails) {
    EXPECT_EQ(LenientWhole(L"2147483647"), kLargest);
    EXPECT_EQ(LenientWhole(L"-2147483648"), kSmallest);
    EXPECT_THROW(LenientWhole(L"2147483648"), NumberError);
    EXPECT_THROW(LenientWhole(L"-2147483649"), NumberError);
}

TEST(StrictNumber, AllowsBlanksAroundSignDigitsAndOnePoint) {
    EXPECT_EQ(StrictNumber(L"01"), 1);
    EXPECT_EQ(StrictNumber(L" \t1 "), 1);
    EXPECT_EQ(StrictNumber(L"-2.5"), -2.5);
    EXPECT_EQ(StrictNumber(L"+.5"), 0.5);
    EXPECT_EQ(StrictNumber(L"3."), 3);
}

TEST(StrictNumber, AnythingElseFails) {
    for (const wchar_t* text : {L"", L"  ", L".", L"-", L"+", L"abc", L"0A", L"1e3", L"&H1", L"1 2",
                                L"1.2.3", L"1,5", L"- 1", L"--1", L"1\n", L"1x", L"\uFF11"}) {
        EXPECT_THROW(StrictNumber(text), NumberError) << text;
    }
    EXPECT_THROW(StrictNumber(std::wstring(L"1\0", 2)), NumberError);
    EXPECT_THROW(StrictNumber(std::wstring(400, L'9')), NumberError);
}

TEST(RoundHalfEven, AcceptsExactlyWhatRoundsIntoSigned32Bit) {
    EXPECT_EQ(RoundHalfEven(2147483647.25), kLargest);
    EXPECT_EQ(RoundHalfEven(-2147483648.5), kSmallest);
    EXPECT_THROW(RoundHalfEven(2147483647.5), NumberError);
    EXPECT_THROW(RoundHalfEven(-2147483648.75), NumberError);
    EXPECT_THROW(RoundHalfEven(std::numeric_limits<double>::infinity()), NumberError);
    EXPECT_THROW(RoundHalfEven(-std::numeric_limits<double>::infinity()), NumberError);
    EXPECT_THROW(RoundHalfEven(std::numeric_limits<double>::quiet_NaN()), NumberError);
}

TEST(RoundHalfEven, TakesTheNearestNeighbour) {
    EXPECT_EQ(RoundHalfEven(-0.5), 0);
    EXPECT_EQ(RoundHalfEven(-0.75), -1);
    EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
    EXPECT_EQ(RoundHalfEven(2.5000000001), 3);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
}

TEST(RoundHalfEven, DoesNotDependOnTheRoundingModeOfTheProcess) {
    const int before = std::fegetround();
    ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
    const std::int32_t up = RoundHalfEven(2.25);
    std::fesetround(FE_DOWNWARD);
    const std::int32_t down = RoundHalfEven(2.75);
    std::fesetround(before);
    EXPECT_EQ(up, 2);
    EXPECT_EQ(down, 3);
}

TEST(DecimalText, WritesTheWholeRange) {
    EXPECT_EQ(DecimalText(0), L"0");
    EXPECT_EQ(DecimalText(kLargest), L"2147483647");
    EXPECT_EQ(DecimalText(kSmallest), L"-2147483648");
}

}  // namespace
}  // namespace quillon
