// frmVantor: the five timers and what each tick does.
#include "com/error.h"
#include "plugin/process_state.h"
#include "window/app_status.h"
#include "window/frmVantor.h"
#include "window/host_points.h"
#include "window/view_lists.h"

namespace quillon {

namespace {

std::size_t PlaceOf(int timer) {
    return static_cast<std::size_t>(timer) - 1;
}

}  // namespace

void frmVantor::SetPollingRate(float rate) {
    StartTimer(Timer::kTmrPolling, PollingInterval(rate));
    StartTimer(Timer::kTmrAppStatus, kAppStatusInterval);
}

void frmVantor::StartTimer(Timer timer, std::uint32_t interval) {
    m_intervals[PlaceOf(static_cast<int>(timer))] = interval;
    if (interval == 0)
        KillTimer(Handle(), static_cast<UINT_PTR>(timer));
    else
        SetTimer(Handle(), static_cast<UINT_PTR>(timer), interval, nullptr);
}

std::uint32_t frmVantor::Interval(Timer timer) const {
    return m_intervals[PlaceOf(static_cast<int>(timer))];
}

// A tick whose own handler is still at work further out is left out, and so is one while the window
// loads, for it does not know yet what to read. A failing host call ends the tick.
void frmVantor::Tick(Timer timer) {
    const std::size_t place = PlaceOf(static_cast<int>(timer));
    if (place >= kTimers || m_ticking[place] || m_loading || !m_device) return;
    m_ticking[place] = true;
    const com::Ptr<CDevice> hold = m_object;
    com::Quietly([&] {
        switch (timer) {
            case Timer::kTmrPolling:
                OnTmrPolling();
                break;
            case Timer::kTmrAppStatus:
                OnTmrAppStatus();
                break;
            case Timer::kTmrNvs:
                OnTmrNvs();
                break;
            case Timer::kTmrHw:
                OnTmrHw();
                break;
            case Timer::kTimer1:
                OnTimer1();
                break;
        }
    });
    m_ticking[place] = false;
    // The tick may have thawed the window.
    UpdateWhenDue();
}

com::Ptr<IDispatch> frmVantor::NetworkVariables() {
    com::Ptr<IDispatch> points;
    com::Check(m_device->get_NetworkVariables(points.Out()));
    return points;
}

void frmVantor::OnTmrPolling() {
    CountStaleness();
    if (Process().freeze && RestsWhileFrozen(m_stateNumber)) return;
    const auto answered =
        com::Quietly([&] { return std::optional(ReadMainViewLabel(m_mainView.Index())); });
    m_pollFailed = !answered;
    if (answered.value_or(false)) m_mainView.Advance();
}

bool frmVantor::ReadMainViewLabel(int index) {
    const auto place = static_cast<std::size_t>(index);
    const auto number = EntryNumber(m_mainViewTags[place]);
    if (!number) throw com::Error(DISP_E_OVERFLOW);
    const com::Ptr<IDispatch> point =
        FindPoint(NetworkVariables().Get(), com::Variant(std::to_wstring(*number)));
    const LiveReading reading = ReadLivePoint(point.Get(), [&] { Thaw(); });
    if (!IsOpen()) return false;
    if (reading.silent) {
        SetFreeze(true);
        return false;
    }
    Page& page = PageAt(kTabMain);
    page.SetItemText(IDC_LBLNV_FIRST + index, reading.text);
    if (m_mainViewAge[place].Read()) page.SetGreyed(IDC_LBLNV_FIRST + index, false);
    return true;
}

// Values grow old only while the device does not answer; those of the main view also while reading
// one of them fails, for the others wait behind it. The flag alone does not tell: another window's
// device, which answers, clears it.
void frmVantor::CountStaleness() {
    const bool silent = Process().freeze || m_disabledByFreeze;
    for (std::size_t i = 0; i < m_mainViewAge.size(); ++i)
        if (m_mainViewAge[i].Pass(silent || m_pollFailed))
            PageAt(kTabMain).SetGreyed(IDC_LBLNV_FIRST + static_cast<int>(i), true);
    for (std::size_t row = 0; row < m_monitorAge.size(); ++row)
        if (m_monitorAge[row].Pass(silent)) m_lvMonitor.SetStale(row, true);
}

void frmVantor::OnTmrNvs() {
    if (Process().freeze) return;
    const auto count = static_cast<std::int32_t>(m_lvMonitor.Rows().size());
    m_monitorRow = NextRow(m_monitorRow, count);
    if (count == 0) return;
    const auto row = static_cast<std::size_t>(m_monitorRow) - 1;
    const std::wstring rowKey = m_lvMonitor.Rows()[row].key;
    const std::wstring key = ItemKey(rowKey);
    const auto reading = com::Quietly([&] {
        const com::Ptr<IDispatch> point = FindPoint(NetworkVariables().Get(), com::Variant(key));
        return std::optional(ReadLivePoint(point.Get(), [&] { Thaw(); }));
    });
    if (!IsOpen()) return;
    if (reading && reading->silent) {
        SetFreeze(true);
        return;
    }
    if (row >= m_lvMonitor.Rows().size() || m_lvMonitor.Rows()[row].key != rowKey) return;
    if (reading)
        ShowReading(m_lvMonitor, row, reading);
    else if (row < m_monitorAge.size() && m_monitorAge[row].Pass(true))
        m_lvMonitor.SetStale(row, true);
}

void frmVantor::OnTmrHw() {
    const auto inputs = com::Quietly([&] { return ReadInputs(); });
    if (!IsOpen()) return;
    if (!inputs) {
        if (m_inputsAge.Pass(true)) GreyInputs(true);
        return;
    }
    if (m_inputsAge.Read()) GreyInputs(false);
    PageAt(kTabCalibration).SetItemText(IDC_LBLCOUNTS, std::to_wstring(inputs->count));
    ShowInputs(DigitalInputs(inputs->bits));
    if (m_tab == kTabCalibration) CalibrationStep(inputs->count, inputs->bits);
}

std::optional<frmVantor::Inputs> frmVantor::ReadInputs() {
    if (Process().freeze) return std::nullopt;
    short analog[4] = {};
    unsigned char inputs = 0;
    unsigned char unused = 0;
    long status = 0;
    com::Check(m_deviceEx->ReadInputs(&analog[0], &analog[1], &analog[2], &analog[3], &inputs,
                                      &unused, &status));
    if (status != 0) return std::nullopt;
    return Inputs{analog[0], inputs};
}

void frmVantor::GreyInputs(bool greyed) {
    PageAt(kTabCalibration).SetGreyed(IDC_LBLCOUNTS, greyed);
    for (int id = IDC_LEDTEXT_FIRST; id <= IDC_LEDTEXT_LAST; ++id)
        PageAt(kTabHw).SetGreyed(id, greyed);
}

void frmVantor::ShowInputs(const std::array<bool, 4>& states) {
    Page& page = PageAt(kTabHw);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const std::wstring text =
            L"Digital input " + std::to_wstring(i + 1) + (states[i] ? L": on" : L": off");
        const int textId = IDC_LEDTEXT_FIRST + static_cast<int>(i);
        if (page.ItemText(textId) == text) continue;
        page.SetItemText(textId, text);
        SendMessageW(page.Item(IDC_LED_FIRST + static_cast<int>(i)), STM_SETICON,
                     reinterpret_cast<WPARAM>(states[i] ? m_ledOn : m_ledOff), 0);
    }
}

