#include "editors/text_field.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(TextField, SpaceIsTypedAsUnderscore) {
    EXPECT_EQ(OnTextKey(L' '), (KeyAnswer{.act = KeyAct::kPass, .key = L'_'}));
}

TEST(TextField, OtherCharactersAreTheTextBoxs) {
    for (const wchar_t key : std::wstring(L"aZ0-,;._\x8\xe8\x20ac"))
        EXPECT_EQ(OnTextKey(key), (KeyAnswer{.act = KeyAct::kPass, .key = key}));
}

TEST(TextField, EnterAcceptsAndEscapeRestores) {
    EXPECT_EQ(OnTextKey(kEnter).act, KeyAct::kAccept);
    EXPECT_EQ(OnTextKey(kEscape).act, KeyAct::kRestore);
}

TEST(TextField, DeletingAWordTypesNothing) {
    EXPECT_EQ(OnTextKey(127).act, KeyAct::kDrop);
}

TEST(TextField, PastedTextPassesTheSameRules) {
    EXPECT_EQ(PastedText(L"Room 101 "), L"Room_101_");
    EXPECT_EQ(PastedText(L"first\r\nsecond"), L"first");
    EXPECT_EQ(PastedText(L"\nx"), L"");
}

TEST(TextField, ThirtyCharactersAreNotTooLong) {
    EXPECT_FALSE(IsTooLong(std::wstring(30, L'x')));
    EXPECT_TRUE(IsTooLong(std::wstring(31, L'x')));
    EXPECT_EQ(Shortened(std::wstring(40, L'x')), std::wstring(30, L'x'));
    EXPECT_EQ(Shortened(L"abc"), L"abc");
}

TEST(TrimBlanks, TakesSpacesAtBothEndsAlone) {
    EXPECT_EQ(TrimBlanks(L"  a b  "), L"a b");
    EXPECT_EQ(TrimBlanks(L"   "), L"");
    EXPECT_EQ(TrimBlanks(L""), L"");
    EXPECT_EQ(TrimBlanks(L"\ta\t"), L"\ta\t");
}

}  // namespace
}  // namespace quillon
