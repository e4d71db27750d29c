#include "soak/resources.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>

namespace quillon::test {

namespace {

// What may have come between the middle and the end of a run. Fifty bytes left by each tenth tick
// come to more, in the short run as well.
constexpr double kMoreHeap = 64.0 * 1024;
constexpr double kMoreHandles = 4;
constexpr double kMoreDrawing = 12;
constexpr double kMoreOthers = 2;

std::size_t BytesInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

// Committed pages that belong to this process alone.
std::size_t PrivateBytes() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION pages{};
    const char* at = nullptr;
    while (VirtualQuery(at, &pages, sizeof pages) == sizeof pages) {
        if (pages.State == MEM_COMMIT && pages.Type == MEM_PRIVATE) bytes += pages.RegionSize;
        const char* const next = static_cast<const char*>(pages.BaseAddress) + pages.RegionSize;
        if (next <= at) break;
        at = next;
    }
    return bytes;
}

// Wine does not count handles, but tells of each number whether it is one.
int Handles() {
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) && count != 0)
        return static_cast<int>(count);
    constexpr std::uintptr_t kHighest = 0x4000;
    int handles = 0;
    for (std::uintptr_t number = 4; number < kHighest; number += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags)) ++handles;
    }
    return handles;
}

}  // namespace

Resources CountResources() {
    Resources resources;
    resources.heap = BytesInUse();
    resources.privateBytes = PrivateBytes();
    resources.handles = Handles();
    resources.gui = CountGuiObjects();
    return resources;
}

void ResourceCurve::Add(double partOfDay, double systems) {
    m_samples.push_back({partOfDay, systems, CountResources()});
}

template <class Field>
double ResourceCurve::Mean(double from, double to, Field field) const {
    double sum = 0;
    int count = 0;
    for (const Sample& sample : m_samples) {
        if (sample.partOfDay < from || sample.partOfDay > to) continue;
        sum += static_cast<double>(field(sample));
        ++count;
    }
    EXPECT_GT(count, 0) << "no sample between " << from << " and " << to;
    return count == 0 ? 0 : sum / count;
}

void ResourceCurve::ExpectFlat() const {
    const auto expectFlat = [&](const char* name, double allowance, auto field) {
        const double middle = Mean(0.39, 0.61, field);
        const double end = Mean(0.79, 1.01, field);
        EXPECT_LE(end - middle, allowance) << name << ": " << middle << ", then " << end;
    };
    EXPECT_GT(Mean(0, 1.01, [](const Sample& s) { return s.resources.heap; }), 0);
    EXPECT_GT(Mean(0, 1.01, [](const Sample& s) { return s.resources.handles; }), 0);
    expectFlat("bytes in the heaps", kMoreHeap,
               [](const Sample& s) { return static_cast<double>(s.resources.heap) - s.systems; });
    expectFlat("handles", kMoreHandles, [](const Sample& s) { return s.resources.handles; });
    expectFlat("windows", kMoreOthers, [](const Sample& s) { return s.resources.gui.windows; });
    expectFlat("menus", kMoreOthers, [](const Sample& s) { return s.resources.gui.menus; });
    expectFlat("icons", kMoreOthers, [](const Sample& s) { return s.resources.gui.icons; });
    expectFlat("drawing objects", kMoreDrawing,
               [](const Sample& s) { return s.resources.gui.drawing; });
}

void ResourceCurve::Print() const {
    std::printf(
        "\n| part of the run | heaps, KB | of that left by the system, KB | private, KB | handles "
        "| windows | menus | icons | drawing objects |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const auto& [part, systems, r] : m_samples)
        std::printf("| %.0f %% | %lu | %.0f | %lu | %d | %d | %d | %d | %d |\n", part * 100,
                    static_cast<unsigned long>(r.heap / 1024), systems / 1024,
                    static_cast<unsigned long>(r.privateBytes / 1024), r.handles, r.gui.windows,
                    r.gui.menus, r.gui.icons, r.gui.drawing);
}

}  // namespace quillon::test
