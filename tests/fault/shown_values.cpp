#include "fault/shown_values.h"

#include <commctrl.h>

#include <map>

#include "com/late.h"
#include "fault/device_window.h"
#include "fault/operations.h"
#include "host_members.h"
#include "support/drawn_colors.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

constexpr int kLists[] = {IDC_LVMONITOR, IDC_LVADVANCEDCPS, IDC_LVCPS, IDC_LVCOV};
// A value that nothing was heard of for 15 intervals is greyed; the first silent one finds it out.
constexpr int kRounds = 17;

struct Shown {
    std::wstring name;
    std::wstring text;
    bool greyed = false;
};

struct Current {
    std::wstring text;
    bool invalid = false;
};

std::wstring TextOf(IDispatch* object, const wchar_t* member) {
    return com::Get(object, member).AsText();
}

// By names and, the variables, by keys as well.
std::map<std::wstring, Current> CurrentValues(IDevice* host) {
    std::map<std::wstring, Current> values;
    const auto add = [&](IDispatch* points, bool byKey) {
        const com::Ptr<IEnumVARIANT> all = com::Enumerate(points);
        com::Variant item;
        while (all->Next(1, &item, nullptr) == S_OK) {
            const auto point = item.AsObject();
            const auto type = com::Get(point.Get(), host::point::kType).AsObject();
            const Current current{TextOf(point.Get(), host::point::kFormattedValue),
                                  TextOf(point.Get(), host::point::kValue) ==
                                      TextOf(type.Get(), host::type::kInvalidValue)};
            values[TextOf(point.Get(), host::point::kName)] = current;
            if (byKey) values[TextOf(point.Get(), host::point::kKey)] = current;
            item = com::Variant();
        }
    };
    com::Ptr<IDispatch> points;
    com::Check(host->get_NetworkVariables(points.Out()));
    add(points.Get(), true);
    com::Check(host->get_ConfigProperties(points.Out()));
    add(points.Get(), false);
    return values;
}

std::vector<Shown> ShownValues(HWND window) {
    std::vector<Shown> values;
    for (int label = 0; label < kMainViewLabels; ++label) {
        const HWND control = ControlOf(window, IDC_LBLNV_FIRST + label);
        values.push_back({kMainViewKeys[label], WindowText(control), IsLabelGreyed(control)});
    }
    for (const int id : kLists) {
        const HWND list = ControlOf(window, id);
        for (int row = 0; row < ListView_GetItemCount(list); ++row)
            values.push_back(
                {CellText(list, row, 0), CellText(list, row, 1), IsRowGreyed(list, row)});
    }
    return values;
}

bool IsTrue(const Shown& shown, const std::map<std::wstring, Current>& values) {
    // What the host gives for a value of a device that does not answer.
    if (shown.text.empty() || shown.text == L"?" || shown.greyed) return true;
    const auto found = values.find(shown.name);
    if (found == values.end()) return false;
    return shown.text == found->second.text || (found->second.invalid && shown.text == L"Invalid");
}

}  // namespace

void PollAll(HWND window) {
    for (int round = 0; round < kRounds && IsWindow(window); ++round) {
        TickTimer(window, Timer::kPolling);
        for (int row = 0; row < kMonitoredRows; ++row) TickTimer(window, Timer::kNvs);
    }
}

std::vector<std::wstring> OldValuesShown(HWND window, IDevice* host) {
    std::vector<std::wstring> old;
    if (!window) return old;
    const auto values = CurrentValues(host);
    for (const Shown& shown : ShownValues(window))
        if (!IsTrue(shown, values)) old.push_back(shown.name + L": " + shown.text);
    return old;
}

}  // namespace quillon::test
