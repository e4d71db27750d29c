#include "support/component_fixture.h"

#include <algorithm>
#include <functional>

#include "com/module.h"
#include "com/platform.h"
#include "support/plugin_window.h"

namespace quillon::test {
namespace {

class ComEnvironment final : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(OleInitialize(nullptr), S_OK); }
    void TearDown() override { OleUninitialize(); }
};

[[maybe_unused]] const auto* const g_com = ::testing::AddGlobalTestEnvironment(new ComEnvironment);

// What the system makes with a thread's first window and first message box stays for ever.
void MakeWhatStays() {
    static bool made = false;
    if (made) return;
    made = true;
    MessageBoxes boxes;
    boxes.Answer(IDOK);
    MessageBoxW(nullptr, L"first", L"first", MB_OK | MB_ICONSTOP);
}

}  // namespace

ComponentTest::Resources ComponentTest::Count() {
    Resources resources;
    resources.windows =
        static_cast<int>(std::ranges::count_if(ThreadWindows(), std::not_fn(IsSystemWindow)));
    resources.gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    resources.user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return resources;
}

ComponentTest::ComponentTest() {
    MakeWhatStays();
    m_boxes.emplace();
    SetErrorInfo(0, nullptr);
    m_before = Count();
}

ComponentTest::~ComponentTest() {
    EXPECT_EQ(com::ModuleLocks(), 0) << "objects are still alive";
    const Resources after = Count();
    EXPECT_EQ(after.windows, m_before.windows) << "windows are left";
    // Wine counts neither: these two find something on Windows alone.
    EXPECT_LE(after.gdi, m_before.gdi);
    EXPECT_LE(after.user, m_before.user);
    SetErrorInfo(0, nullptr);
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) &&
                 message.message == WM_QUIT)
        << "a message to quit is left";
}

}  // namespace quillon::test
