// Inputs, outputs and application status: what their timers show.
#include "window/app_status.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class Hardware : public WindowTest {
protected:
    // An input/output image with these inputs on and this A/D count.
    static std::wstring Image(std::array<bool, 4> inputs, const wchar_t* analog = L"0000") {
        constexpr std::size_t kPlaces[] = {2, 4, 7, 8};
        std::wstring image(18, L'0');
        for (std::size_t input = 0; input < inputs.size(); ++input)
            if (inputs[input]) image[kPlaces[input] * 2 + 1] = L'1';
        return image + analog;
    }
    static std::wstring OutputImage(std::wstring_view firstByte) {
        return L"00000000" + std::wstring(firstByte) + L"00000000000000";
    }
    static void SetImage(const std::wstring& image) {
        Host().Answer(L"IFile.ValueText.get", image);
    }
    static Lines InputTexts(const Window& window) {
        Lines texts;
        for (int id = IDC_LEDTEXT_FIRST; id <= IDC_LEDTEXT_LAST; ++id)
            texts.push_back(PageText(*window, kTabHw, id));
        return texts;
    }
    static void Tick(const Window& window, int times) {
        for (int tick = 0; tick < times; ++tick) window->Tick(Timer::kTmrHw);
    }
    static void ExpectGreyed(const Window& window, bool greyed) {
        EXPECT_EQ(IsLabelGreyed(PageItem(*window, kTabCalibration, IDC_LBLCOUNTS)), greyed);
        for (int id = IDC_LEDTEXT_FIRST; id <= IDC_LEDTEXT_LAST; ++id)
            EXPECT_EQ(IsLabelGreyed(PageItem(*window, kTabHw, id)), greyed) << id;
    }
    static std::wstring Counts(const Window& window) {
        return PageText(*window, kTabCalibration, IDC_LBLCOUNTS);
    }
};

TEST_F(Hardware, EachInputHasItsOwnIndicator) {
    const Window window = Open();
    window->SelectTab(kTabHw);
    for (int on = 0; on < 4; ++on) {
        std::array<bool, 4> inputs{};
        inputs[static_cast<std::size_t>(on)] = true;
        SetImage(Image(inputs));
        window->Tick(Timer::kTmrHw);
        for (int input = 0; input < 4; ++input) {
            const std::wstring state = input == on ? L": on" : L": off";
            EXPECT_EQ(PageText(*window, kTabHw, IDC_LEDTEXT_FIRST + input),
                      L"Digital input " + std::to_wstring(input + 1) + state);
            EXPECT_NE(
                SendMessageW(PageItem(*window, kTabHw, IDC_LED_FIRST + input), STM_GETICON, 0, 0),
                0);
        }
    }
}

TEST_F(Hardware, UnchangedInputsKeepTheirPictures) {
    const Window window = Open();
    SetImage(Image({true, false, true, false}));
    window->Tick(Timer::kTmrHw);
    const HWND led = PageItem(*window, kTabHw, IDC_LED_FIRST);
    const LRESULT picture = SendMessageW(led, STM_GETICON, 0, 0);
    const GuiObjects before = CountGuiObjects();
    for (int tick = 0; tick < 20; ++tick) window->Tick(Timer::kTmrHw);
    EXPECT_EQ(SendMessageW(led, STM_GETICON, 0, 0), picture);
    EXPECT_EQ(CountGuiObjects(), before);
}

TEST_F(Hardware, ChangingInputsLeaveNoPicturesBehind) {
    const Window window = Open();
    SetImage(Image({true, true, true, true}));
    window->Tick(Timer::kTmrHw);
    const GuiObjects before = CountGuiObjects();
    for (int tick = 0; tick < 20; ++tick) {
        const bool on = tick % 2 != 0;
        SetImage(Image({on, on, on, on}));
        window->Tick(Timer::kTmrHw);
    }
    EXPECT_EQ(CountGuiObjects(), before);
}

