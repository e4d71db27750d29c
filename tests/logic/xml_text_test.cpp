#include "model/xml_text.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

TEST(IsXmlName, LettersDigitsAndPunctuationMakeAName) {
    for (const wchar_t* name : {L"nviSpaceTemp", L"a", L"_x", L"nci_1", L"A-b.c", L"x\u00B7",
                                L"Temp\u00E9rature", L"\u4E2D\u6587", L"e\u0301", L"x\u0660"}) {
        EXPECT_TRUE(IsXmlName(name)) << name;
    }
}

TEST(IsXmlName, EmptyTextIsNone) {
    EXPECT_FALSE(IsXmlName(L""));
}

TEST(IsXmlName, DigitsAndPunctuationCannotBeginAName) {
    for (const wchar_t* name : {L"1a", L"-a", L".a", L"\u0301a", L"\u0660a", L"\u00B7"}) {
        EXPECT_FALSE(IsXmlName(name)) << name;
    }
}

TEST(IsXmlName, OtherCharactersMakeNone) {
    for (const wchar_t* name : {L"a b", L"a:b", L":", L"a/b", L"a[1]", L"a<", L"a&b", L"a\n", L"a#",
                                L"\u00D7", L"a\u00F7", L"a\u2028", L"a\uFFFE", L"\uFB00"}) {
        EXPECT_FALSE(IsXmlName(name)) << name;
    }
    EXPECT_FALSE(IsXmlName(std::wstring(L"a\0b", 3)));
}

TEST(IsXmlName, CharactersBeyondTheBasicPlaneMakeNone) {
    EXPECT_FALSE(IsXmlName(L"\U00010400"));
    EXPECT_FALSE(IsXmlName(L"a\U00020000"));
    EXPECT_FALSE(IsXmlName(std::wstring(1, static_cast<wchar_t>(0xD800))));
}

TEST(IsXmlName, LettersOfTheLaterEditionsOnlyMakeNone) {
    EXPECT_FALSE(IsXmlName(L"\u0132"));
    EXPECT_FALSE(IsXmlName(L"a\u1E9E"));
}

TEST(XmlCharacters, KeepsOrdinaryText) {
    const std::wstring text = L" a<b>&\"'\t\r\n\u00E9\u20AC\uFFFD\uE000\x7F";
    EXPECT_EQ(XmlCharacters(text), text);
    EXPECT_EQ(XmlCharacters(L""), L"");
}

TEST(XmlCharacters, DropsControls) {
    EXPECT_EQ(XmlCharacters(std::wstring(L"a\0b\x01\x08\x0B\x0C\x0E\x1F"
                                         L"c",
                                         10)),
              L"abc");
}

TEST(XmlCharacters, DropsTheTwoNonCharactersOfTheBasicPlane) {
    EXPECT_EQ(XmlCharacters(L"a\uFFFEb\uFFFFc"), L"abc");
}

TEST(XmlCharacters, KeepsCharactersBeyondTheBasicPlane) {
    const std::wstring text = L"a\U0001F600b\U0010FFFF";
    EXPECT_EQ(XmlCharacters(text), text);
}

TEST(XmlCharacters, DropsSurrogatesWithoutPartner) {
    const auto high = static_cast<wchar_t>(0xD83D);
    const auto low = static_cast<wchar_t>(0xDE00);
    EXPECT_EQ(XmlCharacters(std::wstring{L'a', high}), L"a");
    EXPECT_EQ(XmlCharacters(std::wstring{low, L'a'}), L"a");
    EXPECT_EQ(XmlCharacters(std::wstring{high, L'a', low}), L"a");
    EXPECT_EQ(XmlCharacters(std::wstring{low, high}), L"");
}

TEST(XmlCharacters, DropsALoneSurrogateBesideAPair) {
    if constexpr (sizeof(wchar_t) > 2) {
        GTEST_SKIP() << "wide characters hold no pairs here";
    } else {
        const auto high = static_cast<wchar_t>(0xD83D);
        const auto low = static_cast<wchar_t>(0xDE00);
        EXPECT_EQ(XmlCharacters(std::wstring{high, high, low, low}), (std::wstring{high, low}));
    }
}

}  // namespace
}  // namespace quillon
