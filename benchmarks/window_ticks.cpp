#include <cstdlib>
#include <string>
#include <utility>

#include <windows.h>
//
#include <commctrl.h>

#include "com/error.h"
#include "com/variant.h"
#include "device_window.h"
#include "host_members.h"
#include "late_call.h"
#include "measures.h"
#include "window/resource.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 101;
constexpr int kTicks = 20;
constexpr int kRows = 20;
constexpr int kTestTab = 2;
constexpr double kMostOwnMicroseconds = 200;

// The window's timers, as its messages name them.
constexpr WPARAM kTmrPolling = 1;
constexpr WPARAM kTmrNvs = 3;

void Tick(HWND window, WPARAM timer) {
    SendMessageW(window, WM_TIMER, timer, 0);
}

void ReadValue(const Room& room, long index) {
    com::Ptr<IDispatch> points;
    com::Check(room.bare->get_NetworkVariables(points.Out()));
    com::Variant key(std::to_wstring(index));
    const com::Variant point = BareGet(points.Get(), host::points::kItem, &key);
    BareGet(point.pdispVal, host::point::kValue);
    const com::Variant type = BareGet(point.pdispVal, host::point::kType);
    BareGet(type.pdispVal, host::type::kInvalidValue);
    BareGet(point.pdispVal, host::point::kFormattedValue);
}

// How far a tick's host calls are from one look-up and three texts, with the collection and the
// type that are on the way to them.
long CallsOffPlan(const Session& session, HWND window) {
    com::Check(session.Host().Clear());
    Tick(window, kTmrPolling);
    const long all = AllCalls(session);
    long planned = 0;
    long off = 0;
    for (const wchar_t* member :
         {L"IDevice.NetworkVariables", L"Points.Item", L"Point.Value", L"Point.SNVType",
          L"Type.InvalidValue", L"Point.FormattedValue"}) {
        const long calls = session.Calls(member);
        planned += calls;
        off += std::abs(calls - 1);
    }
    return off + all - planned;
}

void MeasurePolling(const Session& session, const Room& room, HWND window, Table& table) {
    table.Add({"host calls of a `TmrPolling` tick",
               "one NV looked up, its three texts read",
               {static_cast<double>(CallsOffPlan(session, window))},
               "too many or too few",
               0,
               ""});
    const auto subject = [&] {
        return Seconds([&] {
            for (int i = 0; i < kTicks; ++i) Tick(window, kTmrPolling);
        });
    };
    const auto floor = [&] {
        return Seconds([&] {
            for (int i = 0; i < kTicks; ++i) ReadValue(room, i % 5);
        });
    };
    Comparison measured = Compare(kRounds, subject, floor);
    for (double& own : measured.differences) own *= 1e6 / kTicks;
    table.Add({"own time of a `TmrPolling` tick", "beyond the same host calls",
               std::move(measured.differences), "µs", kMostOwnMicroseconds,
               "with the calls " + TimeText(measured.subject / kTicks)});
}

struct Changes {
    int cells = 0;
    int paints = 0;
};

LRESULT CALLBACK OnListMessage(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR counts) {
    auto& changes = *reinterpret_cast<Changes*>(counts);
    if (message == LVM_SETITEMTEXTW || message == LVM_SETITEMW || message == LVM_REDRAWITEMS)
        ++changes.cells;
    if (message == WM_PAINT) ++changes.paints;
    return DefSubclassProc(list, message, wParam, lParam);
}

void MeasureList(HWND window, Table& table) {
    const HWND tabs = ControlOf(window, IDC_SSTAB1);
    SendMessageW(tabs, TCM_SETCURSEL, kTestTab, 0);
    NMHDR chosen{tabs, IDC_SSTAB1, TCN_SELCHANGE};
    SendMessageW(window, WM_NOTIFY, IDC_SSTAB1, reinterpret_cast<LPARAM>(&chosen));
    const HWND list = ControlOf(window, IDC_LVMONITOR);
    for (int i = 0; i < kRows; ++i) Tick(window, kTmrNvs);
    BarePump();
    UpdateWindow(list);
    Changes changes;
    SetWindowSubclass(list, OnListMessage, 1, reinterpret_cast<DWORD_PTR>(&changes));
    int invalid = 0;
    for (int i = 0; i < kRows; ++i) {
        Tick(window, kTmrNvs);
        if (GetUpdateRect(list, nullptr, FALSE)) ++invalid;
    }
    RemoveWindowSubclass(list, OnListMessage, 1);
    table.Add({"list changes and repaints of a `TmrNvs` tick with an unchanged value",
               "",
               {static_cast<double>(changes.cells + changes.paints + invalid)},
               "",
               0,
               "each of " + std::to_string(kRows) + " rows once"});
}

}  // namespace

void MeasureWindowTicks(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kRows});
    const WindowSettings settings(session, {.variables = kRows});
    const HWND window = OpenDeviceWindow(room);
    MeasurePolling(session, room, window, table);
    MeasureList(window, table);
    CloseDeviceWindows();
}

}  // namespace quillon::benchmarks
