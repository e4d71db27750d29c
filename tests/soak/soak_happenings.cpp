// What the network and the operator do besides.
#include "com/platform.h"
//
#include <commctrl.h>

#include "com/late.h"
#include "soak/soak_test.h"
#include "soak/value_editor.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

constexpr long kSetpoint = 5;  // nviSetpoint: a row on "Test", and third in the main view
const wchar_t* const kSetpointName = L"nviSetpoint";
const wchar_t* const kTabs[] = {L"Nimbra", L"Test", L"Tune",        L"Hw",
                                L"Setup",  L"Test", L"Calibration", L"General Data"};

int RowOf(HWND list, std::wstring_view name) {
    for (int row = 0; row < ListView_GetItemCount(list); ++row)
        if (CellText(list, row, 0).find(name) != std::wstring::npos) return row;
    return -1;
}

std::wstring StatusText(HWND window, int place) {
    return PanelText(ControlOf(window, IDC_STATUSBAR1), place);
}

}  // namespace

// clang-format off
const std::array<SoakTest::Happening, 9> SoakTest::kHappenings{{
    {"a value told", 30, &SoakTest::TellPoint},
    {"a name told", 300, &SoakTest::TellName},
    {"a device falls silent", 600, &SoakTest::FallSilent},
    {"a plug pulled", 1000, &SoakTest::PullPlug},
    {"another tab", 400, &SoakTest::ChangeTab},
    {"an edit", 900, &SoakTest::EditValue},
    {"an export", 1500, &SoakTest::ExportDevice},
    {"lists read again", 1500, &SoakTest::ReadAgain},
    {"a window closed", 2000, &SoakTest::CloseAndOpen},
}};
// clang-format on

// From 10.00 to 29.99 degrees.
std::wstring SoakTest::NewSetpoint() {
    const std::size_t hundredths = 1000 + m_random.Below(2000);
    const std::wstring digits = std::to_wstring(hundredths);
    return digits.substr(0, 2) + L"." + digits.substr(2);
}

com::Ptr<IDispatch> SoakTest::SetpointOf(const Desk& desk) {
    com::Ptr<IDispatch> points;
    com::Check(desk.host->get_NetworkVariables(points.Out()));
    return com::Get(points.Get(), L"Item", {com::Variant(std::to_wstring(kSetpoint))}).AsObject();
}

void SoakTest::TellPoint(Desk& desk) {
    if (!desk.Answers()) return;
    const std::wstring value = NewSetpoint();
    com::Put(SetpointOf(desk).Get(), L"Value", com::Variant(value));
    com::Bstr point(std::to_wstring(kSetpoint));
    EXPECT_EQ(desk.room->device->NVCPChanged(point.InOut()), S_OK);
    ++m_points.changes;
    const HWND list = ControlOf(desk.window, IDC_LVMONITOR);
    const std::wstring shown = CellText(list, RowOf(list, kSetpointName), 1);
    if (shown.starts_with(value))
        ++m_points.shown;
    else
        ADD_FAILURE() << Narrow(value) << " was told, " << Narrow(shown) << " is shown";
}

void SoakTest::TellName(Desk& desk) {
    if (!desk.Answers()) return;
    const std::wstring name = L"Room " + std::to_wstring(m_random.Below(100000));
    EXPECT_EQ(desk.host->put_Name(com::Bstr(name).Get()), S_OK);
    com::Bstr told(name);
    long reason = 0;
    EXPECT_EQ(desk.room->device->ChangedName(told.InOut(), &reason), S_OK);
    ++m_names.changes;
    if (StatusText(desk.window, 1) == name) ++m_names.shown;
}

void SoakTest::FallSilent(Desk& desk) {
    if (!desk.Answers()) return;
    desk.silentUntil = m_tenth + 20 + static_cast<long>(m_random.Below(130));
    Host().Silence(desk.room->neuron, true);
    ++m_silences;
}

void SoakTest::PullPlug(Desk& desk) {
    if (!desk.Answers()) return;
    desk.absentUntil = m_tenth + 20 + static_cast<long>(m_random.Below(130));
    Host().Plug(Network(), desk.room->neuron, false);
    TellState(desk, L"");
    ++m_silences;
}

void SoakTest::ComeBack(Desk& desk, long tenth) {
    if (desk.silentUntil != 0 && desk.silentUntil <= tenth) {
        desk.silentUntil = 0;
        Host().Silence(desk.room->neuron, false);
    }
    if (desk.absentUntil != 0 && desk.absentUntil <= tenth) {
        desk.absentUntil = 0;
        Host().Plug(Network(), desk.room->neuron, true);
        TellState(desk, L"04");
    }
}

// The state's text in the window is the one in the status bar, and another one than before.
void SoakTest::TellState(Desk& desk, const wchar_t* state) {
    const std::wstring before = StatusText(desk.window, 2);
    com::Bstr text(state);
    long reason = 0;
    EXPECT_EQ(desk.room->device->ChangedStatus(text.InOut(), &reason), S_OK);
    ++m_states.changes;
    const std::wstring shown = StatusText(desk.window, 2);
    if (shown != before && shown == WindowText(ControlOf(desk.window, IDC_LBLDEVSTATE)))
        ++m_states.shown;
}

void SoakTest::ChangeTab(Desk& desk) {
    SelectTabOf(desk, m_random.Pick(kTabs));
}

// Of a device that answers and a window that is not frozen by another one.
void SoakTest::EditValue(Desk& desk) {
    if (!desk.Answers()) return;
    SelectTabOf(desk, L"Test");
    Handle("tick");
    const HWND list = ControlOf(desk.window, IDC_LVMONITOR);
    if (!IsWindowEnabled(ControlOf(desk.window, IDC_SSTAB1))) return;
    const int row = RowOf(list, kSetpointName);
    const std::wstring value = NewSetpoint();
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SetFocus(list);
    TypeIntoNextEditor(value);
    m_gap->Looked("an edit");
    ChooseCommand(desk.window, IDM_EDIT_VALUE);
    EXPECT_TRUE(EditorAnswered()) << "no editor came up";
    EXPECT_TRUE(CellText(list, row, 1).starts_with(value)) << Narrow(CellText(list, row, 1));
    ++m_edits;
}

void SoakTest::ExportDevice(Desk& desk) {
    Export(*desk.room, InFolder(L"out.app"));
    ++m_exports;
}

void SoakTest::ReadAgain(Desk& desk) {
    PressKey(desk.window, VK_F5);
}

void SoakTest::CloseAndOpen(Desk& desk) {
    SendMessageW(desk.window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(desk.window));
    OpenWindow(desk);
}

}  // namespace quillon::test
