// The device window: one for each device, tagged "frmVantor" and the Neuron ID.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "com/module.h"
#include "com/ptr.h"
#include "editors/DataPoint.h"
#include "plugin/CDevice.h"
#include "ui/dialog.h"
#include "ui/file_dialog.h"
#include "ui/form_list.h"
#include "ui/keyboard.h"
#include "ui/layout.h"
#include "window/DeviceEvents.h"
#include "window/LabelPrinting.h"
#include "window/RowList.h"
#include "window/device_state.h"
#include "window/live_value.h"
#include "window/pages.h"
#include "window/polling.h"
#include "window/resource.h"
#include "window/staleness.h"

namespace quillon {

// Set Device, PollingRate, tag and Owner, then Load: the window is shown when its loading ends.
// Loading never stops at a failing call. Loops and message boxes let pending messages be handled,
// so after each the window may be gone; IsOpen tells.
class frmVantor final : public ui::Form, public ui::Dialog, public ui::KeyListener {
public:
    enum class Timer : UINT_PTR { kTmrPolling = 1, kTmrAppStatus, kTmrNvs, kTmrHw, kTimer1 };
    static constexpr std::size_t kTimers = 5;

    // A new, hidden window in the list of open windows; empty when it could not be made.
    static std::shared_ptr<frmVantor> Create();
    ~frmVantor() override;

    void SetDevice(CDevice* device);
    // Starts the timers of main view and application status: rate x 20 ms, and 1000 ms.
    void SetPollingRate(float rate);
    void SetOwner(IDispatch* owner) { m_owner = owner; }
    void Load();
    void Show(HWND owner) override;
    // Reads lists, General Data and state again.
    void Update();
    // Shows the calibration values and General Data as the device object holds them.
    void SSCalibrations_Click();

    // The process-wide flag, and what this window did about it.
    bool Freeze() const;
    void SetFreeze(bool freeze);

    // For tests: a timer's interval, 0 when it does not run; one tick of it; the shown tab's
    // number.
    std::uint32_t Interval(Timer timer) const;
    void Tick(Timer timer);
    int SelectedTab() const { return m_tab; }
    void SelectTab(int tab);
    std::int32_t StateNumberShown() const { return m_stateNumber; }
    bool OutputFlagSet() const { return m_outputFlag; }
    HWND PageWindow(int tab) const { return m_pages[static_cast<std::size_t>(tab)]->Handle(); }
    bool TabShown(int tab) const;

private:
    frmVantor();

    // Dialog and form
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id, int code, HWND control) override;
    void OnDestroyed() override;
    std::shared_ptr<void> KeepAlive() override;
    void Close() override;
    bool OnKey(const MSG& message) override;

    // Frame
    void CreatePages();
    void ArrangePages();
    void ShowPage();
    void FillTabs(bool showHardware);
    void MoveTab(int direction);
    void HideTab(int tab);
    void OnSize();
    void LimitSize(MINMAXINFO& info) const;
    std::optional<INT_PTR> ColorState(HWND control, HDC context);
    void SetCaptionAndIcon(const std::wstring& caption, bool failure);
    Page& PageAt(int tab) { return *m_pages[static_cast<std::size_t>(tab)]; }
    RowList* ListOf(HWND control);
    RowList* FocusedList();
    // Loading, or in a command that works through the device's points: no dialog may hold that up.
    bool IsAtWork() const { return m_loading || m_busy; }

    // Loading (frmVantorLoad.cpp)
    void LoadSteps();
    std::wstring ReadSetting(const wchar_t* section, const std::wstring& key) const;
    void ReadSourceList(int tab, int listBox, const wchar_t* section, bool numbers);
    std::vector<std::wstring> SourceEntries(int tab, int listBox);
    void BuildLists();
    enum class RowsOf { kVariables, kMonitoredVariables, kProperties };
    void AppendRows(RowList& list, const std::vector<std::wstring>& entries, RowsOf kind);
    void ShowGeneralData();
    void ShowApplicationMenu(bool show);
    void RefreshState();
    void RefreshName();

    // Live values (frmVantorTimers.cpp)
    void StartTimer(Timer timer, std::uint32_t interval);
    void OnTmrPolling();
    // Reads the value of a main-view label; true when the device answered. Throws com::Error.
    bool ReadMainViewLabel(int index);
    void OnTmrNvs();
    void OnTmrHw();
    struct Inputs {
        std::int16_t count;
        std::uint8_t bits;
    };
    // nullopt while timers rest, and when the device's image cannot be read. Throws com::Error.
    std::optional<Inputs> ReadInputs();
    void GreyInputs(bool greyed);
    void OnTmrAppStatus();
    void OnTimer1();
    void ShowInputs(const std::array<bool, 4>& states);
    void CalibrationStep(std::int16_t count, std::uint8_t inputs);
    void FinishCalibration();
    void CountStaleness();
    void ApplyFreeze(bool freeze);
    void Thaw();
    com::Ptr<IDispatch> NetworkVariables();

