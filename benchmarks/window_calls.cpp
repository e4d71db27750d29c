#include <stdexcept>
#include <string>

#include "com/error.h"
#include "device_window.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRows = 250;  // of each of the two kinds
// A variable of the Test list: looked up, then direction, name, key and value text; a property the
// same without a direction.
constexpr int kCallsOfVariable = 5;
constexpr int kCallsOfProperty = 4;
constexpr int kMostOthers = 59;

long CallsToOpen(const Session& session, const Room& room, const WindowRows& rows) {
    const WindowSettings settings(session, rows);
    com::Check(session.Host().Clear());
    OpenDeviceWindow(room);
    const long calls = AllCalls(session);
    CloseDeviceWindows();
    return calls;
}

}  // namespace

void MeasureWindowCalls(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows, .properties = kRows});
    const long others = CallsToOpen(session, room, {});
    const long calls = CallsToOpen(session, room, {.variables = kRows, .properties = kRows});
    const long needed = kRows * (kCallsOfVariable + kCallsOfProperty);
    table.Add({"host calls to open a window with 500 rows",
               "one look-up a row and one read a value that the row needs",
               {static_cast<double>(calls - needed)},
               "more",
               kMostOthers,
               std::to_string(calls) + " calls, " + std::to_string(needed) +
                   " of them for the rows; " + std::to_string(others) + " without rows"});
}

}  // namespace quillon::benchmarks
