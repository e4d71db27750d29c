// frmVantor: loading, and reading again what was loaded.
#include <utility>

#include "com/module.h"
#include "com/variant.h"
#include "plugin/MMain.h"
#include "plugin/process_state.h"
#include "plugin/settings_text.h"
#include "ui/module.h"
#include "ui/pump.h"
#include "window/frmVantor.h"
#include "window/host_points.h"
#include "window/mCalibra.h"
#include "window/view_lists.h"

namespace quillon {

namespace {

const wchar_t* const kLabelFileName = L"Selezionare modello Ostel New dalla lista";

const wchar_t* const kSettings = L"Settings";

// More rows than these would keep messages waiting while the list takes them.
constexpr std::size_t kRowsAtOnce = 200;

template <class Device, class I>
std::wstring TextOf(com::Ptr<Device> device, HRESULT (STDMETHODCALLTYPE I::*member)(BSTR*)) {
    if (!device) throw com::Error(E_POINTER);
    com::Bstr text;
    com::Check((device.Get()->*member)(text.Out()));
    return text.Text();
}

HICON LoadOwnIcon(const wchar_t* name) {
    return static_cast<HICON>(LoadImageW(ui::OwnModule(), name, IMAGE_ICON, 0, 0, LR_DEFAULTSIZE));
}

}  // namespace

// Without a part of its settings for want of memory it would show one value for another: it does
// not come up.
void frmVantor::Load() {
    m_loading = true;
    const unsigned shortages = com::Shortages();
    com::Quietly([&] { LoadSteps(); });
    m_loading = false;
    if (!IsOpen()) return;
    if (com::Shortages() != shortages) return Unload();
    Show(nullptr);
    UpdateWhenDue();
}

// Every step stands alone: one that fails is left out and the next goes on.
void frmVantor::LoadSteps() {
    PageAt(kTabLabelPrint).SetItemText(IDC_LABELFILENAME, kLabelFileName);
    PageAt(kTabLabelPrint).SetItemText(IDC_LABELCOMSETTINGS, L"");
    Process().freeze = false;
    com::Quietly([&] {
        if (const auto name = SettingsFileName(TextOf(m_device, &IDevice::get_PollingPID)))
            m_settingsPath = com::ModuleFolder() + L"\\" + *name;
    });
    if (!IsOpen()) return;
    if (Process().settingsPath.empty()) Process().settingsPath = m_settingsPath;
    m_htmlHelp = ReadSetting(kSettings, L"HtmlHelp");
    FillTabs(ShowsHardware(ReadSetting(kSettings, L"DisplayHW")));
    VARIANT_BOOL available = VARIANT_FALSE;
    com::Quietly([&] { com::Check(m_deviceEx->get_ApplDownloadAvailable(&available)); });
    if (!IsOpen()) return;
    ShowApplicationMenu(available != VARIANT_FALSE);
    if (!IsOpen()) return;
    for (const auto& [control, list] : m_listOf) list->SetImages(m_ilSmall);
    m_icon = LoadOwnIcon(L"Vantor");
    m_failureIcon = LoadOwnIcon(L"VantorERROR");
    SetCaptionAndIcon(m_caption, false);
    ReadSourceList(kTabTest, IDC_LSTNVIS, L"TestNVIs", true);
    ReadSourceList(kTabTest, IDC_LSTNCIS, L"CommissioningNCIs", false);
    ReadSourceList(kTabTune, IDC_LSTCPS, L"CommissioningCPs", false);
    for (std::size_t i = 0; i < m_mainViewTags.size(); ++i)
        m_mainViewTags[i] = ReadSetting(L"MainView", std::to_wstring(i));
    BuildLists();
    if (!IsOpen()) return;
    ShowGeneralData();
    PageAt(kTabCalibration).SetItemText(IDC_LBLISTRUZIONI, kInstructions);
    SSCalibrations_Click();
    if (!IsOpen()) return;
    StartTimer(Timer::kTimer1, kOutputInterval);
    RefreshName();
    RefreshState();
    if (!IsOpen()) return;
    SelectTab(kTabMain);
    SetFocus(Item(IDC_SSTAB1));
}

std::wstring frmVantor::ReadSetting(const wchar_t* section, const std::wstring& key) const {
    return com::Quietly([&] { return ReadIniValue(m_settingsPath, section, key); });
}

void frmVantor::ReadSourceList(int tab, int listBox, const wchar_t* section, bool numbers) {
    const HWND control = PageAt(tab).Item(listBox);
    SendMessageW(control, LB_RESETCONTENT, 0, 0);
    com::Quietly([&] {
        const auto read = [&](const std::wstring& key) { return ReadSetting(section, key); };
        for (const std::wstring& entry : ReadViewEntries(read)) {
            const auto text = numbers ? NumberEntry(entry) : std::optional(entry);
            if (text)
                SendMessageW(control, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text->c_str()));
        }
    });
}

