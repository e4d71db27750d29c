// Windows, ticks and the host's message loop.
#include <algorithm>
#include <cstdio>

#include "com/late.h"
#include "editors/editors_resource.h"
#include "soak/bare_dialogs.h"
#include "soak/soak_test.h"
#include "soak/value_editor.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

constexpr const char* kModel = "0123456789AB";  // the room that all are copies of
constexpr long kRate = 25;                      // x 20 ms: TmrPolling ticks every 500 ms
constexpr UINT_PTR kTimers[] = {1, 2, 3, 4, 5};

std::string NeuronOf(std::size_t place) {
    return "0123456789" + std::string(1, static_cast<char>('C' + place / 4)) +
           std::to_string(place % 4);
}

// In tenths of a second; 0: the timer does not run on this tab.
long IntervalOf(Timer timer, std::wstring_view tab) {
    switch (timer) {
        case Timer::kAppStatus:
            return 10;
        case Timer::kNvs:
            return tab == L"Test" || tab == L"Tune" ? 5 : 0;
        case Timer::kHw:
            return tab == L"Hw" ? 5 : tab == L"Calibration" ? 3 : 0;
        default:
            return 5;
    }
}

// The pages of a device window.
constexpr int kPages[] = {IDD_PAGE_HW,      IDD_PAGE_MAIN,        IDD_PAGE_TEST, IDD_PAGE_SETUP,
                          IDD_PAGE_GENERAL, IDD_PAGE_CALIBRATION, IDD_PAGE_TUNE, IDD_PAGE_LABEL};

std::vector<HWND> DeviceWindows() {
    std::vector<HWND> windows = ThreadWindows();
    std::erase_if(windows, [](HWND window) { return !GetMenu(window); });
    return windows;
}

}  // namespace

void SoakTest::SetUp() {
    HostTest::SetUp();
    WriteBytes(InFolder(L"9FFFFF0512040410.ini"),
               ReadBytes(Wide(std::string(QUILLON_EXAMPLES) + "/9FFFFF0512040410.ini")));
    Json network = NetworkFile("room.json");
    const Json model = DeviceOf(network, Wide(kModel));
    network["devices"] = Json::array();
    for (std::size_t place = 0; place < kWindows; ++place) {
        Json device = model;
        device["neuron"] = NeuronOf(place);
        network["devices"].push_back(device);
    }
    Open(network);
    m_gap = std::make_unique<PumpGap>(GetModuleHandleW(Plugin().Path().c_str()));
    for (std::size_t place = 0; place < kWindows; ++place) {
        m_desks[place].room = &AddRoom(Wide(NeuronOf(place)));
        m_desks[place].host = HostDevice(Wide(NeuronOf(place)));
        OpenWindow(m_desks[place]);
    }
    const HMODULE plugin = GetModuleHandleW(Plugin().Path().c_str());
    m_leftByOpening =
        LeftByBareDialog(plugin, {IDD_VANTOR, kPages}) + LeftByBareDialog(plugin, {IDD_SPLASH, {}});
    m_leftByEdit = LeftByBareDialog(plugin, {IDD_CPMODIF1, {}});
    m_gap->Forget();
    Host().Record(false);
    m_editTimer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, AnswerValueEditor);
}

void SoakTest::TearDown() {
    KillTimer(nullptr, m_editTimer);
    CloseAllWindows();
    Host().Restore();
    m_gap.reset();
    for (Desk& desk : m_desks) desk.host.Reset();
    HostTest::TearDown();
}

void SoakTest::OpenWindow(Desk& desk) {
    const std::vector<HWND> before = DeviceWindows();
    IDispatch* none = nullptr;
    long rate = kRate;
    m_gap->Looked("opening a window");
    EXPECT_EQ(desk.room->ex->ShowFocus(&none, &rate), S_OK);
    for (const HWND window : DeviceWindows())
        if (std::ranges::count(before, window) == 0) desk.window = window;
    ASSERT_TRUE(IsWindow(desk.window));
    CalmDown(desk.window);
    SelectTabOf(desk, L"Test");
    Handle("opening a window");
    ++m_openings;
}

