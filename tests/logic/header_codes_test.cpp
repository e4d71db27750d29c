#include "model/header_codes.h"

#include <gtest/gtest.h>

#include "plugin/number_text.h"

namespace quillon {
namespace {

void ExpectCodes(std::wstring_view header, const wchar_t* deviceId, const wchar_t* customerId) {
    const HeaderCodes codes = ReadHeaderCodes(header);
    EXPECT_EQ(codes.deviceId, deviceId);
    EXPECT_EQ(codes.customerId, customerId);
}

TEST(ReadHeaderCodes, TakesTheTwoCodesBehindTheFirstEightCharacters) {
    ExpectCodes(L"000000000104002A", L"0104", L"002A");
    ExpectCodes(L"0000000000000000", L"0000", L"0000");
}

TEST(ReadHeaderCodes, ShorterHeadersGiveShorterOrEmptyCodes) {
    ExpectCodes(L"", L"", L"");
    ExpectCodes(L"00000000", L"", L"");
    ExpectCodes(L"0000000001", L"01", L"");
    ExpectCodes(L"000000000104", L"0104", L"");
    ExpectCodes(L"00000000010400", L"0104", L"00");
}

TEST(ReadHeaderCodes, WhatFollowsAndWhatPrecedesIsNotLookedAt) {
    ExpectCodes(L"????????0104002A????", L"0104", L"002A");
}

TEST(LeadingFour, OfAShorterTextIsAllOfIt) {
    EXPECT_EQ(LeadingFour(L"0104002A"), L"0104");
    EXPECT_EQ(LeadingFour(L"0104"), L"0104");
    EXPECT_EQ(LeadingFour(L"01"), L"01");
    EXPECT_EQ(LeadingFour(L""), L"");
}

TEST(TrailingFour, OfAShorterTextIsAllOfIt) {
    EXPECT_EQ(TrailingFour(L"0104002A"), L"002A");
    EXPECT_EQ(TrailingFour(L"0104002AFF"), L"2AFF");
    EXPECT_EQ(TrailingFour(L"002A"), L"002A");
    EXPECT_EQ(TrailingFour(L"2A"), L"2A");
    EXPECT_EQ(TrailingFour(L""), L"");
}

TEST(DeviceCodeAsWord, ReadsTheHexadecimalCodeAsADecimalNumber) {
    EXPECT_EQ(DeviceCodeAsWord(L"0104"), L"0068");
    EXPECT_EQ(DeviceCodeAsWord(L"0010"), L"000A");
    EXPECT_EQ(DeviceCodeAsWord(L"9999"), L"270F");
}

TEST(DeviceCodeAsWord, OnlyZeroToNineStayAsTheyAre) {
    for (wchar_t digit = L'0'; digit <= L'9'; ++digit) {
        const std::wstring code = std::wstring(L"000") + digit;
        EXPECT_EQ(DeviceCodeAsWord(code), code);
    }
    EXPECT_NE(DeviceCodeAsWord(L"000A"), L"000A");
}

TEST(DeviceCodeAsWord, StopsAtTheFirstCharacterThatIsNoDecimalDigit) {
    EXPECT_EQ(DeviceCodeAsWord(L"01A4"), L"0001");
    EXPECT_EQ(DeviceCodeAsWord(L"FFFF"), L"0000");
    EXPECT_EQ(DeviceCodeAsWord(L""), L"0000");
}

TEST(DeviceCodeAsWord, KeepsTheQuirksOfTheWord) {
    EXPECT_EQ(DeviceCodeAsWord(L"-1"), L"00FFFFFFFF");
    EXPECT_EQ(DeviceCodeAsWord(L"99999"), L"FFFF");
    EXPECT_EQ(DeviceCodeAsWord(L"&H1F"), L"001F");
}

TEST(DeviceCodeAsWord, OutOfRangeFails) {
    EXPECT_THROW(DeviceCodeAsWord(L"9999999999"), NumberError);
}

}  // namespace
}  // namespace quillon