std::vector<std::wstring> frmVantor::SourceEntries(int tab, int listBox) {
    const HWND control = PageAt(tab).Item(listBox);
    std::vector<std::wstring> entries;
    const LRESULT count = SendMessageW(control, LB_GETCOUNT, 0, 0);
    for (LRESULT place = 0; place < count; ++place) {
        const auto index = static_cast<WPARAM>(place);
        std::wstring text(
            static_cast<std::size_t>(SendMessageW(control, LB_GETTEXTLEN, index, 0)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(
            SendMessageW(control, LB_GETTEXT, index, reinterpret_cast<LPARAM>(text.data()))));
        entries.push_back(std::move(text));
    }
    return entries;
}

void frmVantor::BuildLists() {
    ReadSourceList(kTabSetup, IDC_LSTADVANCEDNCIS, L"AdvancedNCIs", false);
    ReadSourceList(kTabSetup, IDC_LSTADVANCEDCPS, L"AdvancedCPs", false);
    ReadSourceList(kTabTune, IDC_LSTCOV, L"ChangeOfValueCPs", false);
    for (RowList* list : {&m_lvAdvancedCPs, &m_lvCOV, &m_lvCPs, &m_lvMonitor}) list->Clear();
    m_monitorAge.clear();
    AppendRows(m_lvAdvancedCPs, SourceEntries(kTabSetup, IDC_LSTADVANCEDNCIS), RowsOf::kVariables);
    AppendRows(m_lvAdvancedCPs, SourceEntries(kTabSetup, IDC_LSTADVANCEDCPS), RowsOf::kProperties);
    AppendRows(m_lvCOV, SourceEntries(kTabTune, IDC_LSTCOV), RowsOf::kProperties);
    AppendRows(m_lvCPs, SourceEntries(kTabTest, IDC_LSTNCIS), RowsOf::kVariables);
    AppendRows(m_lvCPs, SourceEntries(kTabTune, IDC_LSTCPS), RowsOf::kProperties);
    AppendRows(m_lvMonitor, SourceEntries(kTabTest, IDC_LSTNVIS), RowsOf::kMonitoredVariables);
    m_monitorAge.assign(m_lvMonitor.Rows().size(), Staleness());
}

// An entry that names nothing adds no row. Messages are handled before each look-up, so the window
// may be gone in between.
void frmVantor::AppendRows(RowList& list, const std::vector<std::wstring>& entries, RowsOf kind) {
    if (!IsOpen() || entries.empty()) return;
    const com::Ptr<IDispatch> points = com::Quietly([&] {
        com::Ptr<IDispatch> all;
        com::Check(kind == RowsOf::kProperties ? m_device->get_ConfigProperties(all.Out())
                                               : m_device->get_NetworkVariables(all.Out()));
        return all;
    });
    std::vector<ListRow> rows;
    for (const std::wstring& entry : entries) {
        if (rows.size() == kRowsAtOnce) list.Append(std::exchange(rows, {}));
        ui::PumpMessages();
        if (!IsOpen()) return;
        com::Quietly([&] {
            if (kind == RowsOf::kProperties) {
                const auto number = EntryNumber(entry);
                if (!number) return;
                const auto point = FindPoint(points.Get(), com::Variant(*number));
                if (point) rows.push_back(ReadConfigurationPropertyRow(point.Get()));
            } else {
                const auto point = FindPoint(points.Get(), com::Variant(entry));
                const bool monitored = kind == RowsOf::kMonitoredVariables;
                if (point) rows.push_back(ReadNetworkVariableRow(point.Get(), monitored));
            }
        });
    }
    list.Append(std::move(rows));
}

void frmVantor::ShowGeneralData() {
    Page& page = PageAt(kTabGeneralData);
    const auto show = [&](int id, auto&& read) {
        page.SetItemText(id, com::Quietly([&]() -> std::wstring { return read(); }));
    };
    show(IDC_LBLWEEK, [&] { return TextOf(m_object, &_CDevice::get_ProductionWeek); });
    show(IDC_LBLYEAR, [&] { return TextOf(m_object, &_CDevice::get_ProductionYear); });
    show(IDC_LBLPROGRAMID, [&] { return TextOf(m_device, &IDevice::get_ProgramId); });
    show(IDC_LBLDEVICECODE, [&] { return TextOf(m_deviceEx, &IDeviceEx::get_VantorFirmwareType); });
    show(IDC_LBLFWID, [&] { return TextOf(m_deviceEx, &IDeviceEx::get_VantorFirmwareVersion); });
}

void frmVantor::SSCalibrations_Click() {
    const auto word = [&](int id, HRESULT (STDMETHODCALLTYPE _CDevice::*member)(short*)) {
        com::Quietly([&] {
            short value = 0;
            if (!m_object) return;
            com::Check((m_object.Get()->*member)(&value));
            PageAt(kTabCalibration).SetItemText(id, std::to_wstring(value));
        });
    };
    word(IDC_LBLAIHIGH, &_CDevice::get_AnalogInput1_High);
    word(IDC_LBLAIOFFSET, &_CDevice::get_AnalogInput1_Offset);
    word(IDC_LBLAILOW, &_CDevice::get_AnalogInput1_Low);
    ShowGeneralData();
}

void frmVantor::RefreshName() {
    const std::wstring name = com::Quietly([&] { return TextOf(m_device, &IDevice::get_Name); });
    SendMessageW(Item(IDC_STATUSBAR1), SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(L"Device:"));
    SendMessageW(Item(IDC_STATUSBAR1), SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(name.c_str()));
}

void frmVantor::RefreshState() {
    com::Quietly([&] {
        if (const auto number = StateNumber(TextOf(m_device, &IDevice::get_State)))
            m_stateNumber = *number;
    });
    if (!IsOpen()) return;
    m_stateView = ViewOfState(m_stateNumber, [](int index) { return GetSysColor(index); });
    if (m_stateBrush) DeleteObject(m_stateBrush);
    m_stateBrush = CreateSolidBrush(m_stateView.color);
    SetItemText(IDC_LBLDEVSTATE, m_stateView.text);
    InvalidateRect(Item(IDC_PCTDEVSTATE), nullptr, TRUE);
    InvalidateRect(Item(IDC_LBLDEVSTATE), nullptr, TRUE);
    SendMessageW(Item(IDC_STATUSBAR1), SB_SETTEXTW, 2,
                 reinterpret_cast<LPARAM>(m_stateView.text.c_str()));
}

// A silent device would turn the lists into "?": they are read again when it answers. Its state is
// the host's to know, and may say that polling can go on.
void frmVantor::Update() {
    if (IsAtWork()) return;
    if (m_disabledByFreeze) {
        m_updateDue = true;
        UpdateWhenDue();
        return RefreshState();
    }
    RunBusy([&] {
        ReadSourceList(kTabTest, IDC_LSTNVIS, L"TestNVIs", true);
        ReadSourceList(kTabTest, IDC_LSTNCIS, L"CommissioningNCIs", false);
        ReadSourceList(kTabTune, IDC_LSTCPS, L"CommissioningCPs", false);
        BuildLists();
    });
    if (!IsOpen()) return;
    SSCalibrations_Click();
    RefreshName();
    RefreshState();
}

void frmVantor::UpdateWhenDue() {
    if (!m_updateDue || !IsOpen() || IsAtWork()) return;
    // They may hold what the device had before.
    if (m_disabledByFreeze) return GreyLists();
    m_updateDue = false;
    Update();
}

}  // namespace quillon
