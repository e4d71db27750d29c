#include "soak/resources.h"

#include <gtest/gtest.h>
#include <windows.h>
//
#include <psapi.h>

#include <cstdio>

namespace quillon::test {

namespace {

// What may have come between the middle and the end of a run. A leak of one small object in each
// hundredth tick, or in each edit, comes to more.
constexpr double kMoreHeap = 192.0 * 1024;
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

std::size_t PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return counters.PrivateUsage;
}

}  // namespace

Resources CountResources() {
    Resources resources;
    resources.heap = BytesInUse();
    resources.privateBytes = PrivateBytes();
    GetProcessHandleCount(GetCurrentProcess(), &resources.handles);
    resources.gui = CountGuiObjects();
    return resources;
}

void ResourceCurve::Add(double partOfDay) {
    m_samples.push_back({partOfDay, CountResources()});
}

template <class Field>
double ResourceCurve::Mean(double from, double to, Field field) const {
    double sum = 0;
    int count = 0;
    for (const Sample& sample : m_samples) {
        if (sample.partOfDay < from || sample.partOfDay > to) continue;
        sum += static_cast<double>(field(sample.resources));
        ++count;
    }
    EXPECT_GT(count, 0) << "no sample between " << from << " and " << to;
    return count == 0 ? 0 : sum / count;
}

void ResourceCurve::ExpectFlat() const {
    const auto expectFlat = [&](const char* name, double allowance, auto field) {
        const double middle = Mean(0.4, 0.6, field);
        const double end = Mean(0.8, 1.0, field);
        EXPECT_GT(middle, 0) << name << " are not counted";
        EXPECT_LE(end - middle, allowance) << name << ": " << middle << ", then " << end;
    };
    expectFlat("bytes in the heaps", kMoreHeap, [](const Resources& r) { return r.heap; });
    expectFlat("handles", kMoreHandles, [](const Resources& r) { return r.handles; });
    expectFlat("windows", kMoreOthers, [](const Resources& r) { return r.gui.windows; });
    expectFlat("menus", kMoreOthers, [](const Resources& r) { return r.gui.menus; });
    expectFlat("icons", kMoreOthers, [](const Resources& r) { return r.gui.icons; });
    expectFlat("drawing objects", kMoreDrawing, [](const Resources& r) { return r.gui.drawing; });
}

void ResourceCurve::Print() const {
    std::printf(
        "\n| part of the run | heaps, KB | private, KB | handles | windows | menus | icons "
        "| drawing objects |\n|---|---|---|---|---|---|---|---|\n");
    for (const auto& [part, r] : m_samples)
        std::printf("| %.0f %% | %lu | %lu | %lu | %d | %d | %d | %d |\n", part * 100,
                    static_cast<unsigned long>(r.heap / 1024),
                    static_cast<unsigned long>(r.privateBytes / 1024), r.handles, r.gui.windows,
                    r.gui.menus, r.gui.icons, r.gui.drawing);
}

}  // namespace quillon::test
