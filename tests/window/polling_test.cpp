// The main view: which variable each tick reads, and what its label then shows.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class MainView : public WindowTest {
protected:
    static std::wstring Label(const Window& window, int index) {
        return PageText(*window, kTabMain, IDC_LBLNV_FIRST + index);
    }
    static void TickTimes(const Window& window, int times) {
        for (int tick = 0; tick < times; ++tick) window->Tick(Timer::kTmrPolling);
    }
    static Lines LookUps() { return Only(Host().Log(), L"Points.Item"); }
};

Lines Items(std::initializer_list<const wchar_t*> keys) {
    Lines lines;
    for (const wchar_t* key : keys) lines.push_back(L"Points.Item(\"" + std::wstring(key) + L"\")");
    return lines;
}

TEST_F(MainView, CycleReadsFiveLabelsInTurn) {
    const Window window = Open();
    TickTimes(window, 11);
    EXPECT_EQ(LookUps(), Items({L"1", L"0", L"3", L"2", L"4", L"1", L"0", L"3", L"2", L"4", L"1"}));
}

TEST_F(MainView, LabelsShowTheFormattedValuesOfTheirVariables) {
    const Window window = Open();
    for (int index = 0; index < 6; ++index) EXPECT_EQ(Label(window, index), L"");
    TickTimes(window, 10);
    EXPECT_EQ(Label(window, 0), L"22.50 degrees Celsius");
    EXPECT_EQ(Label(window, 1), L"21.00 degrees Celsius");
    EXPECT_EQ(Label(window, 2), L"50.0 1");
    EXPECT_NE(Label(window, 3), L"");
    EXPECT_NE(Label(window, 4), L"");
}

TEST_F(MainView, SixthLabelIsNeverPolled) {
    const Window window = Open();
    TickTimes(window, 12);
    EXPECT_EQ(Label(window, 5), L"");
}

TEST_F(MainView, TickReadsOneVariableAndThreeTexts) {
    const Window window = Open();
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Host().Log(), (Lines{L"IDevice.NetworkVariables.get()", L"Points.Item(\"1\")",
                                   L"Point.Value.get()", L"Point.SNVType.get()",
                                   L"Type.InvalidValue.get()", L"Point.FormattedValue.get()"}));
}

TEST_F(MainView, EmptyTagPollsVariableZero) {
    WriteSettings("");
    const Window window = Open();
    TickTimes(window, 5);
    EXPECT_EQ(LookUps(), Items({L"0", L"0", L"0", L"0", L"0"}));
    EXPECT_EQ(Label(window, 4), L"21.00 degrees Celsius");
}

TEST_F(MainView, TagIsReadAsALenientNumber) {
    WriteSettings(Section("MainView", {"1x", " 2 and more", "text", "3.4", "004"}));
    const Window window = Open();
    TickTimes(window, 5);
    EXPECT_EQ(LookUps(), Items({L"1", L"2", L"0", L"3", L"4"}));
}

