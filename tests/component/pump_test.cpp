#include "ui/pump.h"

#include <vector>

#include "support/component_fixture.h"
#include "support/test_window.h"

namespace quillon {
namespace {

using test::TestWindow;

using PumpTest = test::ComponentTest;

TEST_F(PumpTest, PendingMessagesAreHandledInOrder) {
    std::vector<UINT> seen;
    const TestWindow window([&](UINT message) { seen.push_back(message); });
    for (const UINT message : {WM_APP + 1, WM_APP + 3, WM_APP + 2}) window.Post(message);
    ui::PumpMessages();
    EXPECT_EQ(seen, (std::vector<UINT>{WM_APP + 1, WM_APP + 3, WM_APP + 2}));
}

TEST_F(PumpTest, EmptyQueueIsNotWaitedFor) {
    std::vector<UINT> seen;
    const TestWindow window([&](UINT message) { seen.push_back(message); });
    ui::PumpMessages();
    window.Post(WM_APP + 1);
    ui::PumpMessages();
    ui::PumpMessages();
    EXPECT_EQ(seen, (std::vector<UINT>{WM_APP + 1}));
}

TEST_F(PumpTest, RequestToQuitIsPostedAgainWithItsCode) {
    PostQuitMessage(42);
    ui::PumpMessages();
    ui::PumpMessages();
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 42u);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(PumpTest, WindowThatKeepsPostingToItselfDoesNotHoldTheLoop) {
    int handled = 0;
    TestWindow* self = nullptr;
    TestWindow window([&](UINT) {
        ++handled;
        self->Post();
    });
    self = &window;
    window.Post();
    ui::PumpMessages();
    EXPECT_GE(handled, ui::kMessagesAtOnce / 2);
    EXPECT_LE(handled, ui::kMessagesAtOnce);
}

TEST_F(PumpTest, MessageToTheThreadItselfIsTakenAway) {
    PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
    ui::PumpMessages();
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
}

TEST_F(PumpTest, PumpWithinAPumpHandlesTheRest) {
    std::vector<UINT> seen;
    const TestWindow window([&](UINT message) {
        seen.push_back(message);
        if (message == WM_APP) ui::PumpMessages();
        seen.push_back(message + 100);
    });
    window.Post(WM_APP);
    window.Post(WM_APP + 1);
    ui::PumpMessages();
    EXPECT_EQ(seen, (std::vector<UINT>{WM_APP, WM_APP + 1, WM_APP + 101, WM_APP + 100}));
}

}  // namespace
}  // namespace quillon
