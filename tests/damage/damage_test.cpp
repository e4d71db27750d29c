#include "damage/damage_test.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "damage/outcomes.h"
#include "fault/device_window.h"
#include "support/full_run.h"
#include "support/watchdog.h"

namespace quillon::test {

namespace {

struct Share {
    const char* name;
    const char* extension;
    std::uint32_t sample;
    std::uint32_t full;
    std::uint32_t goodEvery;  // a good file after so many damaged ones
};

// By FileKind.
constexpr std::array<Share, 5> kShares{{{"application", ".app", 110, 7500, 4},
                                        {"parameters", ".cps", 50, 3500, 4},
                                        {"calibration", ".tca", 75, 5000, 4},
                                        {"settings", ".ini", 25, 1000, 12},
                                        {"label", ".zpl", 40, 3000, 4}}};
// So many failing files tell enough.
constexpr int kMostFailing = 5;

const Share& ShareOf(FileKind kind) {
    return kShares[static_cast<std::size_t>(kind)];
}

std::string Variable(const wchar_t* name) {
    wchar_t value[64] = {};
    GetEnvironmentVariableW(name, value, 64);
    return Narrow(value);
}

// The number of the one file that is wanted, "label:17"; nullopt when all are.
std::optional<std::uint32_t> WantedOf(const std::string& wanted, const Share& share) {
    const std::string prefix = share.name + std::string(":");
    if (!wanted.starts_with(prefix)) return std::nullopt;
    return static_cast<std::uint32_t>(std::strtoul(wanted.c_str() + prefix.size(), nullptr, 10));
}

std::wstring BesideProgram(const std::string& name) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring_view program = path;
    return std::wstring(program.substr(0, program.rfind(L'\\') + 1)) + Wide(name);
}

int Failures() {
    return ::testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

}  // namespace

void DamageTest::SetUp() {
    HostTest::SetUp();
    AllowMisuse();
}

void DamageTest::RunAll(FileKind kind, const std::vector<std::string>& seeds) {
    ExpectGoodWorks();
    const Share& share = ShareOf(kind);
    const auto seedOf = [&](std::uint32_t number) {
        return seeds[Random(number).Below(seeds.size())];
    };
    const std::string wanted = Variable(L"QUILLON_DAMAGED");
    if (!wanted.empty()) {
        if (const auto number = WantedOf(wanted, share)) RunOne(kind, seedOf(*number), *number);
        return;
    }
    const std::uint32_t count = FullRun() ? share.full : share.sample;
    int failing = 0;
    for (std::uint32_t number = 0; number < count && failing < kMostFailing; ++number) {
        const int before = Failures();
        RunOne(kind, seedOf(number), number);
        if (Failures() != before) ++failing;
    }
}

void DamageTest::RunOne(FileKind kind, const std::string& seed, std::uint32_t number) {
    const Share& share = ShareOf(kind);
    const Damaged damaged = Damage(seed, kind, number);
    const std::string name = std::string(share.name) + ":" + std::to_string(number);
    SCOPED_TRACE(name + ", " + damaged.mutation + " (QUILLON_DAMAGED=" + name + ")");
    const std::wstring kept = BesideProgram(std::string("damaged-") + share.name + "-" +
                                            std::to_string(number) + share.extension);
    WriteBytes(kept, damaged.bytes);
    const int before = Failures();
    {
        WatchRound(name);
        Random random(number);
        const std::string outcome = Take(damaged.bytes, random);
        CountDamaged(share.extension, damaged.mutation, outcome);
        if (number % share.goodEvery == 0) ExpectGoodWorks();
    }
    if (Failures() == before) DeleteFileW(kept.c_str());
}

Room& DamageTest::FreshRoom() {
    OpenSmall();
    return AddRoom(kRight);
}

void DamageTest::DropRoom() {
    CloseAllWindows();
    DropRooms();
    EXPECT_EQ(Host().LiveObjects(), 1) << "more than the network is held";
    EXPECT_TRUE(Plugin().CanUnload()) << "the plug-in still holds something";
}

std::wstring DamageTest::EntryText(long identifier) {
    const auto device = HostDevice(kRight);
    Host().Record(false);
    com::Ptr<IFiles> files;
    com::Check(device->get_Files(files.Out()));
    std::wstring text = L"(no entry)";
    com::Ptr<IFile> entry;
    for (long place = 1; SUCCEEDED(files->get_Item(place, entry.Out())) && entry; ++place) {
        long own = 0;
        com::Check(entry->get_Identifier(&own));
        if (own != identifier) continue;
        text = quillon::test::TextOf(entry, &IFile::get_ValueText);
        break;
    }
    Host().Record(true);
    return text;
}

std::vector<Box> DamageTest::NewBoxes() {
    const auto& all = Boxes().Seen();
    std::vector<Box> boxes(all.begin() + static_cast<std::ptrdiff_t>(m_boxesSeen), all.end());
    m_boxesSeen = all.size();
    return boxes;
}

HWND DamageTest::OpenWindow(const Room& room) {
    IDispatch* none = nullptr;
    long rate = 25;
    EXPECT_EQ(room.ex->ShowFocus(&none, &rate), S_OK);
    const HWND window = FindDeviceWindow();
    EXPECT_NE(window, nullptr);
    CalmDown(window);
    return window;
}

std::string DamageTest::Example(const char* name) {
    return ReadBytes(Wide(std::string(QUILLON_EXAMPLES) + "/" + name));
}

}  // namespace quillon::test
