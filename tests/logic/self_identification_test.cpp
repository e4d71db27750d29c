#include "plugin/self_identification.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

void ExpectVersions(std::wstring_view sisd, const wchar_t* type, const wchar_t* version,
                    const wchar_t* os) {
    const auto parsed = ParseSelfIdentification(sisd);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->type, type);
    EXPECT_EQ(parsed->version, version);
    EXPECT_EQ(parsed->os, os);
}

TEST(ParseSelfIdentification, TakesFourCharactersEachAfterTheMark) {
    ExpectVersions(L"ABC;0102030405060708", L"0102", L"0304", L"0506");
    ExpectVersions(L";2.102.104.00", L"2.10", L"2.10", L"4.00");
}

TEST(ParseSelfIdentification, ShorterTextGivesShorterOrEmptyVersions) {
    ExpectVersions(L"ABC;01", L"01", L"", L"");
    ExpectVersions(L"ABC;010203", L"0102", L"03", L"");
    ExpectVersions(L"ABC;0102030405", L"0102", L"0304", L"05");
    ExpectVersions(L"ABC;", L"", L"", L"");
}

TEST(ParseSelfIdentification, OnlyTheFirstMarkCounts) {
    ExpectVersions(L"A;01;2;03;4;5", L"01;2", L";03;", L"4;5");
    ExpectVersions(L";;", L";", L"", L"");
}

TEST(ParseSelfIdentification, WithoutMarkThereIsNothing) {
    EXPECT_FALSE(ParseSelfIdentification(L""));
    EXPECT_FALSE(ParseSelfIdentification(L"ABC:0102030405060708"));
}

TEST(SelfIdentificationMark, IsTheIndexOfTheFirst) {
    EXPECT_EQ(SelfIdentificationMark(L"ABC;01;02"), 3u);
    EXPECT_EQ(SelfIdentificationMark(L";"), 0u);
    EXPECT_EQ(SelfIdentificationMark(L"ABC"), std::nullopt);
    EXPECT_EQ(SelfIdentificationMark(L""), std::nullopt);
}

}  // namespace
}  // namespace quillon
