#include "plugin/hex_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillon {
namespace {

// What a function gave and what it left in the caller's variable.
struct Written {
    std::wstring text;
    std::int32_t left;

    bool operator==(const Written&) const = default;
};

void PrintTo(const Written& written, std::ostream* out) {
    *out << testing::PrintToString(written.text) << " leaving " << written.left;
}

Written Write(std::wstring (*function)(std::int32_t&), std::int32_t number) {
    const std::wstring text = function(number);
    return {text, number};
}

TEST(HexDigit, KnowsBothCasesAndNothingElse) {
    EXPECT_EQ(HexDigit(L'0'), 0);
    EXPECT_EQ(HexDigit(L'9'), 9);
    EXPECT_EQ(HexDigit(L'a'), 10);
    EXPECT_EQ(HexDigit(L'F'), 15);
    for (wchar_t other : {L'/', L':', L'@', L'G', L'`', L'g', L' ', L'\0', L'\uFF21'}) {
        EXPECT_EQ(HexDigit(other), std::nullopt);
    }
}

TEST(HexByteAt, ReadsTwoDigitsAtAPosition) {
    EXPECT_EQ(HexByteAt(L"A5", 0), 0xA5);
    EXPECT_EQ(HexByteAt(L"001f", 2), 0x1F);
    EXPECT_EQ(HexByteAt(L"001f", 1), 0x01);
}

TEST(HexByteAt, TooShortOrNoDigitsIsAbsent) {
    EXPECT_EQ(HexByteAt(L"", 0), std::nullopt);
    EXPECT_EQ(HexByteAt(L"A", 0), std::nullopt);
    EXPECT_EQ(HexByteAt(L"A5", 1), std::nullopt);
    EXPECT_EQ(HexByteAt(L"A5", std::numeric_limits<std::size_t>::max()), std::nullopt);
    EXPECT_EQ(HexByteAt(L" 5", 0), std::nullopt);
    EXPECT_EQ(HexByteAt(L"5?", 0), std::nullopt);
}

TEST(HexTextToNumber, EmptyTextIsMinusOne) {
    EXPECT_EQ(HexTextToNumber(L""), -1);
}

TEST(HexTextToNumber, TwoCharactersAreTheByte) {
    EXPECT_EQ(HexTextToNumber(L"1F"), 31);
    EXPECT_EQ(HexTextToNumber(L"ff"), 255);
    EXPECT_EQ(HexTextToNumber(L"00"), 0);
}

TEST(HexTextToNumber, AnyOtherTextGivesByteEleven) {
    EXPECT_EQ(HexTextToNumber(L"0000000000000000000000A7"), 0xA7);
    EXPECT_EQ(HexTextToNumber(L"??????????????????????A7??"), 0xA7);
}

TEST(HexTextToNumber, WithoutDigitsAtThatPlaceFails) {
    EXPECT_THROW(HexTextToNumber(L"G1"), NumberError);
    EXPECT_THROW(HexTextToNumber(L"1"), NumberError);
    EXPECT_THROW(HexTextToNumber(L"123"), NumberError);
    EXPECT_THROW(HexTextToNumber(std::wstring(23, L'1')), NumberError);
    EXPECT_THROW(HexTextToNumber(std::wstring(22, L'1') + L"1Z"), NumberError);
}

TEST(HexByte, PadsASingleDigitWithAZero) {
    EXPECT_EQ(Write(HexByte, 10), (Written{L"0A", 10}));
    EXPECT_EQ(Write(HexByte, 0), (Written{L"00", 0}));
    EXPECT_EQ(Write(HexByte, 255), (Written{L"FF", 255}));
}

TEST(HexByte, AboveAByteClampsTheVariableOfTheCaller) {
    EXPECT_EQ(Write(HexByte, 300), (Written{L"FF", 255}));
    EXPECT_EQ(Write(HexByte, 256), (Written{L"FF", 255}));
}

TEST(HexByte, NegativeGivesEightDigitsAndIsNotClamped) {
    EXPECT_EQ(Write(HexByte, -1), (Written{L"FFFFFFFF", -1}));
    EXPECT_EQ(Write(HexByte, std::numeric_limits<std::int32_t>::min()),
              (Written{L"80000000", std::numeric_limits<std::int32_t>::min()}));
}

TEST(HexWord, WritesTheHighByteFirst) {
    EXPECT_EQ(Write(HexWord, 258), (Written{L"0102", 258}));
    EXPECT_EQ(Write(HexWord, 0), (Written{L"0000", 0}));
    EXPECT_EQ(Write(HexWord, 65535), (Written{L"FFFF", 65535}));
}

TEST(HexWord, AboveAWordClampsTheVariableOfTheCaller) {
    EXPECT_EQ(Write(HexWord, 70000), (Written{L"FFFF", 65535}));
    EXPECT_EQ(Write(HexWord, 65536), (Written{L"FFFF", 65535}));
}

TEST(HexWord, NegativeWritesQuotientAndRemainderEachInFull) {
    EXPECT_EQ(Write(HexWord, -1), (Written{L"00FFFFFFFF", -1}));
    EXPECT_EQ(Write(HexWord, -256), (Written{L"FFFFFFFF00", -256}));
    EXPECT_EQ(Write(HexWord, -258), (Written{L"FFFFFFFFFFFFFFFE", -258}));
}

TEST(TwoDigits, PadsASingleDigitAndClampsAboveNinetyNine) {
    EXPECT_EQ(Write(TwoDigits, 7), (Written{L"07", 7}));
    EXPECT_EQ(Write(TwoDigits, 42), (Written{L"42", 42}));
    EXPECT_EQ(Write(TwoDigits, 123), (Written{L"99", 99}));
}

TEST(TwoDigits, NegativeKeepsItsSignWithoutAZero) {
    EXPECT_EQ(Write(TwoDigits, -5), (Written{L"-5", -5}));
    EXPECT_EQ(Write(TwoDigits, -123), (Written{L"-123", -123}));
}

TEST(FileCode, FourDigitsAreASigned16BitNumber) {
    EXPECT_EQ(FileCode(L"FFFA"), -6);
    EXPECT_EQ(FileCode(L"FFFD"), -3);
    EXPECT_EQ(FileCode(L"FFFE"), -2);
    EXPECT_EQ(FileCode(L"ffff"), -1);
    EXPECT_EQ(FileCode(L"1"), 1);
}

TEST(FileCode, NoDigitsAreZeroAndTooManyFail) {
    EXPECT_EQ(FileCode(L""), 0);
    EXPECT_EQ(FileCode(L"?"), 0);
    EXPECT_THROW(FileCode(L"123456789"), NumberError);
}

}  // namespace
}  // namespace quillon
