#include "window_panel.h"

#include <windows.h>
//
#include <commctrl.h>

#include <charconv>
#include <cmath>
#include <optional>

#include "text.h"
#include "window_resource.h"

namespace quorvex::bench {
namespace {

constexpr int kModeInput = 1;
// A plug-in looks at the inputs now and then, so that a short press is held until one look is sure
// to see it.
constexpr UINT kShortestPress = 700;

constexpr std::pair<int, long> kInputs[] = {{IDC_INPUT_1, 0}, {IDC_INPUT_3, 2}, {IDC_INPUT_4, 3}};

constexpr int kControls[] = {
    IDC_PLUGGED,         IDC_STATUS,      IDC_STATUS_SPIN, IDC_TEMPERATURE_NEW,
    IDC_TEMPERATURE_SET, IDC_COUNTS,      IDC_COUNTS_SPIN, IDC_COUNTS_AUTOMATIC,
    IDC_SWITCH_LOW,      IDC_SWITCH_HIGH, IDC_INPUT_1,     IDC_INPUT_3,
    IDC_INPUT_4,         IDC_MODE};

std::wstring Decimal(double number) {
    char digits[64];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, 2).ptr;
    return {digits, end};
}

// Either decimal separator; nullopt for anything else than a number.
std::optional<double> NumberOf(const std::wstring& text) {
    std::string digits = Utf8FromWide(text);
    for (char& c : digits)
        if (c == ',') c = '.';
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return std::nullopt;
    return number;
}

std::optional<long> WholeNumberOf(const std::wstring& text, long least, long most) {
    const auto number = NumberOf(text);
    if (!number || *number < least || *number > most || std::trunc(*number) != *number)
        return std::nullopt;
    return static_cast<long>(*number);
}

}  // namespace

void PanelView::Attach(HWND window) {
    m_window = window;
    const auto range = [&](int id, int least, int most) {
        SendDlgItemMessageW(window, id, UDM_SETRANGE32, static_cast<WPARAM>(least), most);
    };
    range(IDC_STATUS_SPIN, 0, 255);
    range(IDC_COUNTS_SPIN, -32768, 32767);
    SendDlgItemMessageW(window, IDC_STATUS, EM_LIMITTEXT, 3, 0);
    SendDlgItemMessageW(window, IDC_COUNTS, EM_LIMITTEXT, 6, 0);
    SendDlgItemMessageW(window, IDC_TEMPERATURE_NEW, EM_LIMITTEXT, 6, 0);
    SetWindowSubclass(GetDlgItem(window, IDC_MODE), OnModeButton, 0,
                      reinterpret_cast<DWORD_PTR>(this));
    Choose(nullptr);
}

void PanelView::Choose(const Room* room) {
    if (m_modeRoom && m_modeRoom != room) ReleaseMode();
    m_room = room;
    ShowText(IDC_PANEL_GROUP, room ? room->name : L"No device is chosen");
    for (const int id : kControls) EnableWindow(GetDlgItem(m_window, id), room != nullptr);
    Refresh();
}

void PanelView::Refresh() {
    if (!m_room) return;
    const RoomNow now = m_host.Now(*m_room);
    m_filling = true;
    ShowCheck(IDC_PLUGGED, !now.state.empty());
    ShowText(IDC_STATUS, std::to_wstring(now.status));
    ShowText(IDC_STATUS_HINT, now.status == 0 ? L"healthy" : L"failure");
    ShowText(IDC_TEMPERATURE_NOW, Decimal(now.celsius) + L" \u00B0C");
    ShowText(IDC_COUNTS, std::to_wstring(now.counts));
    ShowCheck(IDC_COUNTS_AUTOMATIC, !now.countsFixed);
    ShowCheck(IDC_SWITCH_LOW, !now.switchHigh);
    ShowCheck(IDC_SWITCH_HIGH, now.switchHigh);
    ShowText(IDC_SWITCH_VOLTS, L"A tester shows " + Decimal(now.volts) + L" V");
    for (const auto& [id, index] : kInputs) ShowCheck(id, (now.inputs >> index & 1) != 0);
    ShowText(IDC_MODE_STATE,
             (now.inputs >> kModeInput & 1) ? L"Input 2 (MODE) is on" : L"Input 2 (MODE) is off");
    m_filling = false;
}

void PanelView::ShowText(int id, const std::wstring& text) {
    const HWND control = GetDlgItem(m_window, id);
    // Of the controls here only fields can have the focus and get a text.
    if (GetFocus() == control || TextOf(id) == text) return;
    SetWindowTextW(control, text.c_str());
}