TEST_F(Hardware, CountOfTheAnalogInputIsShown) {
    const Window window = Open();
    window->SelectTab(kTabCalibration);
    const std::pair<const wchar_t*, const wchar_t*> kCounts[] = {{L"0000", L"0"},
                                                                 {L"03E8", L"1000"},
                                                                 {L"FF9C", L"-100"},
                                                                 {L"7FFF", L"32767"},
                                                                 {L"8000", L"-32768"}};
    for (const auto& [digits, shown] : kCounts) {
        SetImage(Image({}, digits));
        window->Tick(Timer::kTmrHw);
        EXPECT_EQ(Counts(window), shown);
    }
}

TEST_F(Hardware, UnreadableImageLeavesWhatIsShown) {
    const Window window = Open();
    SetImage(Image({true, false, false, false}, L"0010"));
    window->Tick(Timer::kTmrHw);
    const Lines before = InputTexts(window);
    for (const wchar_t* image : {L"", L"?", L"0400", L"zzzzzzzzzzzzzzzzzzzzzz"}) {
        SetImage(image);
        window->Tick(Timer::kTmrHw);
        EXPECT_EQ(Counts(window), L"16");
        EXPECT_EQ(InputTexts(window), before);
    }
    Host().Restore();
    Host().FailAlways(L"IFile.ValueText.get");
    window->Tick(Timer::kTmrHw);
    EXPECT_EQ(Counts(window), L"16");
}

TEST_F(Hardware, InputsThatCannotBeReadTurnGreyUntilTheyAre) {
    const Window window = Open();
    SetImage(Image({true, false, false, false}, L"0010"));
    Tick(window, 20);
    ExpectGreyed(window, false);
    const Lines shown = InputTexts(window);
    SetImage(L"?");
    Tick(window, 14);
    ExpectGreyed(window, false);
    Tick(window, 1);
    ExpectGreyed(window, true);
    EXPECT_EQ(InputTexts(window), shown);
    EXPECT_EQ(Counts(window), L"16");
    SetImage(Image({true, false, false, false}, L"0010"));
    Tick(window, 1);
    ExpectGreyed(window, false);
}

TEST_F(Hardware, InputsOfAFrozenWindowTurnGreyToo) {
    const Window window = Open();
    SetImage(Image({}));
    window->SetFreeze(true);
    Tick(window, 14);
    ExpectGreyed(window, false);
    Tick(window, 1);
    ExpectGreyed(window, true);
    window->SetFreeze(false);
    Tick(window, 1);
    ExpectGreyed(window, false);
}

TEST_F(Hardware, DeviceWithoutAnImageShowsNothing) {
    RemoveFile(Left(), "FFFD");
    const Window window = Open();
    for (const Timer timer : {Timer::kTmrHw, Timer::kTimer1, Timer::kTmrAppStatus})
        window->Tick(timer);
    EXPECT_EQ(Counts(window), L"");
    EXPECT_FALSE(window->OutputFlagSet());
    EXPECT_EQ(WindowText(window->Handle()), kNormalCaption) << "no status is status 0";
}

TEST_F(Hardware, OutputFlagIsSetWhileBit7OfTheFirstOutputByteIsClear) {
    const Window window = Open();
    EXPECT_FALSE(window->OutputFlagSet());
    const std::pair<const wchar_t*, bool> kBytes[] = {{L"01", true},  {L"7F", true},
                                                      {L"80", false}, {L"FF", false},
                                                      {L"7E", true},  {L"81", false}};
    for (const auto& [byte, set] : kBytes) {
        SetImage(OutputImage(byte));
        window->Tick(Timer::kTimer1);
        EXPECT_EQ(window->OutputFlagSet(), set) << Narrow(byte);
    }
}

TEST_F(Hardware, OutputsThatCannotBeReadLeaveTheFlag) {
    const Window window = Open();
    SetImage(OutputImage(L"01"));
    window->Tick(Timer::kTimer1);
    SetImage(L"80");
    window->Tick(Timer::kTimer1);
    EXPECT_TRUE(window->OutputFlagSet());
}

// ---- application status

