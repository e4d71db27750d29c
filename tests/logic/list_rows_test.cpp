#include "window/list_rows.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace quillon {
namespace {

TEST(NetworkVariableRow, InputOneHasItsPrefixTagAndIcon) {
    EXPECT_EQ(NetworkVariableRow(L"nviSetpoint", L"12", L"21.5", false, false),
              (ListRow{L"nviSetpoint", L"NVS\\12", L"NV", L"nvi", L"21.5"}));
}

TEST(NetworkVariableRow, OutputOneHasTheOutputIcon) {
    EXPECT_EQ(NetworkVariableRow(L"nvoSpaceTemp", L"0", L"", true, false),
              (ListRow{L"nvoSpaceTemp", L"NVS\\0", L"NV", L"nvo", L""}));
}

TEST(NetworkVariableRow, InAConfigurationListItHasThePropertyIconWhateverItsDirection) {
    for (const bool output : {false, true}) {
        EXPECT_EQ(NetworkVariableRow(L"nciHeartBeat", L"3", L"60", output, true),
                  (ListRow{L"nciHeartBeat", L"NVS\\3", L"NV", L"cp", L"60"}));
    }
}

TEST(ConfigurationPropertyRow, HasItsPrefixTagAndIcon) {
    EXPECT_EQ(ConfigurationPropertyRow(L"cpDeadBand", L"7", L"0.5"),
              (ListRow{L"cpDeadBand", L"CPS\\7", L"CP", L"cp", L"0.5"}));
}

TEST(ListRow, LongTextsAndAmpersandsStayAsTheyAre) {
    const std::wstring longValue(10000, L'x');
    const ListRow row = NetworkVariableRow(L"a && b & c", L"1", longValue, true, false);
    EXPECT_EQ(row.text, L"a && b & c");
    EXPECT_EQ(row.value, longValue);
}

TEST(ListRow, SameItemTwiceGivesTwoEqualRows) {
    EXPECT_EQ(ConfigurationPropertyRow(L"a", L"1", L"2"),
              ConfigurationPropertyRow(L"a", L"1", L"2"));
    EXPECT_NE(ConfigurationPropertyRow(L"a", L"1", L"2"),
              ConfigurationPropertyRow(L"a", L"1", L"3"));
}

TEST(ItemKey, ComesBackFromBothKindsOfRow) {
    EXPECT_EQ(ItemKey(NetworkVariableRow(L"n", L"12", L"", true, false).key), L"12");
    EXPECT_EQ(ItemKey(ConfigurationPropertyRow(L"n", L"x\\y", L"").key), L"x\\y");
    EXPECT_EQ(ItemKey(ConfigurationPropertyRow(L"n", L"", L"").key), L"");
}

TEST(ItemKey, IsWhatFollowsFourCharactersWhateverTheyAre) {
    EXPECT_EQ(ItemKey(L"abcdef"), L"ef");
    EXPECT_EQ(ItemKey(L"abcd"), L"");
    EXPECT_EQ(ItemKey(L"abc"), L"");
    EXPECT_EQ(ItemKey(L""), L"");
}

TEST(IconIndex, IsThePlaceInTheImageList) {
    EXPECT_EQ(IconIndex(L"nvi"), 0);
    EXPECT_EQ(IconIndex(L"nvo"), 6);
    EXPECT_EQ(IconIndex(L"cp"), 7);
    EXPECT_EQ(IconIndex(L"ledoff"), 9);
    EXPECT_EQ(IconIndex(L"ledon"), 12);
    EXPECT_EQ(IconIndex(L"Down_off"), 13);
    EXPECT_EQ(IconIndex(L"Mode_on"), 22);
}

TEST(IconIndex, UnknownKeyHasNone) {
    EXPECT_EQ(IconIndex(L""), -1);
    EXPECT_EQ(IconIndex(L"NVI"), -1);
    EXPECT_EQ(IconIndex(L"Mode"), -1);
}

TEST(IconIndex, EveryImageKeyIsThereOnce) {
    const std::set<std::wstring_view> keys(kImageKeys.begin(), kImageKeys.end());
    EXPECT_EQ(keys.size(), 23u);
    EXPECT_EQ(keys.count(L""), 0u);
}

TEST(IconIndex, EveryRowHasAnImage) {
    EXPECT_EQ(IconIndex(NetworkVariableRow(L"", L"", L"", false, false).icon), 0);
    EXPECT_EQ(IconIndex(NetworkVariableRow(L"", L"", L"", true, false).icon), 6);
    EXPECT_EQ(IconIndex(ConfigurationPropertyRow(L"", L"", L"").icon), 7);
}

TEST(RowsAsText, IsALinePerRowWithoutHeader) {
    const std::vector rows{NetworkVariableRow(L"nviSetpoint", L"1", L"21,5", false, false),
                           ConfigurationPropertyRow(L"cpDeadBand", L"7", L"")};
    EXPECT_EQ(RowsAsText(rows), L"nviSetpoint\t21,5\r\ncpDeadBand\t\r\n");
}

TEST(RowsAsText, NoRowsGiveNoText) {
    EXPECT_EQ(RowsAsText({}), L"");
}

TEST(RowsAsText, TabsLineBreaksAndNulInsideATextBecomeBlanks) {
    const std::wstring value(L"1\r\n2\0\u2028\v3", 8);
    const std::vector rows{NetworkVariableRow(L"\ta\tb", L"1", value, false, false)};
    EXPECT_EQ(RowsAsText(rows), L" a b\t1  2   3\r\n");
}

TEST(RowsAsText, OtherCharactersStay) {
    const std::vector rows{ConfigurationPropertyRow(L"T\u00E4t & \"x\"", L"1", L"20 \u00B0C")};
    EXPECT_EQ(RowsAsText(rows), L"T\u00E4t & \"x\"\t20 \u00B0C\r\n");
}

}  // namespace
}  // namespace quillon
