#include "plugin/ini_text.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Names = std::vector<std::string>;

// The value of [S] K in a file of these bytes; "(none)" when there is none, "(not read)" when the
// file is left to the system's reader.
std::string Value(std::string_view bytes) {
    const auto text = IniText::Parse(bytes);
    return text ? text->Value("S", "K").value_or("(none)") : "(not read)";
}

std::string ValueOf(std::string_view value) {
    return Value("[S]\r\nK=" + std::string(value) + "\r\n");
}

TEST(IniText, ReadsAKeyOfItsSection) {
    EXPECT_EQ(Value("[R]\r\nK=0\r\n[S]\r\nJ=1\r\nK=2\r\n[T]\r\nK=3\r\n"), "2");
    EXPECT_EQ(Value("[R]\r\nK=0\r\n"), "(none)");
    EXPECT_EQ(Value("[S]\r\nJ=1\r\n[T]\r\nK=3\r\n"), "(none)");
    EXPECT_EQ(Value(""), "(none)");
}

TEST(IniText, LetterCaseDoesNotMatter) {
    EXPECT_EQ(Value("[s]\r\nk=v\r\n"), "v");
    EXPECT_EQ(Value("[S]\r\nK=V\r\n"), "V");
}

TEST(IniText, FirstSectionAndFirstKeyCount) {
    EXPECT_EQ(Value("[S]\r\nK=1\r\nk=2\r\n"), "1");
    EXPECT_EQ(Value("[S]\r\nJ=1\r\n[s]\r\nK=2\r\n"), "(none)");
    EXPECT_EQ(Value("[S]\r\n[T]\r\n[S]\r\nK=2\r\n"), "(none)");
}

TEST(IniText, KeysBeforeTheFirstSectionAreNeverRead) {
    EXPECT_EQ(Value("K=0\r\n[S]\r\n"), "(none)");
}

TEST(IniText, BlanksAroundNamesAndValuesDoNotCount) {
    EXPECT_EQ(Value("\t [S] \r\n \tK\t = \t v w \t\r\n"), "v w");
    EXPECT_EQ(ValueOf(""), "");
    EXPECT_EQ(ValueOf("   "), "");
}

TEST(IniText, OnePairOfQuotesIsTakenOff) {
    EXPECT_EQ(ValueOf("\"  v  \""), "  v  ");
    EXPECT_EQ(ValueOf("'v'"), "v");
    EXPECT_EQ(ValueOf("\"\"v\"\""), "\"v\"");
    EXPECT_EQ(ValueOf("\"v"), "\"v");
    EXPECT_EQ(ValueOf("v\""), "v\"");
    EXPECT_EQ(ValueOf("\"v'"), "\"v'");
    EXPECT_EQ(ValueOf("\"\""), "");
    EXPECT_EQ(ValueOf("\""), "\"");
}

TEST(IniText, ValueIsCutAtTheLongestLength) {
    EXPECT_EQ(ValueOf(std::string(4095, 'x')), std::string(4095, 'x'));
    EXPECT_EQ(ValueOf(std::string(4096, 'x')), std::string(4095, 'x'));
    EXPECT_EQ(ValueOf(std::string(70000, 'x')), std::string(4095, 'x'));
}

TEST(IniText, ValueKeepsWhatIsBehindTheFirstEqualsSign) {
    EXPECT_EQ(ValueOf("a=b"), "a=b");
    EXPECT_EQ(ValueOf("=b"), "=b");
    EXPECT_EQ(ValueOf("[T]"), "[T]");
    EXPECT_EQ(ValueOf("a;b"), "a;b");
    EXPECT_EQ(ValueOf("a\\b/c"), "a\\b/c");
    EXPECT_EQ(ValueOf("\xE9\x80\xFF"), "\xE9\x80\xFF");
}

TEST(IniText, CommentsAndEmptyLinesAreSkipped) {
    EXPECT_EQ(Value("; K=0\r\n\r\n[S]\r\n  ;K=1\r\n   \r\nK=2\r\n"), "2");
}

TEST(IniText, LinesMayEndInLineFeedsOrNotAtAll) {
    EXPECT_EQ(Value("[S]\nK=v\nJ=w"), "v");
    EXPECT_EQ(Value("[S]\r\nK=v"), "v");
    EXPECT_EQ(Value("[S]\r\nK=v\r"), "v");
}

TEST(IniText, WhatReadersMayDifferAboutIsLeftToTheSystem) {
    const std::string plain = "[S]\r\nK=v\r\n";
    EXPECT_EQ(Value("\xEF\xBB\xBF" + plain), "(not read)");
    EXPECT_EQ(Value("\xFF\xFE" + plain), "(not read)");
    EXPECT_EQ(Value("\xFE\xFF" + plain), "(not read)");
    EXPECT_EQ(Value(plain + '\0'), "(not read)");
    EXPECT_EQ(Value(plain + "\x1A"), "(not read)");
    EXPECT_EQ(Value("[S]\rK=v\r\n"), "(not read)");
    EXPECT_EQ(Value(plain + "word\r\n"), "(not read)");
    for (const char* section : {"[S\r\n", "[]\r\n", "[ S ]\r\n", "[S] x\r\n", "[S]]\r\n", "[\r\n"})
        EXPECT_EQ(Value(section + plain), "(not read)") << section;
    EXPECT_EQ(ValueOf('"' + std::string(4094, 'x') + '"'), "(not read)");
}

TEST(IniText, SectionsAreListedOnceInTheirOrderAndSpelling) {
    const auto text = IniText::Parse("[b]\r\n[A]\r\nK=v\r\n[B]\r\n[c]\r\n");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->Sections(), (Names{"b", "A", "c"}));
}

}  // namespace
}  // namespace quillon