void PanelView::ShowCheck(int id, bool on) {
    const UINT wanted = on ? BST_CHECKED : BST_UNCHECKED;
    if (IsDlgButtonChecked(m_window, id) != wanted) CheckDlgButton(m_window, id, wanted);
}

std::wstring PanelView::TextOf(int id) const {
    wchar_t text[128];
    return {text, static_cast<std::size_t>(
                      GetDlgItemTextW(m_window, id, text, static_cast<int>(std::size(text))))};
}

bool PanelView::OnCommand(int id, int code) {
    if (id < IDC_PANEL_GROUP || id > IDC_MODE_STATE) return false;
    if (!m_room || m_filling) return true;
    const bool checked = IsDlgButtonChecked(m_window, id) == BST_CHECKED;
    if (code == EN_CHANGE) {
        if (id == IDC_STATUS) ReadStatus();
        if (id == IDC_COUNTS) ReadCounts();
        return true;
    }
    if (code != BN_CLICKED) return true;
    for (const auto& [input, index] : kInputs)
        if (input == id) m_host.SetInput(*m_room, index, checked);
    switch (id) {
        case IDC_PLUGGED:
            m_host.Plug(*m_room, checked);
            break;
        case IDC_TEMPERATURE_SET:
            ReadTemperature();
            break;
        case IDC_COUNTS_AUTOMATIC:
            m_host.SetAnalog(
                *m_room,
                checked ? std::nullopt
                        : std::optional(static_cast<std::int16_t>(m_host.Now(*m_room).counts)));
            break;
        case IDC_SWITCH_LOW:
        case IDC_SWITCH_HIGH:
            m_host.SetCalibrationSwitch(*m_room, id == IDC_SWITCH_HIGH);
            break;
        default:
            break;
    }
    Refresh();
    return true;
}

// A field that holds no such number yet is being typed into.
void PanelView::ReadStatus() {
    if (const auto status = WholeNumberOf(TextOf(IDC_STATUS), 0, 255))
        m_host.SetApplicationStatus(*m_room, static_cast<unsigned char>(*status));
    Refresh();
}

void PanelView::ReadCounts() {
    if (const auto counts = WholeNumberOf(TextOf(IDC_COUNTS), -32768, 32767))
        m_host.SetAnalog(*m_room, static_cast<std::int16_t>(*counts));
    Refresh();
}

void PanelView::ReadTemperature() {
    const std::wstring text = TextOf(IDC_TEMPERATURE_NEW);
    const auto celsius = NumberOf(text);
    if (!celsius) throw Failure{L"\"" + text + L"\" is no temperature"};
    m_host.SetTemperature(*m_room, *celsius);
    SetDlgItemTextW(m_window, IDC_TEMPERATURE_NEW, L"");
}

// The button is highlighted for as long as mouse or space bar hold it down.
LRESULT CALLBACK PanelView::OnModeButton(HWND button, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR panel) noexcept {
    try {
        auto* const self = reinterpret_cast<PanelView*>(panel);
        if (message == BM_SETSTATE) self->PressMode(wParam != FALSE);
        if (message == WM_KILLFOCUS) self->PressMode(false);
        if (message == WM_NCDESTROY) RemoveWindowSubclass(button, OnModeButton, 0);
    } catch (...) {
        // Nothing C++ may cross the system; the panel shows the input as it is.
    }
    return DefSubclassProc(button, message, wParam, lParam);
}

void PanelView::PressMode(bool down) {
    if (down && m_room && !m_modeRoom) {
        m_host.SetInput(*m_room, kModeInput, true);
        m_modeRoom = m_room;
        m_modeSince = GetTickCount64();
    } else if (!down && m_modeRoom) {
        const ULONGLONG held = GetTickCount64() - m_modeSince;
        if (held < kShortestPress) {
            SetTimer(m_window, kModeTimer, static_cast<UINT>(kShortestPress - held), nullptr);
            return;
        }
        ReleaseMode();
    }
    Refresh();
}

void PanelView::OnModeTimer() {
    KillTimer(m_window, kModeTimer);
    const bool stillDown =
        (SendDlgItemMessageW(m_window, IDC_MODE, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    if (!stillDown) ReleaseMode();
    Refresh();
}

void PanelView::ReleaseMode() {
    if (!m_modeRoom) return;
    const Room& room = *std::exchange(m_modeRoom, nullptr);
    m_host.SetInput(room, kModeInput, false);
}

}  // namespace quorvex::bench