void frmVantor::OnTmrAppStatus() {
    if (Process().freeze) return;
    unsigned char status = 0;
    com::Check(m_deviceEx->get_VantorAppStatus(&status));
    if (!IsOpen()) return;
    const AppStatusView view = AfterStatus(status, m_caption);
    SetCaptionAndIcon(view.caption, view.failureIcon);
}

void frmVantor::OnTimer1() {
    short analog[4] = {};
    unsigned char first = 0;
    unsigned char second = 0;
    long status = 0;
    com::Check(m_deviceEx->ReadOutputs(&analog[0], &analog[1], &analog[2], &analog[3], &first,
                                       &second, &status));
    if (status == 0) m_outputFlag = OutputFlag(first);
}

// ---- freezing

bool frmVantor::Freeze() const {
    return Process().freeze;
}

void frmVantor::SetFreeze(bool freeze) {
    Process().freeze = freeze;
    ApplyFreeze(freeze);
}

// The device has answered.
void frmVantor::Thaw() {
    if (IsOpen() && (Process().freeze || m_disabledByFreeze)) SetFreeze(false);
}

// Disables tabs, pages and the Action menu of this window, or enables them again. The focus leaves
// a page first: a disabled control that keeps it would swallow every key.
void frmVantor::ApplyFreeze(bool freeze) {
    if (m_disabledByFreeze == freeze) return;
    m_disabledByFreeze = freeze;
    const HWND focus = GetFocus();
    const bool ours = focus && (focus == Handle() || IsChild(Handle(), focus));
    if (freeze && ours) SetFocus(Handle());
    EnableWindow(Item(IDC_SSTAB1), !freeze);
    for (const auto& page : m_pages) EnableWindow(page->Handle(), !freeze);
    if (!freeze && ours) SetFocus(Item(IDC_SSTAB1));
    UpdateActionMenu();
}

}  // namespace quillon