    // Editing (frmVantorEdit.cpp)
    void EditRow(HWND control);
    void RefreshEditedRow(RowList& list, std::size_t place, const std::wstring& key,
                          const DataPoint& point);
    void ShowReading(RowList& list, std::size_t place, const std::optional<LiveReading>& reading);

    // Main-view values (frmVantorMainView.cpp)
    // Posted, so that no dialog runs inside the hook that a key comes from, or inside a page.
    // `command`: IDM_EDIT_VALUE for the focused list, or the number of a value's label.
    void PostEdit(int command) const;
    // The focused list's row, or the focused value.
    void PostEditOfFocused();
    void EditMainViewValue(int index);

    // Commands (frmVantorCommands.cpp)
    bool OnHelpCommand(int id);
    void OnPageCommand(int id);
    void OnListMenu(HWND list, POINT screen);
    void SaveCalibrationFile();
    void LoadCalibrationFile();
    void OpenHelp();
    void OpenDocumentation();
    void RunBusy(const std::function<void()>& work);
    void UpdateActionMenu();
    void UpdateWhenDue();
    void OnDeviceEvent(DeviceEvent event, std::wstring_view text);
    void RefreshPoint(std::wstring_view text);
    void GreyLists();
    void RefreshRows(std::wstring_view text);
    LiveReading ReadPoint(std::wstring_view prefix, const std::wstring& key);

    // Files from and to the device (frmVantorTransfers.cpp)
    bool OnTransferCommand(int id);
    void ExportApplication();
    void DownloadApplication();
    void SaveParameters();
    void DownloadParameters();
    void SaveDisplay();
    void DownloadDisplay();
    std::wstring DisplayName() const;
    template <class Call>
    void SaveToFile(const wchar_t* title, const ui::FileFilter& filter, const wchar_t* extension,
                    Call call);
    template <class Call>
    void LoadFromFile(const wchar_t* title, const ui::FileFilter& filter, Call call);

    // Label printing (frmVantorLabel.cpp)
    void SetUpLabelTab();
    std::optional<std::size_t> ChosenModel();
    void ChooseModel();
    void EnablePrinting(bool enable);
    void PrintLabel();
    bool SendLabel(std::size_t position);
    void EndPrint();

    com::ModuleLock m_module;
    com::Ptr<CDevice> m_object;
    com::Ptr<IDevice> m_device;
    com::Ptr<IDeviceEx> m_deviceEx;
    com::Ptr<DeviceEvents> m_events;
    com::Ptr<IDispatch> m_owner;
    std::unique_ptr<ui::KeyboardHandling> m_keyboard;
    PageActions m_actions;
    std::array<std::unique_ptr<Page>, kTabCount> m_pages;
    std::map<HWND, RowList*> m_listOf;
    RowList m_lvMonitor;
    RowList m_lvAdvancedCPs;
    RowList m_lvCPs;
    RowList m_lvCOV;
    ui::Layout m_layout;
    HIMAGELIST m_ilSmall = nullptr;
    HICON m_icon = nullptr;
    HICON m_failureIcon = nullptr;
    HICON m_ledOn = nullptr;
    HICON m_ledOff = nullptr;
    HBRUSH m_stateBrush = nullptr;
    StateView m_stateView;

    std::wstring m_settingsPath;
    std::wstring m_htmlHelp;
    std::wstring m_caption;
    std::array<std::wstring, 6> m_mainViewTags;
    std::array<Staleness, MainViewCycle::kLabels> m_mainViewAge;
    std::vector<Staleness> m_monitorAge;
    Staleness m_inputsAge;
    std::array<std::uint32_t, kTimers> m_intervals{};
    std::array<bool, kTimers> m_ticking{};
    LabelPrinting m_label{com::ModuleFolder()};
    std::int32_t m_applicationCodeIndex = 0;
    MainViewCycle m_mainView;
    std::int32_t m_monitorRow = 0;
    std::int32_t m_stateNumber = -1;
    int m_tab = -1;
    bool m_outputFlag = false;
    bool m_disabledByFreeze = false;
    bool m_pollFailed = false;
    bool m_busy = false;
    // The lists may hold what the device had before: read them again once the window is at rest
    // and the device answers.
    bool m_updateDue = false;
    bool m_editing = false;
    bool m_loading = false;
    bool m_printing = false;
    bool m_failureShown = false;
};

}  // namespace quillon
