#include "window/view_lists.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "plugin/settings_text.h"

namespace quillon {
namespace {

using Entries = std::vector<std::wstring>;
using Section = std::map<std::wstring, std::wstring>;

Entries ReadSection(const Section& section) {
    return ReadViewEntries([&section](const std::wstring& key) {
        const auto found = section.find(key);
        return SettingsValue(found == section.end() ? kSettingNotFound : found->second);
    });
}

TEST(ViewEntries, ComeInTheOrderOfTheirKeys) {
    EXPECT_EQ(ReadSection({{L"2", L"c"}, {L"0", L"a"}, {L"1", L"b"}}), (Entries{L"a", L"b", L"c"}));
}

TEST(ViewEntries, MissingKeyZeroGivesAnEmptyListEvenWithLaterKeys) {
    EXPECT_EQ(ReadSection({{L"1", L"b"}, {L"2", L"c"}}), Entries{});
}

TEST(ViewEntries, EndAtTheFirstGap) {
    EXPECT_EQ(ReadSection({{L"0", L"a"}, {L"1", L"b"}, {L"3", L"d"}}), (Entries{L"a", L"b"}));
}

TEST(ViewEntries, EmptyValueEndsTheListLikeAMissingKey) {
    EXPECT_EQ(ReadSection({{L"0", L"a"}, {L"1", L""}, {L"2", L"c"}}), (Entries{L"a"}));
}

TEST(ViewEntries, ValueThatIsOnlyACommentEndsTheList) {
    EXPECT_EQ(ReadSection({{L"0", L"a"}, {L"1", L"/ none"}, {L"2", L"c"}}), (Entries{L"a"}));
}

TEST(ViewEntries, BlankValueIsAnEntry) {
    EXPECT_EQ(ReadSection({{L"0", L" "}, {L"1", L"b"}}), (Entries{L" ", L"b"}));
}

TEST(ViewEntries, KeysHaveNoLeadingZerosAndAreAskedUpToTheFirstEmptyOne) {
    Entries asked;
    ReadViewEntries([&asked](const std::wstring& key) -> std::wstring {
        asked.push_back(key);
        return asked.size() > 11 ? L"" : L"x";
    });
    EXPECT_EQ(asked,
              (Entries{L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9", L"10", L"11"}));
}

TEST(ViewEntries, EqualEntriesAreKeptApart) {
    EXPECT_EQ(ReadSection({{L"0", L"7"}, {L"1", L"7"}}), (Entries{L"7", L"7"}));
}

TEST(ViewEntries, EndlessSectionIsCutAtTheMostEntries) {
    std::int32_t reads = 0;
    const Entries entries = ReadViewEntries([&reads](const std::wstring& key) {
        ++reads;
        return key;
    });
    ASSERT_EQ(entries.size(), 10000u);
    EXPECT_EQ(reads, kMostEntries);
    EXPECT_EQ(entries.back(), L"9999");
}

TEST(ViewEntries, FailureOfTheReaderGoesToTheCaller) {
    const auto fail = [](const std::wstring&) -> std::wstring { throw std::runtime_error("read"); };
    EXPECT_THROW(ReadViewEntries(fail), std::runtime_error);
}

TEST(NumberEntry, IsTheDecimalTextOfTheNumericValue) {
    EXPECT_EQ(NumberEntry(L"12"), L"12");
    EXPECT_EQ(NumberEntry(L" 007 "), L"7");
    EXPECT_EQ(NumberEntry(L"+3"), L"3");
    EXPECT_EQ(NumberEntry(L"-4"), L"-4");
    EXPECT_EQ(NumberEntry(L"5 nvoSpaceTemp"), L"5");
    EXPECT_EQ(NumberEntry(L"&H1F"), L"31");
    EXPECT_EQ(NumberEntry(L"2.5"), L"2");
    EXPECT_EQ(NumberEntry(L"3.5"), L"4");
}

TEST(NumberEntry, TextWithoutANumberIsZero) {
    EXPECT_EQ(NumberEntry(L"nvoSpaceTemp"), L"0");
    EXPECT_EQ(NumberEntry(L" "), L"0");
}

TEST(NumberEntry, NumberOutOfRangeIsLeftOut) {
    EXPECT_EQ(NumberEntry(L"2147483647"), L"2147483647");
    EXPECT_EQ(NumberEntry(L"2147483648"), std::nullopt);
    EXPECT_EQ(NumberEntry(L"-2147483649"), std::nullopt);
    EXPECT_EQ(NumberEntry(L"&H123456789"), std::nullopt);
    EXPECT_EQ(NumberEntry(std::wstring(10000, L'9')), std::nullopt);
}

TEST(EntryNumber, EmptyTagOfAMainViewLabelIsVariableZero) {
    EXPECT_EQ(EntryNumber(L""), 0);
}

TEST(EntryNumber, AgreesWithItsText) {
    EXPECT_EQ(EntryNumber(L"41 / effective set point"), 41);
    EXPECT_EQ(EntryNumber(L"99999999999"), std::nullopt);
}

}  // namespace
}  // namespace quillon
