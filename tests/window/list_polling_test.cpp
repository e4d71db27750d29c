// The Test list's timer: one row a tick, rewritten only when it changed.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class ListPolling : public WindowTest {
protected:
    static HWND Monitor(const Window& window) { return PageItem(*window, kTabTest, IDC_LVMONITOR); }
    static Lines LookUps() { return Only(Host().Log(), L"Points.Item"); }
    static void TickTimes(const Window& window, int times) {
        for (int tick = 0; tick < times; ++tick) window->Tick(Timer::kTmrNvs);
    }
};

// Counts what changes a list or has it drawn again.
class ListChanges {
public:
    explicit ListChanges(HWND list) : m_list(list) {
        s_count = 0;
        s_before = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage)));
    }
    ListChanges(const ListChanges&) = delete;
    ListChanges& operator=(const ListChanges&) = delete;
    ~ListChanges() {
        SetWindowLongPtrW(m_list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(s_before));
    }
    int Count() const { return s_count; }

private:
    static LRESULT CALLBACK OnMessage(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
        const UINT kChanges[] = {LVM_SETITEMTEXTW, LVM_SETITEMW,    LVM_INSERTITEMW, LVM_DELETEITEM,
                                 LVM_UPDATE,       LVM_REDRAWITEMS, WM_SETREDRAW,    WM_PAINT};
        for (const UINT change : kChanges)
            if (message == change) ++s_count;
        return CallWindowProcW(s_before, list, message, wParam, lParam);
    }

    static inline int s_count = 0;
    static inline WNDPROC s_before = nullptr;
    HWND m_list;
};

TEST_F(ListPolling, RowsAreReadInTurnAndFromTheFirstAgain) {
    const Window window = Open();
    TickTimes(window, 5);
    EXPECT_EQ(LookUps(), (Lines{L"Points.Item(\"0\")", L"Points.Item(\"1\")", L"Points.Item(\"3\")",
                                L"Points.Item(\"0\")", L"Points.Item(\"1\")"}));
}

TEST_F(ListPolling, EmptyListReadsNothing) {
    WriteSettings("");
    const Window window = Open();
    TickTimes(window, 3);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(ListPolling, ChangedValueRewritesItsRowAlone) {
    const Window window = Open();
    const auto before = Rows(Monitor(window));
    PutValue(kLeft, 0, L"25");
    TickTimes(window, 3);
    auto expected = before;
    expected[0].value = L"25.00 degrees Celsius";
    EXPECT_EQ(Rows(Monitor(window)), expected);
}

TEST_F(ListPolling, UnchangedValueTouchesNothing) {
    const Window window = Open();
    window->SelectTab(kTabTest);
    TickTimes(window, 3);
    UpdateWindow(Monitor(window));
    const ListChanges changes(Monitor(window));
    TickTimes(window, 6);
    UpdateWindow(Monitor(window));
    EXPECT_EQ(changes.Count(), 0);
    Host().Answer(L"Point.FormattedValue.get", L"other");
    TickTimes(window, 1);
    EXPECT_GT(changes.Count(), 0);
}

TEST_F(ListPolling, InvalidValueShowsInvalid) {
    const Window window = Open();
    Host().Answer(L"Point.Value.get", L"");
    Host().Answer(L"Type.InvalidValue.get", L"");
    TickTimes(window, 1);
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"Invalid");
}

TEST_F(ListPolling, FailingReadLeavesItsRowAndTheNextTickGoesOn) {
    const Window window = Open();
    const auto before = Rows(Monitor(window));
    Host().Answer(L"Point.FormattedValue.get", L"other");
    Host().Fail(L"Point.Value.get");
    TickTimes(window, 2);
    const auto after = Rows(Monitor(window));
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[1].value, L"other");
}

TEST_F(ListPolling, OtherListsKeepTheValuesReadWhenTheyWereBuilt) {
    const Window window = Open();
    window->SelectTab(kTabTune);
    const HWND kOthers[] = {PageItem(*window, kTabTune, IDC_LVCPS),
                            PageItem(*window, kTabTune, IDC_LVCOV),
                            PageItem(*window, kTabSetup, IDC_LVADVANCEDCPS)};
    std::vector<std::vector<ShownRow>> before;
    for (const HWND list : kOthers) before.push_back(Rows(list));
    Host().Answer(L"Point.FormattedValue.get", L"other");
    TickTimes(window, 8);
    EXPECT_EQ(LookUps().size(), 8u);
    EXPECT_EQ(CellText(Monitor(window), 2, 1), L"other");
    for (std::size_t list = 0; list < before.size(); ++list)
        EXPECT_EQ(Rows(kOthers[list]), before[list]);
}

TEST_F(ListPolling, TwoEqualEntriesAreTwoRowsReadApart) {
    WriteSettings(Section("TestNVIs", {"1", "1"}));
    const Window window = Open();
    ASSERT_EQ(Rows(Monitor(window)).size(), 2u);
    Host().Answer(L"Point.FormattedValue.get", L"other");
    TickTimes(window, 2);
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"other");
    EXPECT_EQ(CellText(Monitor(window), 1, 1), L"other");
}

TEST_F(ListPolling, LongAndAmpersandValuesAreShownAsTheyAre) {
    const Window window = Open();
    for (const std::wstring& text : {std::wstring(10000, L'y'), std::wstring(L"Fan & Coil && 1")}) {
        Host().Answer(L"Point.FormattedValue.get", text);
        TickTimes(window, 3);
        for (int row = 0; row < 3; ++row) EXPECT_EQ(CellText(Monitor(window), row, 1), text);
    }
}

TEST_F(ListPolling, ValueWrittenWhileTheListIsRebuiltInsideTheReadDoesNoHarm) {
    const Window window = Open();
    WriteSettings("");
    Host().Call(L"Point.Value.get", 1, [&] { window->Update(); });
    TickTimes(window, 1);
    EXPECT_TRUE(Rows(Monitor(window)).empty());
    TickTimes(window, 2);
}

}  // namespace
}  // namespace quillon::test
