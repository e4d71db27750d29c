#include "plugin/field_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

TEST(GetField, CountsFieldsFromZero) {
    EXPECT_EQ(GetField(L"a;b;c", 0, L";"), L"a");
    EXPECT_EQ(GetField(L"a;b;c", 1, L";"), L"b");
    EXPECT_EQ(GetField(L"a;b;c", 2, L";"), L"c");
}

TEST(GetField, TextWithoutDelimiterHasNoFieldZero) {
    EXPECT_EQ(GetField(L"abc", 0, L";"), L"");
}

TEST(GetField, BeyondTheLastFieldIsEmpty) {
    EXPECT_EQ(GetField(L"a;b", 2, L";"), L"");
    EXPECT_EQ(GetField(L"a;b", 3, L";"), L"");
    EXPECT_EQ(GetField(L"abc", 1, L";"), L"");
    EXPECT_EQ(GetField(L"a;b", std::numeric_limits<std::int32_t>::max(), L";"), L"");
}

TEST(GetField, EmptyTextAndEmptyFieldsAreEmpty) {
    EXPECT_EQ(GetField(L"", 0, L";"), L"");
    EXPECT_EQ(GetField(L"", 1, L";"), L"");
    EXPECT_EQ(GetField(L";x;", 0, L";"), L"");
    EXPECT_EQ(GetField(L"a;;c", 1, L";"), L"");
    EXPECT_EQ(GetField(L";x;", 2, L";"), L"");
}

TEST(GetField, ComparesByCase) {
    EXPECT_EQ(GetField(L"1x2X3", 0, L"X"), L"1x2");
    EXPECT_EQ(GetField(L"1x2X3", 1, L"X"), L"3");
}

TEST(GetField, DelimiterOfSeveralCharactersLeavesItsRestInTheField) {
    EXPECT_EQ(GetField(L"a--b--c", 0, L"--"), L"a");
    EXPECT_EQ(GetField(L"a--b--c", 1, L"--"), L"-b");
    EXPECT_EQ(GetField(L"a<>b<>c", 2, L"<>"), L">c");
}

TEST(GetField, DelimiterOfSeveralCharactersIsAlsoFoundOverlapping) {
    EXPECT_EQ(GetField(L"a---b", 1, L"--"), L"");
    EXPECT_EQ(GetField(L"a---b", 2, L"--"), L"-b");
}

TEST(GetField, NegativeFieldIsEmpty) {
    EXPECT_EQ(GetField(L"a;b", -1, L";"), L"");
    EXPECT_EQ(GetField(L"a;b", std::numeric_limits<std::int32_t>::min(), L";"), L"");
}

TEST(GetField, EmptyDelimiterIsEmpty) {
    EXPECT_EQ(GetField(L"a;b", 0, L""), L"");
    EXPECT_EQ(GetField(L"a;b", 1, L""), L"");
}

TEST(ReplaceDecimalSeparator, ReplacesThePoint) {
    EXPECT_EQ(ReplaceDecimalSeparator(L"1.5", L","), L"1,5");
    EXPECT_EQ(ReplaceDecimalSeparator(L"1.5", L"."), L"1.5");
    EXPECT_EQ(ReplaceDecimalSeparator(L".5", L","), L",5");
    EXPECT_EQ(ReplaceDecimalSeparator(L"5.", L","), L"5,");
}

TEST(ReplaceDecimalSeparator, ReplacesACommaOnlyWithoutAPoint) {
    EXPECT_EQ(ReplaceDecimalSeparator(L"1,5", L"."), L"1.5");
    EXPECT_EQ(ReplaceDecimalSeparator(L"1,000.5", L","), L"1,000,5");
}

TEST(ReplaceDecimalSeparator, ReplacesOnlyTheFirst) {
    EXPECT_EQ(ReplaceDecimalSeparator(L"1.2.3", L","), L"1,2.3");
    EXPECT_EQ(ReplaceDecimalSeparator(L"1,2,3", L"."), L"1.2,3");
}

TEST(ReplaceDecimalSeparator, TextWithoutSeparatorIsUnchanged) {
    EXPECT_EQ(ReplaceDecimalSeparator(L"12", L","), L"12");
    EXPECT_EQ(ReplaceDecimalSeparator(L"", L","), L"");
}

}  // namespace
}  // namespace quillon
