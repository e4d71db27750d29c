#include "fault/sweep.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "fault/device_window.h"
#include "fault/dialog_operator.h"
#include "fault/shown_values.h"
#include "fault/stand_ins.h"
#include "support/full_run.h"
#include "support/watchdog.h"

namespace quillon::test {

namespace {

bool IsTraced() {
    return GetEnvironmentVariableW(L"QUILLON_TRACE", nullptr, 0) > 1;  // with its end
}

// All; or a few of them, evenly spread and others for each operation and kind of fault.
std::vector<std::size_t> Chosen(std::size_t count, const Operation& operation, const char* kind) {
    constexpr std::size_t kSample = 3;
    std::size_t first = 0;
    for (const std::string& text : {std::string(operation.name), std::string(kind)})
        for (const char one : text) first = first * 31 + static_cast<unsigned char>(one);
    const std::size_t taken = FullRun() ? count : std::min(count, kSample);
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < taken; ++i) chosen.push_back((first + i * count / taken) % count);
    return chosen;
}

}  // namespace

void SweepTest::SetUp() {
    HostTest::SetUp();
    AllowMisuse();
    Boxes().AnswerBy(
        [this](const Box& box) { return m_operation ? ButtonFor(*m_operation, box) : 0; });
    const HMODULE plugin = GetModuleHandleW(Plugin().Path().c_str());
    StandInForSystem(plugin);
    m_platform.emplace(plugin);
}

void SweepTest::TearDown() {
    m_platform.reset();
    HostTest::TearDown();
}

Seen SweepTest::Prime(const Operation& operation) {
    Run(operation);
    return Run(operation);
}

Seen SweepTest::Run(const Operation& operation, const std::function<void(Stage&)>& arm) {
    m_operation = &operation;
    ClearFolder();
    WriteInputFiles(Folder());
    for (const wchar_t* name : kWrittenFiles) WriteBytes(InFolder(name), kOldFile);
    Open(FaultNetwork());
    Stage stage{AddRoom(kRight), nullptr, Folder(), HostDevice(kRight)};
    if (operation.needsWindow) OpenWindow(stage);
    operation.prepare(stage);
    Host().Clear();
    ForgetPrinted();
    const std::size_t boxesBefore = Boxes().Seen().size();
    Platform().StartCount();
    if (arm) arm(stage);
    Seen seen;
    {
        const DialogOperator works;
        seen.result = operation.run(stage);
    }
    seen.allocations = Platform().Allocations();
    Collect(seen, boxesBefore);
    PollAll(FindDeviceWindow());
    Platform().Restore();
    Host().Restore();
    Posted().Discard();
    seen.oldShown = OldValuesShown(FindDeviceWindow(), stage.host.Get());
    stage.host.Reset();
    CloseAllWindows();
    DropRooms();
    ExpectAllReleased();
    return seen;
}

// It shows values that the device does not have any more.
void SweepTest::OpenWindow(Stage& stage) {
    EXPECT_EQ(ShowWindowOf(stage), S_OK);
    stage.window = FindDeviceWindow();
    ASSERT_NE(stage.window, nullptr);
    CalmDown(stage.window);
    for (int label = 0; label < kMainViewLabels; ++label) TickTimer(stage.window, Timer::kPolling);
    ChangePolledValues(stage);
}

void SweepTest::Collect(Seen& seen, std::size_t boxesBefore) {
    seen.platformCalls = Platform().Calls();
    seen.log = Host().Log();
    seen.reports = Host().Reports();
    seen.misuse = Host().Misuse();
    seen.changes = Changes(seen.log);
    seen.printed = Printed();
    const auto& boxes = Boxes().Seen();
    for (std::size_t i = boxesBefore; i < boxes.size(); ++i) seen.boxes.push_back(boxes[i].text);
    for (const std::wstring& name : FileNames()) seen.files[name] = ReadBytes(InFolder(name));
}

// All but the plug-in itself.
Lines SweepTest::FileNames() const {
    Lines names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
        if (entry.path().extension() != L".dll") names.push_back(entry.path().filename().wstring());
    return names;
}

void SweepTest::ClearFolder() const {
    for (const std::wstring& name : FileNames()) DeleteFileW(InFolder(name).c_str());
}

void SweepTest::ExpectAllReleased() {
    EXPECT_EQ(Host().LiveObjects(), 1) << "more than the network is held";
    EXPECT_TRUE(Plugin().CanUnload()) << "the plug-in still holds something";
    EXPECT_EQ(FindDeviceWindow(), nullptr);
}

void SweepTest::ExpectWorks(const Operation& operation, const Seen& good) {
    EXPECT_TRUE(Run(operation).SameOutcome(good)) << "the next run without a fault differs";
}

std::vector<Fault> SweepTest::AtAllocations(const Seen& good, std::size_t most) {
    std::vector<Fault> faults;
    const auto all = static_cast<std::size_t>(good.allocations);
    const std::size_t count = std::min(all, most);
    for (std::size_t i = 0; i < count; ++i) {
        const long nth = static_cast<long>(i * all / count) + 1;
        faults.push_back(
            {"allocation " + std::to_string(nth),
             [=, this](Stage&) { Platform().Fail(PlatformFaults::kMemory, nth, false); },
             std::nullopt, false});
    }
    return faults;
}

void SweepTest::Sweep(const Operation& operation, const char* kind, const Seen& good,
                      const std::vector<Fault>& faults, const Rules& rules) {
    for (const std::size_t place : Chosen(faults.size(), operation, kind)) {
        const Fault& fault = faults[place];
        WatchRound(std::string(operation.name) + ", " + kind + ": " + fault.name);
        SCOPED_TRACE(std::string(operation.name) + ", " + kind + ": " + fault.name);
        if (IsTraced()) {
            std::printf("%s, %s: %s\n", operation.name, kind, fault.name.c_str());
            std::fflush(stdout);
        }
        const Seen seen = Run(operation, fault.arm);
        Judge(operation, fault, rules, good, seen);
        CountOutcome(operation.name, kind, static_cast<long>(faults.size()), KindOf(good, seen));
        if (FullRun()) ExpectWorks(operation, good);
    }
}

}  // namespace quillon::test
