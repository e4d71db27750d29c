#include "plugin/MMain.h"

#include <array>

#include "plugin/code_page.h"
#include "support/component_fixture.h"
#include "support/temp_folder.h"

namespace quillon {
namespace {

class IniValueTest : public test::ComponentTest {
protected:
    // What a file of one key with this value reads as.
    std::wstring Value(std::string_view value) const {
        const std::wstring path = folder.Write(L"v.ini", "[S]\r\nK=" + std::string(value) + "\r\n");
        return ReadIniValue(path, L"S", L"K");
    }
    std::wstring Read(const wchar_t* section, const wchar_t* key) const {
        return ReadIniValue(file, section, key);
    }

    test::TempFolder folder;
    std::wstring file = folder.Write(L"settings.ini",
                                     "[Settings]\r\nOne=1\r\none=2\r\nEmpty=\r\n"
                                     "Blanks=   \r\nQuotedBlanks=\"   \"\r\n"
                                     "[Other]\r\nOne=other\r\n"
                                     "[Settings]\r\nLate=late\r\n");
};

TEST_F(IniValueTest, ReadsAKeyOfItsSection) {
    EXPECT_EQ(Read(L"Settings", L"One"), L"1") << "the first of several keys counts";
    EXPECT_EQ(Read(L"Other", L"One"), L"other");
    EXPECT_EQ(Read(L"settings", L"ONE"), L"1");
}

TEST_F(IniValueTest, WhatIsMissingReadsAsEmpty) {
    EXPECT_EQ(Read(L"Settings", L"Nothing"), L"");
    EXPECT_EQ(Read(L"Nothing", L"One"), L"");
    EXPECT_EQ(Read(L"Settings", L"Empty"), L"");
    EXPECT_EQ(ReadIniValue(folder / L"none.ini", L"Settings", L"One"), L"");
    EXPECT_EQ(ReadIniValue(folder / L"none\\none.ini", L"Settings", L"One"), L"");
    EXPECT_EQ(ReadIniValue(folder.Path(), L"Settings", L"One"), L"");
}

TEST_F(IniValueTest, SecondSectionOfTheSameNameIsNeverSearched) {
    EXPECT_EQ(Read(L"Settings", L"Late"), L"");
}

TEST_F(IniValueTest, NotFoundIsTheSameAsMissingInThatLetterCaseOnly) {
    EXPECT_EQ(Value("Not Found"), L"");
    EXPECT_EQ(Value("not found"), L"not found");
    EXPECT_EQ(Value("Not Found / x"), L"Not Found");
}

TEST_F(IniValueTest, SlashStartsACommentAndTheRestIsTrimmed) {
    EXPECT_EQ(Value("5 / five seconds"), L"5");
    EXPECT_EQ(Value("1 / hide the download"), L"1");
    EXPECT_EQ(Value("/ off"), L"");
    EXPECT_EQ(Value("a/b/c"), L"a");
    EXPECT_EQ(Value("\"  5  / x\""), L"5");
}

TEST_F(IniValueTest, BlanksSurviveOnlyInQuotesAndWithoutAComment) {
    EXPECT_EQ(Value("\"  5  \""), L"  5  ");
    EXPECT_EQ(Value("  5  "), L"5");
    EXPECT_EQ(Read(L"Settings", L"Blanks"), L"");
    EXPECT_EQ(Read(L"Settings", L"QuotedBlanks"), L"   ");
}

TEST_F(IniValueTest, OneQuotePairIsStripped) {
    EXPECT_EQ(Value("\"text\""), L"text");
    EXPECT_EQ(Value("'text'"), L"text");
    EXPECT_EQ(Value("\"\"text\"\""), L"\"text\"");
    EXPECT_EQ(Value("\"text"), L"\"text");
}

TEST_F(IniValueTest, ValueOfMoreThan4095CharactersIsCut) {
    EXPECT_EQ(Value(std::string(4095, 'x')), std::wstring(4095, L'x'));
    EXPECT_EQ(Value(std::string(4096, 'x')), std::wstring(4095, L'x'));
    EXPECT_EQ(Value(std::string(5000, 'x')), std::wstring(4095, L'x'));
    EXPECT_EQ(Value(std::string(4200, 'x') + " / comment"), std::wstring(4095, L'x'));
}

TEST_F(IniValueTest, EmptyNamesReadAsEmpty) {
    EXPECT_EQ(ReadIniValue(L"", L"Settings", L"One"), L"");
    EXPECT_EQ(Read(L"", L"One"), L"");
    EXPECT_EQ(Read(L"Settings", L""), L"") << "an empty key would list the section";
    const std::wstring nul(1, L'\0');
    EXPECT_EQ(ReadIniValue(file, L"Settings", nul), L"");
    EXPECT_EQ(ReadIniValue(file, nul, L"One"), L"");
}

TEST_F(IniValueTest, WrittenValueReadsBack) {
    WriteIniValue(file, L"Settings", L"One", L"changed");
    WriteIniValue(file, L"New", L"Key", L"value");
    EXPECT_EQ(Read(L"Settings", L"One"), L"changed");
    EXPECT_EQ(Read(L"New", L"Key"), L"value");
    EXPECT_EQ(Read(L"Other", L"One"), L"other");
}

TEST_F(IniValueTest, WritingMakesAMissingFile) {
    WriteIniValue(folder / L"made.ini", L"S", L"K", L"v");
    EXPECT_EQ(ReadIniValue(folder / L"made.ini", L"S", L"K"), L"v");
}

TEST_F(IniValueTest, WritingAnEmptyValueKeepsTheKey) {
    WriteIniValue(file, L"Settings", L"One", L"");
    EXPECT_EQ(Read(L"Settings", L"One"), L"");
    EXPECT_NE(test::ReadBytes(file).find("One="), std::string::npos);
}

TEST_F(IniValueTest, EmptyNamesWriteNothing) {
    const std::string before = test::ReadBytes(file);
    const std::wstring nul(1, L'\0');
    for (const std::wstring& empty : {std::wstring(), nul, nul + L"x"}) {
        WriteIniValue(file, L"Settings", empty, L"v");
        WriteIniValue(file, empty, L"One", L"v");
        WriteIniValue(empty, L"Settings", L"One", L"v");
    }
    EXPECT_EQ(test::ReadBytes(file), before);
}

TEST_F(IniValueTest, WhatCannotBeWrittenIsNotReported) {
    WriteIniValue(folder / L"none\\none.ini", L"S", L"K", L"v");
    EXPECT_FALSE(test::FileExists(folder / L"none\\none.ini"));
}

TEST_F(IniValueTest, CharactersOfTheCodePageComeBack) {
    ASSERT_EQ(GetACP(), 1252u);
    EXPECT_EQ(Value("20 \xB0"
                    "C \x80 \xE9"),
              L"20 \x00B0"
              L"C \x20AC \x00E9");
    WriteIniValue(file, L"Settings", L"One", L"\x00B0\x20AC\x00E9");
    EXPECT_EQ(Read(L"Settings", L"One"), L"\x00B0\x20AC\x00E9");
    EXPECT_NE(test::ReadBytes(file).find("One=\xB0\x80\xE9\r\n"), std::string::npos);
}

TEST_F(IniValueTest, FolderOutsideTheCodePageIsReachedByItsShortPath) {
    const std::wstring place = folder / L"\x0416\x65E5";
    ASSERT_TRUE(CreateDirectoryW(place.c_str(), nullptr));
    test::WriteBytes(place + L"\\a.ini", "[S]\r\nK=v\r\n");
    EXPECT_EQ(ReadIniValue(place + L"\\a.ini", L"S", L"K"), L"v");
    WriteIniValue(place + L"\\a.ini", L"S", L"K", L"w");
    EXPECT_EQ(test::ReadBytes(place + L"\\a.ini"), "[S]\r\nK=w\r\n");
    WriteIniValue(place + L"\\new.ini", L"S", L"K", L"n");
    ASSERT_TRUE(test::FileExists(place + L"\\new.ini")) << "a file that is not there yet, too";
    EXPECT_EQ(ReadIniValue(place + L"\\new.ini", L"S", L"K"), L"n");
}

using CodePageTest = test::ComponentTest;

TEST_F(CodePageTest, EveryByteComesBack) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    EXPECT_EQ(Narrow(Widen(bytes)), bytes);
    EXPECT_EQ(Narrow(L""), "");
    EXPECT_EQ(Widen(""), L"");
}

TEST_F(CodePageTest, CharacterOutsideIsReplacedAndReportedNeverALookAlike) {
    bool lossy = false;
    EXPECT_EQ(Narrow(L"a\x0416", &lossy), "a?");
    EXPECT_TRUE(lossy);
    EXPECT_EQ(Narrow(L"a\x00E9", &lossy), "a\xE9");
    EXPECT_FALSE(lossy);
    // Full-width slash and backslash, division slash, set minus.
    EXPECT_EQ(Narrow(L"\xFF0F\xFF3C\x2215\x2216"), "????");
}

// The machine's separator, put back at the end.
class DecimalTest : public test::ComponentTest {
protected:
    DecimalTest() { GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, old.data(), 8); }
    ~DecimalTest() override { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, old.data()); }

    static void Use(const wchar_t* separator) {
        ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator));
    }

    std::array<wchar_t, 8> old{};
};

