#include "component/profile_support.h"
#include "model/CProfile.h"
#include "support/test_window.h"
#include "ui/pump.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using test::FileText;
using test::TestWindow;

// Loads during which something happens: the file is one of a few records, and messages are handled
// before each of them.
class ReentryTest : public test::ProfileTest {
protected:
    // As the host calls: with nothing but the object's own hold on itself.
    bool LoadBare() {
        _CProfile* bare = profile.Get();
        _CDevice* given = device.Get();
        VARIANT_BOOL loaded = VARIANT_FALSE;
        EXPECT_EQ(bare->FriendSet(Bstr(file).Get(), &given, &loaded), S_OK);
        return loaded != VARIANT_FALSE;
    }

    std::wstring file = folder.Write(
        L"few.app", FileText({.lists = "<NVs><a/><b/></NVs>"
                                       "<CPs><c><RawValue>01</RawValue></c><d/></CPs>"}));
};

TEST_F(ReentryTest, PostedMessageIsHandledDuringTheLoad) {
    std::wstring seen;
    const TestWindow window([&](UINT) { seen = NVs() + CPs(); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_EQ(seen, L"nonenone") << "before the first record";
}

TEST_F(ReentryTest, MessagesAreHandledBeforeEachRecordAndEachValue) {
    std::vector<std::wstring> seen;
    int handled = 0;
    TestWindow* self = nullptr;
    // It never comes to an end of its own, so each pump handles all that one pump may.
    TestWindow window([&](UINT) {
        ++handled;
        std::wstring state = NVs() + L"/" + CPs();
        if (seen.empty() || seen.back() != state) seen.push_back(std::move(state));
        self->Post();
    });
    self = &window;
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_EQ(seen, (std::vector<std::wstring>{L"none/none", L"a /none", L"a b /none", L"a b /c ",
                                               L"a b /c d "}));
    EXPECT_EQ(handled, 6 * ui::kMessagesAtOnce);
}

TEST_F(ReentryTest, ProfileWhoseLastReferenceGoesDuringTheLoadEndsAfterIt) {
    const TestWindow window([&](UINT) { profile.Reset(); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_FALSE(profile);
    EXPECT_EQ(com::ModuleLocks(), 1) << "only the device is left";
}

TEST_F(ReentryTest, DeviceWhoseLastReferenceGoesDuringTheLoadIsKeptByTheProfile) {
    const TestWindow window([&](UINT) { device.Reset(); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_EQ(NVs() + CPs(), L"a b c d ");
    EXPECT_EQ(test::g_probes, 1);
}

TEST_F(ReentryTest, ListHeldByAnotherDuringTheLoadIsComplete) {
    Ptr<_CNVs> nvs;
    const TestWindow window([&](UINT) { profile->get_NVs(nvs.Out()); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_FALSE(nvs) << "it was asked for before the first record";
}

TEST_F(ReentryTest, LoadStartedAgainFromWithinReadsNoRecordTwice) {
    bool again = false;
    const TestWindow window([&](UINT) {
        if (std::exchange(again, true)) return;
        EXPECT_TRUE(LoadBare());
    });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_TRUE(again);
    EXPECT_EQ(NVs() + CPs(), L"a b c d ");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"01");
}

TEST_F(ReentryTest, LoadStartedAgainWithoutADeviceLeavesTheFirstItsOwn) {
    bool again = false;
    const TestWindow window([&](UINT) {
        if (std::exchange(again, true)) return;
        boxes().Answer(IDOK);
        EXPECT_FALSE(profile->FriendSet(folder / L"none.app", nullptr));
    });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_TRUE(again);
    EXPECT_EQ(NVs() + CPs(), L"a b c d ");
}

TEST_F(ReentryTest, LoadOfAnotherProfileFromWithinDisturbsNeither) {
    const Ptr<CProfile> other = com::Make<CProfile>();
    const TestWindow window([&](UINT) { EXPECT_TRUE(other->FriendSet(file, device.Get())); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_EQ(NVs() + CPs(), L"a b c d ");
    EXPECT_EQ(Names(other->NVs()) + Names(other->CPs()), L"a b c d ");
}

TEST_F(ReentryTest, RequestToQuitDuringTheLoadReachesTheHostsLoop) {
    const TestWindow window([](UINT) { PostQuitMessage(7); });
    window.Post();
    EXPECT_TRUE(LoadBare());
    EXPECT_EQ(NVs() + CPs(), L"a b c d ");
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(ReentryTest, ProfileWhoseLastReferenceGoesWhileTheMessageIsUpEndsAfterIt) {
    file = folder / L"none.app";
    boxes().Answer(IDOK, [&] { profile.Reset(); });
    EXPECT_FALSE(LoadBare());
    EXPECT_EQ(com::ModuleLocks(), 1) << "only the device is left";
}

}  // namespace
}  // namespace quillon
