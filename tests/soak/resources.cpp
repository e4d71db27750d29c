#include "soak/resources.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "support/process_memory.h"

namespace quillon::test {

namespace {

// What may have come between the middle and the end of a run. Fifty bytes left by each tenth tick
// come to more, in the short run as well.
constexpr double kMoreHeap = 64.0 * 1024;
constexpr double kMoreHandles = 4;
constexpr double kMoreDrawing = 12;
constexpr double kMoreOthers = 2;

}  // namespace

Resources CountResources() {
    Resources resources;
    const Memory memory = MemoryInUse();
    resources.heap = memory.heapBytes;
    resources.privateBytes = memory.privateBytes;
    resources.handles = KernelHandles();
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