void SoakTest::SelectTabOf(Desk& desk, const wchar_t* tab) {
    desk.tab = tab;
    SelectTab(desk.window, tab);
    // Choosing a tab starts its timers.
    for (const UINT_PTR timer : kTimers) KillTimer(desk.window, timer);
}

// The host's loop: until the queue is empty, so that windows that wait for that come up.
void SoakTest::Handle(const char* work) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        m_gap->Looked(work);
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    m_gap->Looked(work);
}

void SoakTest::PostTicks(const Desk& desk, long tenth) {
    for (const UINT_PTR timer : kTimers) {
        const long interval = IntervalOf(static_cast<Timer>(timer), desk.tab);
        if (interval == 0 || tenth % interval != 0) continue;
        PostMessageW(desk.window, WM_TIMER, timer, 0);
        ++m_ticks[timer];
    }
}

void SoakTest::Pass(long tenth) {
    m_tenth = tenth;
    if (tenth % 10 == 0) Host().Advance(Network(), 1000);
    for (Desk& desk : m_desks) {
        ComeBack(desk, tenth);
        PostTicks(desk, tenth);
        Handle("tick");
    }
    for (const Happening& happening : kHappenings) {
        if (!m_random.OneIn(happening.oneIn)) continue;
        Desk& desk = m_desks[m_random.Below(kWindows)];
        m_gap->Looked(happening.name);
        (this->*happening.happen)(desk);
        Handle(happening.name);
    }
}

void SoakTest::CalmAll() {
    for (Desk& desk : m_desks) {
        if (desk.silentUntil != 0) desk.silentUntil = m_tenth;
        if (desk.absentUntil != 0) desk.absentUntil = m_tenth;
        ComeBack(desk, m_tenth);
        SelectTabOf(desk, L"Test");
    }
    // A round of all timers for each value of the main view, and one to thaw.
    for (int round = 0; round < 8; ++round)
        for (const Desk& desk : m_desks) {
            for (const UINT_PTR timer : kTimers) PostMessageW(desk.window, WM_TIMER, timer, 0);
            Handle("tick");
        }
    Host().Clear();
}

void SoakTest::ExpectCurrent() {
    for (const Desk& desk : m_desks) {
        EXPECT_TRUE(IsWindowEnabled(ControlOf(desk.window, IDC_SSTAB1))) << "still frozen";
        const std::wstring value = com::Get(SetpointOf(desk).Get(), L"Value").AsText();
        const std::wstring shown = WindowText(ControlOf(desk.window, IDC_LBLNV_FIRST + 2));
        EXPECT_EQ(std::stod(shown), std::stod(value)) << "an old value is shown";
    }
}

void SoakTest::Print() const {
    std::printf("\nThe system leaves %.0f bytes for an opened window, %.0f for an edit.\n",
                m_leftByOpening, m_leftByEdit);
    std::printf("\n| in the run | count |\n|---|---|\n");
    const char* const kNames[] = {"", "TmrPolling", "TmrAppStatus", "TmrNvs", "TmrHw", "Timer1"};
    for (const UINT_PTR timer : kTimers)
        std::printf("| ticks of %s | %ld |\n", kNames[timer], m_ticks[timer]);
    const std::pair<const char*, const Told*> kTold[] = {
        {"values", &m_points}, {"names", &m_names}, {"states", &m_states}};
    for (const auto& [name, told] : kTold)
        std::printf("| %s told / shown | %ld / %ld |\n", name, told->changes, told->shown);
    std::printf(
        "| edits | %ld |\n| exports | %ld |\n| devices gone silent and back | %ld |\n"
        "| windows opened | %ld |\n",
        m_edits, m_exports, m_silences, m_openings);
    m_gap->Print();
}

}  // namespace quillon::test
