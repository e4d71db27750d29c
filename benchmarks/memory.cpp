#include "loading.h"
#include "measures.h"
#include "support/process_memory.h"

namespace quillon::benchmarks {

namespace {

constexpr int kPoints = 500;  // of each of the two kinds
constexpr int kFirst = 10;
constexpr int kLast = 100;
constexpr double kMostPercent = 1;

// A device made and bound, a file loaded into a profile, everything let go of.
void Round(const Session& session, const Room& room, const std::wstring& file) {
    const Room own{room.network, session.BindDevice(room.network.Get()), nullptr};
    SecondsOfLoading(session, own, file);
}

double Growth(std::size_t before, std::size_t after) {
    return (static_cast<double>(after) / static_cast<double>(before) - 1) * 100;
}

std::string Kilobytes(std::size_t bytes) {
    return Decimals(static_cast<double>(bytes) / 1024, 1) + " KB";
}

void AddRow(Table& table, const char* what, std::size_t before, std::size_t after,
            const std::string& remark) {
    table.Add({what,
               "after 10",
               {Growth(before, after)},
               "% more",
               kMostPercent,
               Kilobytes(before) + " to " + Kilobytes(after) + remark});
}

}  // namespace

void MeasureMemory(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kPoints, .properties = kPoints});
    const std::wstring file = session.ExportApplication(room, L"memory.app");
    test::Memory before;
    for (int round = 1; round <= kLast; ++round) {
        Round(session, room, file);
        if (round == kFirst) before = test::MemoryInUse();
    }
    const test::Memory after = test::MemoryInUse();
    AddRow(table, "heap after 100 load-and-release rounds", before.heapBytes, after.heapBytes,
           ", " + std::to_string(before.heapBlocks) + " to " + std::to_string(after.heapBlocks) +
               " blocks");
    AddRow(table, "private bytes after 100 load-and-release rounds", before.privateBytes,
           after.privateBytes, "");
}

}  // namespace quillon::benchmarks