TEST_F(DecimalTest, SeparatorIsAskedEachTime) {
    Use(L".");
    EXPECT_EQ(LocalDecimalSeparator(), L".");
    Use(L",");
    EXPECT_EQ(LocalDecimalSeparator(), L",");
}

TEST_F(DecimalTest, SeparatorThatIsNeitherReadsAsADot) {
    Use(L";");
    EXPECT_EQ(LocalDecimalSeparator(), L".");
}

TEST_F(DecimalTest, FirstSeparatorBecomesTheMachines) {
    Use(L",");
    EXPECT_EQ(ToLocalDecimal(L"1.5"), L"1,5");
    EXPECT_EQ(ToLocalDecimal(L"1,5"), L"1,5");
    EXPECT_EQ(ToLocalDecimal(L"1,234.5"), L"1,234,5");
    EXPECT_EQ(ToLocalDecimal(L"1.2.3"), L"1,2.3");
    EXPECT_EQ(ToLocalDecimal(L"12"), L"12");
    EXPECT_EQ(ToLocalDecimal(L""), L"");
    Use(L".");
    EXPECT_EQ(ToLocalDecimal(L"1,5"), L"1.5");
    EXPECT_EQ(ToLocalDecimal(L"1.5"), L"1.5");
}

int g_splashes = 0;
void CountSplash() {
    ++g_splashes;
}

TEST(Main, ProgramShowsTheSplashAndAComponentNothing) {
    g_splashes = 0;
    Main(false, CountSplash);
    EXPECT_EQ(g_splashes, 0);
    Main(true, CountSplash);
    EXPECT_EQ(g_splashes, 1);
}

}  // namespace
}  // namespace quillon
