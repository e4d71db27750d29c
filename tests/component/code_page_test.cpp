#include "plugin/code_page.h"

#include "com/error.h"
#include "support/component_fixture.h"

namespace quillon {
namespace {

constexpr unsigned kWestern = 1252;
constexpr unsigned kUtf8 = CP_UTF8;
constexpr unsigned kGb18030 = 54936;

class CodePage : public test::ComponentTest {};

TEST_F(CodePage, WesternHasItsLettersAndReplacesOthers) {
    bool lossy = true;
    EXPECT_EQ(Narrow(L"Caf\u00E9", &lossy, kWestern), "Caf\xE9");
    EXPECT_FALSE(lossy);
    EXPECT_EQ(Narrow(L"a\u0416", &lossy, kWestern), "a?");
    EXPECT_TRUE(lossy);
    EXPECT_EQ(Widen("Caf\xE9", kWestern), L"Caf\u00E9");
}

TEST_F(CodePage, LookAlikeOfASeparatorIsReplaced) {
    EXPECT_EQ(Narrow(L"a\u2216b", nullptr, kWestern), "a?b") << "a set minus, no backslash";
}

TEST_F(CodePage, ProcessWhoseCodePageIsUtf8LosesNothing) {
    bool lossy = true;
    EXPECT_EQ(Narrow(L"[Settings] \u00E9\u0416", &lossy, kUtf8), "[Settings] \xC3\xA9\xD0\x96");
    EXPECT_FALSE(lossy);
    EXPECT_EQ(Widen("\xC3\xA9\xD0\x96", kUtf8), L"\u00E9\u0416");
}

TEST_F(CodePage, HalfASurrogatePairIsLostInUtf8) {
    bool lossy = false;
    Narrow(std::wstring(1, wchar_t{0xD800}), &lossy, kUtf8);
    EXPECT_TRUE(lossy);
}

TEST_F(CodePage, CodePageThatTakesNoFlagsIsGivenNone) {
    if (!IsValidCodePage(kGb18030)) GTEST_SKIP() << "not installed";
    bool lossy = true;
    EXPECT_EQ(Narrow(L"key", &lossy, kGb18030), "key");
    EXPECT_FALSE(lossy);
}

TEST_F(CodePage, EmptyTextStaysEmpty) {
    EXPECT_EQ(Narrow(L""), "");
    EXPECT_EQ(Widen(""), L"");
}

TEST_F(CodePage, CodePageThatIsNoneIsAFailureNotAnEmptyText) {
    EXPECT_THROW(Narrow(L"key", nullptr, 4711), com::Error);
    EXPECT_THROW(Widen("key", 4711), com::Error);
}

}  // namespace
}  // namespace quillon