class AppStatus : public WindowTest {
protected:
    static void SetStatus(unsigned char status) {
        com::Variant bytes;
        bytes.vt = VT_ARRAY | VT_UI1;
        bytes.parray = SafeArrayCreateVector(VT_UI1, 0, 1);
        LONG first = 0;
        SafeArrayPutElement(bytes.parray, &first, &status);
        Host().Answer(L"IDevice.ReadMemoryUnicode", bytes);
    }
    static std::wstring TickAndCaption(const Window& window) {
        window->Tick(Timer::kTmrAppStatus);
        return WindowText(window->Handle());
    }
    static LRESULT IconOf(const Window& window) {
        const LRESULT icon = SendMessageW(window->Handle(), WM_GETICON, ICON_SMALL, 0);
        EXPECT_EQ(SendMessageW(window->Handle(), WM_GETICON, ICON_BIG, 0), icon);
        return icon;
    }
};

TEST_F(AppStatus, CaptionBlinksWhileTheApplicationFails) {
    const Window window = Open();
    const LRESULT normal = IconOf(window);
    SetStatus(0);
    EXPECT_EQ(TickAndCaption(window), L"Merrowind New_Nimbra PlugIn");
    EXPECT_EQ(IconOf(window), normal);
    SetStatus(4);
    const wchar_t* const kBlinking[] = {L"", L"Nimbra Failure", L"", L"Nimbra Failure", L""};
    for (const wchar_t* caption : kBlinking) {
        EXPECT_EQ(TickAndCaption(window), caption);
        EXPECT_NE(IconOf(window), normal);
    }
    SetStatus(0);
    EXPECT_EQ(TickAndCaption(window), L"Merrowind New_Nimbra PlugIn");
    EXPECT_EQ(IconOf(window), normal);
}

TEST_F(AppStatus, DesignedCaptionBlinksTheSameWay) {
    const Window window = Open();
    EXPECT_EQ(WindowText(window->Handle()), L"Merrowind Nimbra PlugIn");
    SetStatus(255);
    EXPECT_EQ(TickAndCaption(window), L"");
    EXPECT_EQ(TickAndCaption(window), L"Nimbra Failure");
}

TEST_F(AppStatus, EveryStatusButZeroIsAFailure) {
    const Window window = Open();
    const LRESULT normal = IconOf(window);
    for (int status = 1; status < 256; status += 51) {
        SetStatus(static_cast<unsigned char>(status));
        window->Tick(Timer::kTmrAppStatus);
        EXPECT_NE(IconOf(window), normal) << status;
    }
}

TEST_F(AppStatus, IsReadFromTheDevicesMemory) {
    (*FileOf(Left(), "FFFD"))["value"] = "000001000100000101FF9C";
    const Window window = Open();
    EXPECT_EQ(TickAndCaption(window), L"Merrowind New_Nimbra PlugIn");
    EXPECT_EQ(Only(Host().Log(), L"IDevice.ReadMemory"),
              Lines{L"IDevice.ReadMemoryUnicode(16400, 1)"});
}

TEST_F(AppStatus, OneThatCannotBeReadCountsAsZero) {
    const Window window = Open();
    Host().FailAlways(L"IDevice.ReadMemoryUnicode");
    EXPECT_EQ(TickAndCaption(window), L"Merrowind New_Nimbra PlugIn");
}

TEST_F(AppStatus, UnchangedCaptionAndIconAreNotSetAgain) {
    const Window window = Open();
    SetStatus(0);
    TickAndCaption(window);
    static int s_written = 0;
    static WNDPROC s_before = nullptr;
    s_written = 0;
    s_before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        window->Handle(), GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(
            [](HWND frame, UINT message, WPARAM wParam, LPARAM lParam) CALLBACK -> LRESULT {
                if (message == WM_SETTEXT || message == WM_SETICON) ++s_written;
                return CallWindowProcW(s_before, frame, message, wParam, lParam);
            }))));
    TickAndCaption(window);
    TickAndCaption(window);
    EXPECT_EQ(s_written, 0);
    SetStatus(1);
    TickAndCaption(window);
    EXPECT_GT(s_written, 0);
}

}  // namespace
}  // namespace quillon::test
