// Values that were not read for long are shown greyed, so that no old one looks new.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class OldValues : public WindowTest {
protected:
    static void Tick(const Window& window, int times = 1) {
        for (int tick = 0; tick < times; ++tick) window->Tick(Timer::kTmrPolling);
    }
    static std::wstring Label(const Window& window, int index) {
        return PageText(*window, kTabMain, IDC_LBLNV_FIRST + index);
    }
    static bool LabelGreyed(const Window& window, int index) {
        return IsLabelGreyed(PageItem(*window, kTabMain, IDC_LBLNV_FIRST + index));
    }
    static bool RowGreyed(const Window& window, int row) {
        return IsRowGreyed(PageItem(*window, kTabTest, IDC_LVMONITOR), row);
    }
};

TEST_F(OldValues, GreyAfterFifteenSilentIntervalsTextsUnchanged) {
    const Window window = Open();
    Tick(window, 5);
    const std::wstring shown = Label(window, 0);
    const auto rows = Rows(PageItem(*window, kTabTest, IDC_LVMONITOR));
    Host().Silence(kLeft, true);
    // The first silent tick only finds it out.
    Tick(window, 1 + 14);
    EXPECT_FALSE(LabelGreyed(window, 0));
    EXPECT_FALSE(RowGreyed(window, 0));
    Tick(window);
    for (int label = 0; label < 5; ++label) EXPECT_TRUE(LabelGreyed(window, label)) << label;
    for (int row = 0; row < 3; ++row) EXPECT_TRUE(RowGreyed(window, row)) << row;
    EXPECT_EQ(Label(window, 0), shown);
    EXPECT_EQ(Rows(PageItem(*window, kTabTest, IDC_LVMONITOR)), rows);
}

TEST_F(OldValues, EachValueIsShownAsUsualAgainWhenItIsRead) {
    const Window window = Open();
    Host().Silence(kLeft, true);
    Tick(window, 20);
    Host().Silence(kLeft, false);
    Tick(window);
    EXPECT_FALSE(LabelGreyed(window, 0));
    EXPECT_TRUE(LabelGreyed(window, 1));
    Tick(window, 4);
    for (int label = 0; label < 5; ++label) EXPECT_FALSE(LabelGreyed(window, label)) << label;
    EXPECT_TRUE(RowGreyed(window, 0));
    window->Tick(Timer::kTmrNvs);
    EXPECT_FALSE(RowGreyed(window, 0));
    EXPECT_TRUE(RowGreyed(window, 1));
}

TEST_F(OldValues, NothingGrowsOldWhileTheDeviceAnswers) {
    const Window window = Open();
    Tick(window, 100);
    for (int label = 0; label < 6; ++label) EXPECT_FALSE(LabelGreyed(window, label)) << label;
    for (int row = 0; row < 3; ++row) EXPECT_FALSE(RowGreyed(window, row)) << row;
}

TEST_F(OldValues, MainViewGreysWhenReadingOneOfItsValuesKeepsFailing) {
    const Window window = Open();
    Tick(window, 5);
    Host().FailAlways(L"Point.Value.get");
    // The first failing tick only finds it out.
    Tick(window, 1 + 14);
    EXPECT_FALSE(LabelGreyed(window, 3));
    Tick(window);
    for (int label = 0; label < 5; ++label) EXPECT_TRUE(LabelGreyed(window, label)) << label;
    for (int row = 0; row < 3; ++row) EXPECT_FALSE(RowGreyed(window, row)) << row;
    Host().Restore();
    Tick(window, 5);
    for (int label = 0; label < 5; ++label) EXPECT_FALSE(LabelGreyed(window, label)) << label;
}

TEST_F(OldValues, SilentDevicesValuesGreyThoughAnotherWindowsDeviceAnswers) {
    const Window left = Open();
    const Window right = Open(kRight);
    Tick(left, 5);
    Host().Silence(kLeft, true);
    const auto tickBoth = [&](int times) {
        for (int tick = 0; tick < times; ++tick) {
            Tick(right);
            Tick(left);
        }
    };
    // The first silent tick only finds it out.
    tickBoth(1 + 14);
    EXPECT_FALSE(LabelGreyed(left, 0));
    tickBoth(1);
    for (int label = 0; label < 5; ++label) {
        EXPECT_TRUE(LabelGreyed(left, label)) << label;
        EXPECT_FALSE(LabelGreyed(right, label)) << label;
    }
    for (int row = 0; row < 3; ++row) EXPECT_TRUE(RowGreyed(left, row)) << row;
}

TEST_F(OldValues, MainViewGreysInFrontOfATagTooLargeForANumber) {
    WriteSettings(Section("MainView", {"1", "99999999999"}));
    const Window window = Open();
    Tick(window);
    const std::wstring shown = Label(window, 0);
    // The first failing tick only finds it out.
    Tick(window, 1 + 14);
    EXPECT_FALSE(LabelGreyed(window, 0));
    Tick(window);
    EXPECT_TRUE(LabelGreyed(window, 0));
    EXPECT_EQ(Label(window, 0), shown);
}

TEST_F(OldValues, RowGreysWhenReadingItKeepsFailing) {
    const Window window = Open();
    const auto tickRows = [&](int times) {
        for (int tick = 0; tick < 3 * times; ++tick) window->Tick(Timer::kTmrNvs);
    };
    Host().FailAlways(L"Point.Value.get");
    tickRows(14);
    EXPECT_FALSE(RowGreyed(window, 0));
    tickRows(1);
    for (int row = 0; row < 3; ++row) EXPECT_TRUE(RowGreyed(window, row)) << row;
    Host().Restore();
    window->Tick(Timer::kTmrNvs);
    EXPECT_FALSE(RowGreyed(window, 0));
    EXPECT_TRUE(RowGreyed(window, 1));
}

TEST_F(OldValues, RestingTicksCountToo) {
    Host().Answer(L"IDevice.State.get", L"06");
    const Window window = Open();
    window->SetFreeze(true);
    Tick(window, 14);
    EXPECT_FALSE(LabelGreyed(window, 2));
    Tick(window);
    EXPECT_TRUE(LabelGreyed(window, 2));
}

}  // namespace
}  // namespace quillon::test
