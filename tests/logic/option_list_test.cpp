#include "editors/option_list.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {

void PrintTo(const Option& option, std::ostream* out) {
    *out << option.code << ' ' << testing::PrintToString(option.label);
}

namespace {

using Options = std::vector<Option>;

TEST(ParseOptionList, ReadsCodesAndLabelsInTheirOrder) {
    EXPECT_EQ(ParseOptionList(L"0,Auto;1,Off;2,On;"),
              (Options{{0, L"Auto"}, {1, L"Off"}, {2, L"On"}}));
    EXPECT_EQ(ParseOptionList(L"9,b;-1,a;"), (Options{{9, L"b"}, {-1, L"a"}}));
}

TEST(ParseOptionList, LastEntryMayLackItsEnd) {
    EXPECT_EQ(ParseOptionList(L"0,Auto;1,Off"), (Options{{0, L"Auto"}, {1, L"Off"}}));
}

TEST(ParseOptionList, EmptyTextAndEmptyEntriesGiveNothing) {
    EXPECT_EQ(ParseOptionList(L""), Options{});
    EXPECT_EQ(ParseOptionList(L";;;"), Options{});
    EXPECT_EQ(ParseOptionList(L";0,Auto;;1,Off;;"), (Options{{0, L"Auto"}, {1, L"Off"}}));
}

TEST(ParseOptionList, LabelRunsFromTheFirstCommaToTheEnd) {
    EXPECT_EQ(ParseOptionList(L"1,a, b,c ;"), (Options{{1, L"a, b,c "}}));
    EXPECT_EQ(ParseOptionList(L"1,;"), (Options{{1, L""}}));
}

TEST(ParseOptionList, EntryWithoutCommaIsSkipped) {
    EXPECT_EQ(ParseOptionList(L"7;Off"), Options{});
    EXPECT_EQ(ParseOptionList(L"7;1,On;Off;"), (Options{{1, L"On"}}));
}

TEST(ParseOptionList, CodesAreLenientNumbers) {
    EXPECT_EQ(ParseOptionList(L" 12x,a;,b;2.5,c;&HFF,d;x,e"),
              (Options{{12, L"a"}, {0, L"b"}, {2, L"c"}, {255, L"d"}, {0, L"e"}}));
}

TEST(ParseOptionList, CodeOutOfRangeLeavesItsEntryOut) {
    EXPECT_EQ(ParseOptionList(L"1,a;99999999999,b;2,c;"), (Options{{1, L"a"}, {2, L"c"}}));
}

TEST(ParseOptionList, DuplicatesAreKept) {
    EXPECT_EQ(ParseOptionList(L"1,a;1,a;1,b;"), (Options{{1, L"a"}, {1, L"a"}, {1, L"b"}}));
}

TEST(ParseOptionList, LongListIsReadInFull) {
    std::wstring text;
    for (int i = 0; i < 100'000; ++i) text += L"1,x;";
    EXPECT_EQ(ParseOptionList(text).size(), 100'000u);
}

}  // namespace
}  // namespace quillon
