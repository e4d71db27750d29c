#include "ui/message_box.h"

#include "support/component_fixture.h"
#include "support/test_window.h"

namespace quillon {
namespace {

using test::Icon;
using test::TestWindow;

using MessageBoxTest = test::ComponentTest;

TEST_F(MessageBoxTest, GivesTheButtonThatWasPressed) {
    for (const int button : {IDYES, IDNO, IDCANCEL}) {
        boxes().Answer(button);
        EXPECT_EQ(ui::ShowMessage(L"Really?", MB_YESNOCANCEL), button);
    }
    for (const int button : {IDOK, IDCANCEL}) {
        boxes().Answer(button);
        EXPECT_EQ(ui::ShowMessage(L"Really?", MB_OKCANCEL), button);
    }
    boxes().Answer(IDOK);
    EXPECT_EQ(ui::ShowMessage(L"Done", MB_OK), IDOK);
}

TEST_F(MessageBoxTest, ShowsTextTitleButtonsAndIcon) {
    boxes().Answer(IDNO);
    ui::ShowMessage(L"Two\nlines \x00E9", MB_YESNO | MB_ICONQUESTION, L"Own title");
    const test::Box& box = boxes().Seen().back();
    EXPECT_EQ(box.text, L"Two\nlines \x00E9");
    EXPECT_EQ(box.title, L"Own title");
    EXPECT_EQ(box.buttons, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(box.icon, Icon::kQuestion);
}

TEST_F(MessageBoxTest, TitleIsTheProductsUnlessGiven) {
    boxes().Answer(IDOK);
    ui::ShowMessage(L"x", MB_OK);
    EXPECT_EQ(boxes().Seen().back().title, L"Quillon");
    EXPECT_EQ(boxes().Seen().back().icon, Icon::kNone);
}

TEST_F(MessageBoxTest, ActiveWindowOwnsItAndCannotBeUsedMeanwhile) {
    const TestWindow window;
    ShowWindow(window.Get(), SW_SHOW);
    SetActiveWindow(window.Get());
    ASSERT_EQ(GetActiveWindow(), window.Get());
    boxes().Answer(IDOK, [&] { EXPECT_FALSE(IsWindowEnabled(window.Get())); });
    ui::ShowMessage(L"x", MB_OK);
    EXPECT_TRUE(boxes().Seen().back().hadOwner);
    EXPECT_TRUE(IsWindowEnabled(window.Get()));
}

TEST_F(MessageBoxTest, WithoutAnActiveWindowEveryWindowOfTheThreadWaits) {
    const TestWindow window;
    ShowWindow(window.Get(), SW_SHOWNA);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    boxes().Answer(IDOK, [&] { EXPECT_FALSE(IsWindowEnabled(window.Get())); });
    ui::ShowMessage(L"x", MB_OK);
    EXPECT_TRUE(IsWindowEnabled(window.Get()));
}

}  // namespace
}  // namespace quillon
