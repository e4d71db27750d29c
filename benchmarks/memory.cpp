#include <stdexcept>

#include "com/error.h"
#include "com/text.h"
#include "heap.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kPoints = 500;  // of each of the two kinds
constexpr int kFirst = 10;
constexpr int kLast = 100;
constexpr double kLimit = 1.0;  // percent

// A device made and bound, a file loaded into a profile, everything let go of.
void Round(const Session& session, const Room& room, const std::wstring& file) {
    const com::Ptr<IDevice> device = session.BindDevice(room.network.Get());
    const com::Ptr<_CProfile> profile = session.Create<_CProfile>(CLSID_CProfile);
    com::Ptr<_CDevice> target = device.As<_CDevice>();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    com::Check(profile->FriendSet(com::Bstr(file).Get(), target.InOut(), &loaded));
    if (!loaded) throw std::runtime_error("the profile refuses an exported file");
}

double Growth(std::size_t before, std::size_t after) {
    return (static_cast<double>(after) / static_cast<double>(before) - 1) * 100;
}

std::string Kilobytes(std::size_t bytes) {
    return Decimals(static_cast<double>(bytes) / 1024, 1) + " KB";
}

void AddRow(Table& table, const char* what, std::size_t before, std::size_t after,
            const std::string& remark) {
    const double growth = Growth(before, after);
    table.Add(what, "after 10", (growth < 0 ? "" : "+ ") + Decimals(growth, 2) + " %", "+ 1 %",
              growth <= kLimit, Kilobytes(before) + " to " + Kilobytes(after) + remark);
}

}  // namespace

void MeasureMemory(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kPoints, .properties = kPoints});
    const std::wstring file = session.ExportApplication(room, L"memory.app");
    Memory before;
    for (int round = 1; round <= kLast; ++round) {
        Round(session, room, file);
        if (round == kFirst) before = MemoryInUse();
    }
    const Memory after = MemoryInUse();
    AddRow(table, "heap after 100 load-and-release rounds", before.heapBytes, after.heapBytes,
           ", " + std::to_string(before.heapBlocks) + " to " + std::to_string(after.heapBlocks) +
               " blocks");
    AddRow(table, "private bytes after 100 load-and-release rounds", before.privateBytes,
           after.privateBytes, "");
}

}  // namespace quillon::benchmarks
