#include "com/text.h"

#include "support/component_fixture.h"

namespace quillon {
namespace {

using com::Bstr;

using TextTest = test::ComponentTest;

TEST_F(TextTest, EmbeddedNulSurvivesBothWays) {
    const std::wstring text(L"a\0b", 3);
    const Bstr made(text);
    EXPECT_EQ(SysStringLen(made.Get()), 3u);
    EXPECT_EQ(made.Text(), text);
    EXPECT_EQ(com::View(made.Get()), text);
}

TEST_F(TextTest, NullIsAnEmptyText) {
    EXPECT_EQ(com::Text(nullptr), L"");
    EXPECT_EQ(Bstr().View(), L"");
    EXPECT_EQ(Bstr().Get(), nullptr);
}

TEST_F(TextTest, EmptyTextIsARealBstr) {
    const Bstr empty{L""};
    ASSERT_NE(empty.Get(), nullptr);
    EXPECT_EQ(SysStringLen(empty.Get()), 0u);
}

TEST_F(TextTest, DetachAndAdoptHandOver) {
    Bstr first(L"text");
    Bstr second = Bstr::Adopt(first.Detach());
    EXPECT_EQ(first.Get(), nullptr);
    EXPECT_EQ(second.View(), L"text");
    EXPECT_EQ(*second.InOut(), second.Get());
    EXPECT_EQ(*second.Out(), nullptr);
}

TEST_F(TextTest, MovingAndAssigningHandOver) {
    Bstr first(L"one");
    Bstr second(std::move(first));
    EXPECT_EQ(second.View(), L"one");
    second = Bstr(L"two");
    EXPECT_EQ(second.View(), L"two");
}

TEST_F(TextTest, TextThatNoBstrCanHoldIsAMemoryShortage) {
    const wchar_t character = L'x';
    constexpr std::size_t kTooLong = 0x7FFFFFFF;
    // NOLINTNEXTLINE(bugprone-string-constructor): refused before it is looked at
    const std::wstring_view tooLong(&character, kTooLong);
    EXPECT_THROW(com::NewBstr(tooLong), std::bad_alloc);
}

}  // namespace
}  // namespace quillon
