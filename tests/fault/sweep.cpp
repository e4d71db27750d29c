#include "fault/sweep.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "fault/device_window.h"

namespace quillon::test {

namespace {

// What stands in the place of a file that an operation writes, before it does.
const char* const kOldFile = "what stood here before";

bool Asked(const char* variable) {
    wchar_t value[8];
    return GetEnvironmentVariableW(Wide(variable).c_str(), value, 8) > 0;
}

// All, or one of them, another one for each kind of fault.
std::vector<std::size_t> Chosen(std::size_t count, const Operation& operation, const char* kind) {
    std::vector<std::size_t> chosen;
    if (FullSweep()) {
        for (std::size_t i = 0; i < count; ++i) chosen.push_back(i);
    } else if (count > 0) {
        std::size_t place = 0;
        for (const std::string& text : {std::string(operation.name), std::string(kind)})
            for (const char one : text) place = place * 31 + static_cast<unsigned char>(one);
        chosen.push_back(place % count);
    }
    return chosen;
}

// Documents that end in the same closing tag.
bool EndsAlike(const std::string& one, const std::string& other) {
    constexpr std::size_t kClosing = 16;
    const auto end = [&](const std::string& text) {
        return text.substr(text.size() - std::min(text.size(), kClosing));
    };
    return !one.empty() && end(one) == end(other);
}

OutcomeKind KindOf(const Seen& good, const Seen& seen) {
    if (seen.SameOutcome(good)) return OutcomeKind::kUntouched;
    if (FAILED(seen.result)) return OutcomeKind::kCode;
    if (seen.boxes != good.boxes || seen.reports != good.reports) return OutcomeKind::kTold;
    return OutcomeKind::kQuiet;
}

}  // namespace

bool FullSweep() {
    return Asked("QUILLON_FULL");
}

void SweepTest::SetUp() {
    HostTest::SetUp();
    AllowMisuse();
    Boxes().AnswerBy(ButtonFor);
    m_platform.emplace(GetModuleHandleW(Plugin().Path().c_str()));
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
    ClearFolder();
    WriteInputFiles(Folder());
    WriteBytes(InFolder(kExportFile), kOldFile);
    WriteBytes(InFolder(kCalibrationFile), kOldFile);
    OpenSmall();
    Stage stage{AddRoom(kRight), nullptr, Folder()};
    if (operation.needsWindow) {
        IDispatch* none = nullptr;
        long rate = 25;
        EXPECT_EQ(stage.room.ex->ShowFocus(&none, &rate), S_OK);
        stage.window = FindDeviceWindow();
        CalmDown(stage.window);
        EXPECT_NE(stage.window, nullptr);
    }
    operation.prepare(stage);
    Host().Clear();
    const std::size_t boxesBefore = Boxes().Seen().size();
    Platform().StartCount();
    if (arm) arm(stage);
    Seen seen;
    seen.result = operation.run(stage);
    seen.allocations = Platform().Allocations();
    Platform().Restore();
    Collect(seen, boxesBefore);
    CloseAllWindows();
    DropRooms();
    ExpectAllReleased();
    return seen;
}

void SweepTest::Collect(Seen& seen, std::size_t boxesBefore) {
    seen.platformCalls = Platform().Calls();
    seen.log = Host().Log();
    seen.reports = Host().Reports();
    seen.misuse = Host().Misuse();
    Host().Restore();
    Posted().Discard();
    seen.changes = Changes(seen.log);
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

void SweepTest::Judge(const Operation& operation, const Fault& fault, const Rules& rules,
                      const Seen& good, const Seen& seen) {
    if (operation.quiet && rules.successPromised) {
        EXPECT_EQ(seen.result, S_OK);
    }
    if (rules.misuseIsWrong) {
        EXPECT_EQ(seen.misuse, Lines());
    }
    if (rules.sameContent) JudgeContent(operation, good, seen);
    if (operation.stops && rules.mayStopWriting && fault.call) {
        const Lines before(good.log.begin(),
                           good.log.begin() + static_cast<std::ptrdiff_t>(*fault.call) + 1);
        EXPECT_LE(seen.changes.size(), Changes(before).size()) << "written behind the failing call";
    }
}

void SweepTest::JudgeContent(const Operation& operation, const Seen& good, const Seen& seen) {
    // Without a catalogue a downloaded list is empty.
    const std::wstring emptied = L"IFile.ValueText.put(\"\")";
    for (const std::wstring& change : seen.changes)
        EXPECT_TRUE(std::count(good.changes.begin(), good.changes.end(), change) > 0 ||
                    (!operation.stops && change == emptied))
            << "written: " << Narrow(change);
    EXPECT_LE(seen.changes.size(), good.changes.size());
    for (const auto& [name, text] : seen.files) {
        const auto known = good.files.find(name);
        ASSERT_NE(known, good.files.end()) << "left behind: " << Narrow(name);
        EXPECT_TRUE(text == known->second || text == kOldFile ||
                    (operation.leavesOut && EndsAlike(text, known->second)))
            << "half written: " << Narrow(name);
    }
}

void SweepTest::Sweep(const Operation& operation, const char* kind, const Seen& good,
                      const std::vector<Fault>& faults, const Rules& rules) {
    for (const std::size_t place : Chosen(faults.size(), operation, kind)) {
        const Fault& fault = faults[place];
        SCOPED_TRACE(std::string(operation.name) + ", " + kind + ": " + fault.name);
        if (Asked("QUILLON_TRACE")) {
            std::printf("%s, %s: %s\n", operation.name, kind, fault.name.c_str());
            std::fflush(stdout);
        }
        const Seen seen = Run(operation, fault.arm);
        Judge(operation, fault, rules, good, seen);
        CountOutcome(operation.name, kind, static_cast<long>(faults.size()), KindOf(good, seen));
        if (FullSweep()) ExpectWorks(operation, good);
    }
}

}  // namespace quillon::test
