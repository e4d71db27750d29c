#include <stdexcept>

#include "bare_window.h"
#include "device_window.h"
#include "measures.h"
#include "window/resource.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 15;
constexpr int kRows = 250;  // of each of the two kinds

void RequireRows(HWND window) {
    for (const int id : {IDC_LVMONITOR, IDC_LVADVANCEDCPS})
        if (SendMessageW(ControlOf(window, id), LVM_GETITEMCOUNT, 0, 0) != kRows)
            throw std::runtime_error("the window does not show every row");
}

}  // namespace

void MeasureWindowOpening(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows, .properties = kRows});
    const WindowSettings settings(session, {.variables = kRows, .properties = kRows});
    const auto subject = [&] {
        HWND window = nullptr;
        const double seconds = Seconds([&] { window = OpenDeviceWindow(room); });
        RequireRows(window);
        CloseDeviceWindows();
        return seconds;
    };
    const auto floor = [&] {
        BareWindow window(room, settings.File());
        return Seconds([&] { window.Open(); });
    };
    table.AddRatio("opening a window with 500 rows",
                   "the same host and settings reads, the same bare controls and rows", 1.3,
                   Compare(kRounds, subject, floor), 1);
}

}  // namespace quillon::benchmarks
