#include <stdexcept>
#include <string>

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
constexpr double kMostOwnSeconds = 200e-6;

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

// One look-up and three texts; the collection and the type are on the way to them.
bool ReadsOneValue(const Session& session, HWND window) {
    com::Check(session.Host().Clear());
    Tick(window, kTmrPolling);
    for (const wchar_t* member : {L"IDevice.NetworkVariables", L"Points.Item", L"Point.Value",
                                  L"Point.SNVType", L"Type.InvalidValue", L"Point.FormattedValue"})
        if (session.Calls(member) != 1) return false;
    return AllCalls(session) == 6;
}

void MeasurePolling(const Session& session, const Room& room, HWND window, Table& table) {
    const bool one = ReadsOneValue(session, window);
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
    const Comparison measured = Compare(kRounds, subject, floor);
    const double own = (measured.subject - measured.floor) / kTicks;
    table.Add("a `TmrPolling` tick", "the same host calls",
              Decimals(own * 1e6, 0) + " µs of its own" + (one ? "" : ", other calls"),
              "200 µs; one NV looked up, three texts read", one && own < kMostOwnSeconds,
              "with the calls " + Decimals(measured.subject / kTicks * 1e6, 0) + " µs");
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
    bool invalid = false;
    for (int i = 0; i < kRows; ++i) {
        Tick(window, kTmrNvs);
        invalid = invalid || GetUpdateRect(list, nullptr, FALSE);
    }
    RemoveWindowSubclass(list, OnListMessage, 1);
    table.Add("a `TmrNvs` tick with an unchanged value", "",
              std::to_string(changes.cells) + " list changes, " +
                  (invalid || changes.paints ? "a repaint" : "no repaint"),
              "no repaint, no list change", changes.cells == 0 && changes.paints == 0 && !invalid,
              "each of " + std::to_string(kRows) + " rows once");
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
