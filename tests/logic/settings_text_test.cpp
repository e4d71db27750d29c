#include "plugin/settings_text.h"

#include <gtest/gtest.h>

#include "plugin/number_text.h"

namespace quillon {
namespace {

TEST(SettingsValue, NotFoundIsEmptyAlsoWhenTheKeyHoldsIt) {
    EXPECT_EQ(SettingsValue(L"Not Found"), L"");
    EXPECT_EQ(SettingsValue(L"not found"), L"not found");
    EXPECT_EQ(SettingsValue(L"Not Found "), L"Not Found ");
}

TEST(SettingsValue, SlashStartsACommentAndTrimsWhatIsLeft) {
    EXPECT_EQ(SettingsValue(L"5 / five seconds"), L"5");
    EXPECT_EQ(SettingsValue(L"  a b  /x/y"), L"a b");
    EXPECT_EQ(SettingsValue(L"Not Found / x"), L"Not Found");
}

TEST(SettingsValue, WithoutCommentItIsNotTrimmed) {
    EXPECT_EQ(SettingsValue(L"  5  "), L"  5  ");
    EXPECT_EQ(SettingsValue(L"   "), L"   ");
    EXPECT_EQ(SettingsValue(L""), L"");
}

TEST(SettingsValue, NothingButACommentIsEmpty) {
    EXPECT_EQ(SettingsValue(L"/ off"), L"");
    EXPECT_EQ(SettingsValue(L"   / off"), L"");
}

TEST(SettingsValue, OnlySpacesAreTrimmed) {
    EXPECT_EQ(SettingsValue(L" \t5\t /"), L"\t5\t");
}

TEST(SettingsValue, CommentedNumberCountsAsItsNumber) {
    EXPECT_EQ(LenientNumber(SettingsValue(L"1 / hide the download")), 1);
}

TEST(SettingsFileName, IsTheProgramIdWithItsExtension) {
    EXPECT_EQ(SettingsFileName(L"9FFFFF0512040410"), L"9FFFFF0512040410.ini");
    EXPECT_EQ(SettingsFileName(L"a.b"), L"a.b.ini");
    EXPECT_EQ(SettingsFileName(L"Gr\u00F6\u00DFe"), L"Gr\u00F6\u00DFe.ini");
}

TEST(SettingsFileName, EmptyProgramIdGivesTheBareExtension) {
    EXPECT_EQ(SettingsFileName(L""), L".ini");
}

TEST(SettingsFileName, IdThatLeadsElsewhereNamesNoFile) {
    for (const wchar_t* id : {L"..", L".", L"..\\x", L"../x", L"C:x", L"C:\\x", L"\\\\host\\share",
                              L"\\x", L"/x", L"x:stream", L"...", L"x\\", L"x/y"}) {
        EXPECT_EQ(SettingsFileName(id), std::nullopt) << id;
    }
}

TEST(SettingsFileName, CharactersThatNoNameMayHoldNameNoFile) {
    for (const wchar_t* id :
         {L"a*", L"a?", L"\"a\"", L"<a", L"a>", L"a|b", L"a\tb", L"a\r\n", L"a\x7F", L"a\x1F"}) {
        EXPECT_EQ(SettingsFileName(id), std::nullopt) << id;
    }
    EXPECT_EQ(SettingsFileName(std::wstring(L"a\0b", 3)), std::nullopt);
}

TEST(SettingsFileName, TrailingDotOrBlankNamesNoFile) {
    EXPECT_EQ(SettingsFileName(L"a."), std::nullopt);
    EXPECT_EQ(SettingsFileName(L"a "), std::nullopt);
    EXPECT_EQ(SettingsFileName(L" "), std::nullopt);
}

TEST(SettingsFileName, DeviceNamesNameNoFile) {
    for (const wchar_t* id :
         {L"CON", L"con", L"Prn", L"AUX", L"nul", L"COM1", L"com9", L"LPT5", L"NUL.txt", L"con.a.b",
          L"COM1 .x", L" CON", L"LPT\u00B9", L"CONIN$", L"conout$.x"}) {
        EXPECT_EQ(SettingsFileName(id), std::nullopt) << id;
    }
}

TEST(SettingsFileName, NamesThatOnlyBeginLikeADeviceAreFiles) {
    for (const wchar_t* id : {L"CONSOLE", L"COM", L"COM0", L"COM10", L"LPTX", L"xNUL", L"a.CON"}) {
        EXPECT_EQ(SettingsFileName(id), std::wstring(id) + L".ini");
    }
}

TEST(CalibrationFileName, IsTheNeuronIdWithItsExtensionAndStaysInItsFolder) {
    EXPECT_EQ(CalibrationFileName(L"0000000000A1"), L"0000000000A1.tca");
    for (const wchar_t* id : {L"..", L"..\\A1", L"C:A1", L"\\\\share\\A1", L"A/1", L"NUL"})
        EXPECT_EQ(CalibrationFileName(id), std::nullopt) << id;
}

TEST(NamesFileInside, PlainNamesAndPathsThroughFoldersInThere) {
    for (const wchar_t* name : {L"room.zpl", L"labels\\room.zpl", L"labels/room.zpl", L"a.b.c",
                                L"...x", L"x..y\\z", L"Gr\u00F6\u00DFe.epl", L"COM10"}) {
        EXPECT_TRUE(NamesFileInside(name)) << name;
    }
}

TEST(NamesFileInside, NothingThatClimbsOutOrNamesAnotherThing) {
    for (const wchar_t* name : {L"",
                                L"..",
                                L".",
                                L"..\\room.zpl",
                                L"labels\\..\\..\\x",
                                L"labels/../../x",
                                L"\\x",
                                L"/x",
                                L"\\\\host\\share\\x",
                                L"C:x",
                                L"C:\\x",
                                L"x:stream",
                                L"labels\\",
                                L"labels\\\\x",
                                L".. \\x",
                                L"...\\x",
                                L"x ",
                                L"x.",
                                L"a*",
                                L"a?b",
                                L"a|b",
                                L"a\tb",
                                L"NUL",
                                L"COM1",
                                L"labels\\COM1.zpl",
                                L"con\\x"}) {
        EXPECT_FALSE(NamesFileInside(name)) << name;
    }
}

}  // namespace
}  // namespace quillon
