#include "plugin/factory_data.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct Words {
    int high;
    int low;
    int offset;

    bool operator==(const Words&) const = default;
};

void PrintTo(const Words& words, std::ostream* out) {
    *out << words.high << ", " << words.low << ", " << words.offset;
}

Words WordsOf(std::wstring_view hexText) {
    const FactoryData data = ParseFactoryData(hexText).value();
    return {data.high, data.low, data.offset};
}

TEST(FactoryData, IsAllZeroBeforeAnythingWasRead) {
    const FactoryData data;
    EXPECT_EQ(data.bytes, (std::array<std::uint8_t, 9>{}));
    EXPECT_EQ(data.high, 0);
    EXPECT_EQ(data.low, 0);
    EXPECT_EQ(data.offset, 0);
}

TEST(ParseFactoryData, ReadsWordsHighByteFirstAndTheDateOfProduction) {
    const FactoryData data = ParseFactoryData(L"0102030405061A170C").value();
    EXPECT_EQ(data.bytes, (std::array<std::uint8_t, 9>{1, 2, 3, 4, 5, 6, 0x1A, 0x17, 0x0C}));
    EXPECT_EQ(data.high, 258);
    EXPECT_EQ(data.low, 772);
    EXPECT_EQ(data.offset, 1286);
    EXPECT_EQ(ProductionYear(data), L"2021");
    EXPECT_EQ(ProductionWeek(data), L"12");
}

TEST(ParseFactoryData, LargestHighByteThatDoesNotOverflow) {
    EXPECT_EQ(WordsOf(L"7FFF7F007F01000000"), (Words{0x7FFF, 0x7F00, 0x7F01}));
}

TEST(ParseFactoryData, OverflowInTheFirstWordLeavesAllThreeLowByteFirst) {
    EXPECT_EQ(WordsOf(L"800203040506000000"), (Words{0x0280, 0x0403, 0x0605}));
}

TEST(ParseFactoryData, OverflowInTheSecondWordKeepsTheFirst) {
    EXPECT_EQ(WordsOf(L"010280040506000000"), (Words{0x0102, 0x0480, 0x0605}));
}

TEST(ParseFactoryData, OverflowInTheThirdWordKeepsTheFirstTwo) {
    EXPECT_EQ(WordsOf(L"01020304FF06000000"), (Words{0x0102, 0x0304, 0x06FF}));
}

TEST(ParseFactoryData, LowByteFirstWordsAreSigned) {
    EXPECT_EQ(WordsOf(L"80FF01FE00FF000000"), (Words{-128, -511, -256}));
}

TEST(ParseFactoryData, OverflowStillGivesTheDateOfProduction) {
    const FactoryData data = ParseFactoryData(L"FF0000000000FF1734").value();
    EXPECT_EQ(data.bytes[6], 0xFF);
    EXPECT_EQ(ProductionYear(data), L"2021");
    EXPECT_EQ(ProductionWeek(data), L"52");
}

TEST(ParseFactoryData, DigitsCountInBothCasesAndALongerTextIsCut) {
    EXPECT_EQ(WordsOf(L"0a0B0c0D0e0F000000zz?"), (Words{0x0A0B, 0x0C0D, 0x0E0F}));
}

TEST(ParseFactoryData, ShortOrWrongTextGivesNothing) {
    for (const wchar_t* text :
         {L"", L"?", L"0102030405061A170", L"0102030405061A17", L"0102030405061A17 C",
          L"G102030405061A170C", L"01 02 03 04 05 06 1A 17 0C"}) {
        EXPECT_FALSE(ParseFactoryData(text)) << text;
    }
}

TEST(IsFactoryText, IsExactlyEighteenDigitsOfEitherCase) {
    EXPECT_TRUE(IsFactoryText(L"27103EA80028011C2F"));
    EXPECT_TRUE(IsFactoryText(L"27103ea80028011c2f"));
    for (const wchar_t* text : {L"", L"?", L"27103EA80028011C2", L"27103EA80028011C2F0",
                                L"27103EA80028011C2G", L" 7103EA80028011C2F"})
        EXPECT_FALSE(IsFactoryText(text)) << text;
}

TEST(FactoryDigits, AreTheFirstEighteenOfAnEntry) {
    EXPECT_EQ(FactoryDigits(L"27103EA80028011C2F"), L"27103EA80028011C2F");
    EXPECT_EQ(FactoryDigits(L"27103EA80028011C2FAABB"), L"27103EA80028011C2F");
    EXPECT_EQ(FactoryDigits(L"27103EA80028011C2Fxyz"), L"27103EA80028011C2F");
}

TEST(FactoryDigits, NoneOfAnEntryThatDoesNotBeginWithFactoryData) {
    for (const wchar_t* text : {L"", L"?", L"27103EA80028011C2", L"27103EA80028011C2GAABB"})
        EXPECT_EQ(FactoryDigits(text), L"") << text;
}

TEST(Production, CountsFromTheFirstYear) {
    EXPECT_EQ(ProductionYear({}), L"1998");
    EXPECT_EQ(ProductionWeek({}), L"0");
    EXPECT_EQ(ProductionYear({.bytes = {0, 0, 0, 0, 0, 0, 0, 255, 255}}), L"2253");
    EXPECT_EQ(ProductionWeek({.bytes = {0, 0, 0, 0, 0, 0, 0, 255, 255}}), L"255");
}

}  // namespace
}  // namespace quillon
