#include <sstream>
#include <string>

#include "device_window.h"
#include "heap.h"
#include "late_call.h"
#include "measures.h"
#include "window/gui_objects.h"

namespace quillon::benchmarks {

namespace {

constexpr int kFirst = 10;
constexpr int kLast = 1'000;
constexpr int kRows = 20;

struct Held {
    test::GuiObjects objects;
    Memory memory;
};

Held HeldNow() {
    BarePump();
    return {test::CountGuiObjects(), MemoryInUse()};
}

std::string Text(const test::GuiObjects& objects) {
    std::ostringstream text;
    text << objects;
    return text.str();
}

}  // namespace

void MeasureWindowRounds(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows, .properties = kRows});
    const WindowSettings settings(session, {.variables = kRows, .properties = kRows});
    Held before;
    for (int round = 1; round <= kLast; ++round) {
        OpenDeviceWindow(room);
        CloseDeviceWindows();
        if (round == kFirst) before = HeldNow();
    }
    const Held after = HeldNow();
    table.Add("GDI and USER objects after 1,000 windows", "after 10", Text(after.objects),
              "none more", after.objects == before.objects, "before " + Text(before.objects));
    const double growth = (static_cast<double>(after.memory.heapBytes) /
                               static_cast<double>(before.memory.heapBytes) -
                           1) *
                          100;
    table.Add("heap after 1,000 windows", "after 10", Decimals(growth, 2) + " %", "+ 1 %",
              growth <= 1,
              std::to_string(before.memory.heapBlocks) + " to " +
                  std::to_string(after.memory.heapBlocks) + " blocks");
}

}  // namespace quillon::benchmarks
