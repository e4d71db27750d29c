#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/error.h"
#include "device_window.h"
#include "measures.h"
#include "stamp.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRows = 2'000;
constexpr double kMostMilliseconds = 20;

// From the last text that the last row needs to the next thing that the host is asked, for General
// Data: all rows go into the list in between, and no message is handled.
double SecondsOfFilling(const Session& session, const Room& room) {
    const com::Ptr<Stamp> begin = com::Make<Stamp>();
    const com::Ptr<Stamp> end = com::Make<Stamp>();
    com::Check(session.Host().Clear());
    Arm(session, L"Point.FormattedValue", kRows, begin.Get());
    OpenDeviceWindow(room);
    CloseDeviceWindows();
    const long reads = session.Calls(L"IDevice.ProgramId.get");
    com::Check(session.Host().Clear());
    Arm(session, L"Point.FormattedValue", kRows, begin.Get());
    Arm(session, L"IDevice.ProgramId.get", reads, end.Get());
    OpenDeviceWindow(room);
    CloseDeviceWindows();
    if (begin->Calls() != 2 || end->Calls() != 1 || end->Time() < begin->Time())
        throw std::runtime_error("the rows were not read as expected");
    return end->Time() - begin->Time();
}

}  // namespace

void MeasureWindowLoops(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows});
    const WindowSettings settings(session, {.variables = kRows});
    SecondsOfFilling(session, room);
    std::vector<double> times;
    for (int sample = 0; sample < kSamples; ++sample)
        times.push_back(SecondsOfFilling(session, room) * 1e3);
    const auto [shortest, longest] = std::minmax_element(times.begin(), times.end());
    const std::string detail = Decimals(*shortest, 1) + " to " + Decimals(*longest, 1) + " ms";
    table.Add({"filling a list with 2,000 rows, between two looks at messages", "", times, "ms",
               kMostMilliseconds, detail});
}

}  // namespace quillon::benchmarks
