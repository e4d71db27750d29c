#include "editors/enumeration.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

const wchar_t* const kModes = L"0,Auto;1,Off;2,On;";

TEST(Enumeration, ValueIsFoundByItsDecimalText) {
    const Enumeration modes(kModes);
    EXPECT_EQ(modes.EntryOf(L"1"), 1u);
    for (const wchar_t* value : {L"", L"01", L" 1", L"1.0", L"7", L"Off", L"?"})
        EXPECT_EQ(modes.EntryOf(value), std::nullopt) << value;
    EXPECT_EQ(Enumeration(L"5,a;5,b;").EntryOf(L"5"), 0u) << "the first of several";
    EXPECT_EQ(Enumeration(L"-1,none;").EntryOf(L"-1"), 0u);
}

TEST(Enumeration, PickedEntryGivesItsNumber) {
    Enumeration modes(kModes);
    modes.Pick(2);
    EXPECT_EQ(modes.TextToWrite(2), L"2");
}

TEST(Enumeration, WithoutAPickTheShownTextIsLookedUp) {
    EXPECT_EQ(Enumeration(kModes).TextToWrite(1), L"1");
    EXPECT_EQ(Enumeration(L"3,same;4,same;").TextToWrite(1), L"3");
}

TEST(Enumeration, PickOfAnotherEntryThanTheShownOneIsNoPick) {
    Enumeration twins(L"3,same;4,same;5,x;");
    twins.Pick(2);
    EXPECT_EQ(twins.TextToWrite(1), L"3");
}

TEST(Enumeration, PickTellsEntriesOfOneLabelApart) {
    Enumeration twins(L"3,same;4,same;");
    twins.Pick(1);
    EXPECT_EQ(twins.TextToWrite(1), L"4");
}

TEST(Enumeration, EntryNumberedMinusOneFallsBackToItsLabel) {
    Enumeration modes(L"9,none;-1,none;");
    modes.Pick(1);
    EXPECT_EQ(modes.TextToWrite(1), L"9");
    Enumeration alone(L"-1,none;");
    alone.Pick(0);
    EXPECT_EQ(alone.TextToWrite(0), L"-1");
}

TEST(Enumeration, NothingShownWritesMinusOne) {
    EXPECT_EQ(Enumeration(kModes).TextToWrite(std::nullopt), L"-1");
    EXPECT_EQ(Enumeration(L"").TextToWrite(std::nullopt), L"-1");
    EXPECT_EQ(Enumeration(L"5,;").TextToWrite(std::nullopt), L"5")
        << "an empty label is the text of an empty box";
}

}  // namespace
}  // namespace quillon