TEST_F(MainView, TagTooLargeForANumberReadsNothing) {
    WriteSettings(Section("MainView", {"99999999999"}));
    const Window window = Open();
    TickTimes(window, 3);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(MainView, TagThatNamesNoVariableLeavesTheLabelAndIsTriedAgain) {
    WriteSettings(Section("MainView", {"77"}));
    const Window window = Open();
    TickTimes(window, 2);
    EXPECT_EQ(LookUps(), Items({L"77", L"77"}));
    EXPECT_EQ(Label(window, 0), L"");
}

TEST_F(MainView, FailingReadLeavesTheLabelAndTheCycle) {
    const Window window = Open();
    window->Tick(Timer::kTmrPolling);
    const wchar_t* const kMembers[] = {L"IDevice.NetworkVariables.get",
                                       L"Points.Item",
                                       L"Point.Value.get",
                                       L"Point.SNVType.get",
                                       L"Type.InvalidValue.get",
                                       L"Point.FormattedValue.get"};
    for (const wchar_t* member : kMembers) {
        SCOPED_TRACE(Narrow(member));
        Host().Clear();
        Host().Fail(member);
        window->Tick(Timer::kTmrPolling);
        EXPECT_EQ(Host().Count(member), 1);
        EXPECT_EQ(Label(window, 1), L"");
        EXPECT_FALSE(window->Freeze());
    }
    Host().Clear();
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(LookUps(), Items({L"0"}));
    EXPECT_EQ(Label(window, 1), L"21.00 degrees Celsius");
}

struct Comparison {
    const wchar_t* value;
    const wchar_t* invalid;
    bool equal;
};

class MainViewInvalid : public MainView, public ::testing::WithParamInterface<Comparison> {};

TEST_P(MainViewInvalid, ValueEqualToItsTypesInvalidOneShowsInvalid) {
    const auto& [value, invalid, equal] = GetParam();
    const Window window = Open();
    Host().Answer(L"Point.Value.get", value);
    Host().Answer(L"Type.InvalidValue.get", invalid);
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), equal ? L"Invalid" : L"22.50 degrees Celsius");
    EXPECT_EQ(Host().Count(L"Point.FormattedValue.get"), equal ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Values, MainViewInvalid,
                         ::testing::Values(Comparison{L"327.67", L"327.67", true},
                                           Comparison{L"327,67", L"327.67", true},
                                           Comparison{L"327.67", L"327,67", true},
                                           Comparison{L"", L"", true}, Comparison{L"", L"0", false},
                                           Comparison{L"22.5", L"", false},
                                           Comparison{L"327.670", L"327.67", false}));

TEST_F(MainView, AmpersandIsShownAsItIs) {
    const Window window = Open();
    Host().Answer(L"Point.FormattedValue.get", L"A&B && C");
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"A&B && C");
    for (int index = 0; index < 6; ++index) {
        const HWND label = PageItem(*window, kTabMain, IDC_LBLNV_FIRST + index);
        EXPECT_NE(GetWindowLongW(label, GWL_STYLE) & SS_NOPREFIX, 0) << index;
    }
}

TEST_F(MainView, ValueOfTenThousandCharactersIsShownWhole) {
    const Window window = Open();
    const std::wstring text(10000, L'x');
    Host().Answer(L"Point.Value.get", text);
    Host().Answer(L"Point.FormattedValue.get", text);
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), text);
}

TEST_F(MainView, WrongTypesFromTheHostAreNoValue) {
    const Window window = Open();
    com::Variant noText;
    noText.vt = VT_ERROR;
    Host().Answer(L"Point.Value.get", noText);
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"");
    Host().Restore();
    Host().Answer(L"Point.SNVType.get", L"no type object");
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"");
    Host().Restore();
    Host().AnswerNothing(L"IDevice.NetworkVariables.get");
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"");
    Host().Restore();
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"22.50 degrees Celsius");
}

TEST_F(MainView, NullIsAnEmptyText) {
    const Window window = Open();
    window->Tick(Timer::kTmrPolling);
    EXPECT_EQ(Label(window, 0), L"22.50 degrees Celsius");
    com::Variant null;
    null.vt = VT_NULL;
    Host().Answer(L"Point.FormattedValue.get", null);
    TickTimes(window, 5);
    EXPECT_EQ(Label(window, 0), L"");
    EXPECT_EQ(LookUps().size(), 6u);
}

TEST_F(MainView, UnchangedLabelIsNotWrittenAgain) {
    const Window window = Open();
    TickTimes(window, 5);
    static int s_written = 0;
    s_written = 0;
    const HWND label = PageItem(*window, kTabMain, IDC_LBLNV_FIRST);
    static WNDPROC s_before = nullptr;
    s_before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        label, GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(
            [](HWND control, UINT message, WPARAM wParam, LPARAM lParam) CALLBACK -> LRESULT {
                if (message == WM_SETTEXT) ++s_written;
                return CallWindowProcW(s_before, control, message, wParam, lParam);
            }))));
    TickTimes(window, 5);
    EXPECT_EQ(s_written, 0);
    Host().Answer(L"Point.FormattedValue.get", L"other");
    TickTimes(window, 1);
    EXPECT_EQ(s_written, 1);
}

}  // namespace
}  // namespace quillon::test
