#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bare_window.h"
#include "device_window.h"
#include "late_call.h"
#include "measures.h"
#include "support/process_memory.h"
#include "window/gui_objects.h"

namespace quillon::benchmarks {

namespace {

constexpr int kFirst = 10;
constexpr int kLater = 500;  // from here on a slope is drawn
constexpr int kStep = 50;
constexpr int kLast = 1'000;
constexpr int kBare = 250;
constexpr int kRows = 20;
constexpr double kMostPercent = 1;
// Of a slope in a thousand windows: what a window leaves behind would make it a thousand.
constexpr double kMostObjects = 10;

struct Held {
    double round = 0;
    test::GuiObjects gui;
    test::Memory memory;
    double handles = 0;
};

double AllOf(const test::GuiObjects& gui) {
    return gui.windows + gui.menus + gui.icons + gui.drawing;
}

// What is more in no kind is not made up for by what is less in another.
double MoreOf(const test::GuiObjects& after, const test::GuiObjects& before) {
    return std::max(0, after.windows - before.windows) + std::max(0, after.menus - before.menus) +
           std::max(0, after.icons - before.icons) + std::max(0, after.drawing - before.drawing);
}

Held HeldNow(int round) {
    BarePump();
    return {static_cast<double>(round), test::CountGuiObjects(), test::MemoryInUse(),
            static_cast<double>(test::KernelHandles())};
}

// What was held after the first rounds, and now and then after the later ones.
struct Course {
    Held early;
    std::vector<Held> later;
};

template <class F>
Course Run(int from, int last, F&& once) {
    Course course;
    for (int round = 1; round <= last; ++round) {
        once();
        if (round == kFirst) course.early = HeldNow(round);
        if (round >= from && round % kStep == 0) course.later.push_back(HeldNow(round));
    }
    return course;
}

// How much more a thousand further rounds would hold, by the straight line nearest to the samples.
template <class F>
double Slope(const std::vector<Held>& samples, F&& value) {
    double rounds = 0;
    double values = 0;
    for (const Held& held : samples) {
        rounds += held.round;
        values += value(held);
    }
    rounds /= static_cast<double>(samples.size());
    values /= static_cast<double>(samples.size());
    double products = 0;
    double squares = 0;
    for (const Held& held : samples) {
        products += (held.round - rounds) * (value(held) - values);
        squares += (held.round - rounds) * (held.round - rounds);
    }
    return products / squares * 1000;
}

std::string Text(const test::GuiObjects& objects) {
    std::ostringstream text;
    text << objects;
    return text.str();
}

std::string Kilobytes(double bytes) {
    return Decimals(bytes / 1024, 1) + " KB";
}

// What a memory figure is taken from. The plug-in takes all memory from heaps, whose every block is
// counted; private bytes also hold pages that the system takes for its own work on windows.
struct Kind {
    const char* name;
    std::optional<double> limit;
    double (*value)(const Held& held);
};

constexpr Kind kKinds[] = {
    {"heap", kMostPercent,
     [](const Held& held) { return static_cast<double>(held.memory.heapBytes); }},
    {"private bytes", std::nullopt,
     [](const Held& held) { return static_cast<double>(held.memory.privateBytes); }},
};

void AddObjects(Table& table, const Course& windows) {
    const Held& early = windows.early;
    const std::vector<Held>& later = windows.later;
    const Held& last = later.back();
    table.Add({"GDI and USER objects after 1,000 windows opened and closed",
               "after 10",
               {MoreOf(last.gui, early.gui)},
               "more",
               0,
               Text(last.gui)});
    table.Add({"their slope over the last 500 windows",
               "",
               {Slope(later, [](const Held& held) { return AllOf(held.gui); })},
               "in 1,000",
               kMostObjects,
               ""});
    table.Add(
        {"slope of kernel handles over the last 500 windows",
         "",
         {Slope(later, [](const Held& held) { return held.handles; })},
         "in 1,000",
         kMostObjects,
         Decimals(early.handles, 0) + " after 10, " + Decimals(last.handles, 0) + " after 1,000"});
}

// The system's own controls may leave memory behind, which no program can help. What they leave in
// a round shows where the same dialogs are opened with nothing behind them, and does not count.
void AddMemory(Table& table, const Kind& kind, const Course& windows, const Course& bare) {
    const double first = kind.value(windows.early);
    const double last = kind.value(windows.later.back());
    const Held& bareLast = bare.later.back();
    const double left =
        (kind.value(bareLast) - kind.value(bare.early)) / (bareLast.round - bare.early.round);
    const double ofSystem = left * (windows.later.back().round - windows.early.round);
    table.Add({std::string(kind.name) + " after 1,000 windows, less what bare dialogs leave",
               "after 10",
               {(last - ofSystem - first) / first * 100},
               "% more",
               kind.limit,
               Kilobytes(first) + " to " + Kilobytes(last) + ", of which " + Kilobytes(ofSystem) +
                   " is the system's"});
    table.Add({"its slope over the last 500 windows",
               kind.name,
               {(Slope(windows.later, kind.value) - left * 1000) / first * 100},
               "% in 1,000",
               kind.limit,
               ""});
}

}  // namespace

void MeasureWindowRounds(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows, .properties = kRows});
    const WindowSettings settings(session, {.variables = kRows, .properties = kRows});
    const Course windows = Run(kLater, kLast, [&] {
        OpenDeviceWindow(room);
        CloseDeviceWindows();
    });
    const Course bare = Run(kBare, kBare, [&] { BareWindow(room, settings.File()).Open(); });
    AddObjects(table, windows);
    for (const Kind& kind : kKinds) AddMemory(table, kind, windows, bare);
}

}  // namespace quillon::benchmarks
