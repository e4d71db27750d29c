// frmVantor: menus, buttons, and what the device object tells.
#include "window/frmVantor.h"
//
#include <htmlhelp.h>
#include <shellapi.h>

#include "com/module.h"
#include "editors/frmVantorAbout.h"
#include "plugin/CRegistry.h"
#include "plugin/MMain.h"
#include "plugin/settings_text.h"
#include "ui/message_box.h"
#include "ui/module.h"
#include "window/host_points.h"
#include "window/shell_answer.h"

namespace quillon {

namespace {

// Places in the menu bar and in "Action".
constexpr int kActionMenu = 1;
constexpr int kApplicationEntry = 0;
constexpr int kDisplayEntry = 1;
constexpr int kBreakEntry = 2;

const wchar_t* const kHelpViewerClass = L"ADB880A6-D8FF-11CF-9377-00AA003B7A11";

// The viewer is loaded when it is first needed: the plug-in must load on a machine that has none.
// It stays loaded, for its windows may outlive the device window.
void OpenHelpFile(HWND owner, const std::wstring& file) {
    const HMODULE viewer = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!viewer) return;
    const auto open = reinterpret_cast<decltype(&HtmlHelpA)>(
        reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpA")));
    if (open) open(owner, SystemPath(file).c_str(), HH_DISPLAY_TOPIC, 0);
}

}  // namespace

bool frmVantor::OnCommand(int id, int, HWND control) {
    if (control) return false;
    if (OnTransferCommand(id) || OnHelpCommand(id)) return true;
    if (id >= IDC_LBLNV_FIRST && id <= IDC_LBLNV_LAST) {
        EditMainViewValue(id - IDC_LBLNV_FIRST);
        return true;
    }
    switch (id) {
        case IDM_FILE_EXIT:
            Unload();
            return true;
        case IDM_CALIBRATIONS_SAVE:
            SaveCalibrationFile();
            return true;
        case IDM_CALIBRATIONS_LOAD:
            LoadCalibrationFile();
            return true;
        case IDM_EDIT_VALUE:
            if (RowList* list = FocusedList()) EditRow(list->Control());
            return true;
        case IDM_COPY:
            if (RowList* list = FocusedList()) list->CopySelected();
            return true;
        case IDM_SELECT_ALL:
            if (RowList* list = FocusedList()) list->SelectAll();
            return true;
        default:
            return false;
    }
}

// Not while a command works through its points: its loop would wait for the box.
bool frmVantor::OnHelpCommand(int id) {
    if (id != IDM_DOCUMENTATION && id != IDM_HELP_TOPICS && id != IDM_ABOUT) return false;
    if (IsAtWork()) return true;
    if (id == IDM_DOCUMENTATION) OpenDocumentation();
    if (id == IDM_HELP_TOPICS) OpenHelp();
    if (id == IDM_ABOUT) frmVantorAbout().ShowModal(Handle());
    return true;
}

// The device is not reset in the middle of what is written to it.
void frmVantor::OnPageCommand(int id) {
    if (id == IDC_NIMBRA_MODEL_LIST) return ChooseModel();
    if (id == IDC_NIMBRA_PRINTBUTTON) return PrintLabel();
    if (id == IDC_CMDSAVETOFILE) return SaveCalibrationFile();
    if (id == IDC_CMDLOADFROMFILE) return LoadCalibrationFile();
    com::Quietly([&] {
        VARIANT_BOOL done = VARIANT_FALSE;
        const com::Ptr<IDevice> device = m_device;
        if (!device || IsAtWork()) return;
        if (id == IDC_CMDWINK) com::Check(device->Wink());
        if (id == IDC_HW_RESET || id == IDC_MAIN_RESET) com::Check(device->Reset(&done));
    });
}

void frmVantor::OnListMenu(HWND list, POINT screen) {
    // The menu key gives no place: the menu then opens in the list's corner.
    if (screen.x == -1 && screen.y == -1) {
        screen = {8, 8};
        ClientToScreen(list, &screen);
    }
    const HMENU menu = LoadMenuW(ui::OwnModule(), MAKEINTRESOURCEW(IDM_LIST));
    const HMENU popup = GetSubMenu(menu, 0);
    const UINT none = ListOf(list)->Selected() ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(popup, IDM_COPY, MF_BYCOMMAND | none);
    EnableMenuItem(popup, IDM_EDIT_VALUE, MF_BYCOMMAND | none);
    // The entries act on the list that has the focus.
    SetFocus(list);
    TrackPopupMenu(popup, TPM_LEFTALIGN | TPM_RIGHTBUTTON, screen.x, screen.y, 0, Handle(),
                   nullptr);
    DestroyMenu(menu);
}

void frmVantor::ShowApplicationMenu(bool show) {
    const HMENU action = GetSubMenu(GetMenu(Handle()), kActionMenu);
    VARIANT_BOOL display = VARIANT_FALSE;
    com::Quietly([&] { com::Check(m_deviceEx->get_DisplayDownloadAvailable(&display)); });
    if (!IsOpen()) return;
    // From the end, so that the places in front stay.
    if (!show) DeleteMenu(action, kBreakEntry, MF_BYPOSITION);
    if (display == VARIANT_FALSE) DeleteMenu(action, kDisplayEntry, MF_BYPOSITION);
    if (!show) DeleteMenu(action, kApplicationEntry, MF_BYPOSITION);
}

void frmVantor::UpdateActionMenu() {
    const UINT state = m_disabledByFreeze || m_busy ? MF_GRAYED : MF_ENABLED;
    EnableMenuItem(GetMenu(Handle()), kActionMenu, MF_BYPOSITION | state);
    DrawMenuBar(Handle());
}

// The Action menu rests meanwhile: messages are handled inside, and the same command must not start
// again. What made the lists old meanwhile is followed by an update.
void frmVantor::RunBusy(const std::function<void()>& work) {
    if (m_busy) return;
    m_busy = true;
    UpdateActionMenu();
    com::Quietly([&] { work(); });
    m_busy = false;
    if (!IsOpen()) return;
    UpdateActionMenu();
    UpdateWhenDue();
}

void frmVantor::OpenHelp() {
    const auto registry = com::Make<CRegistry>();
    VARIANT_BOOL found = VARIANT_FALSE;
    registry->FindGUUID(com::Bstr(kHelpViewerClass).Get(), &found);
    if (found == VARIANT_FALSE) {
        ui::ShowMessage(L"Please insert the Tessaly CD-ROM and install the Help viewer", MB_OK,
                        L"Help viewer non installed on this machine");
        return;
    }
    if (NamesFileInside(m_htmlHelp))
        OpenHelpFile(Handle(), com::ModuleFolder() + L"\\" + m_htmlHelp);
}

void frmVantor::OpenDocumentation() {
    const com::Ptr<CDevice> device = m_object;
    const auto bulletin = com::Quietly([&]() -> std::optional<std::wstring> {
        const com::Ptr<IFile> entry = device->FindDeviceFile(L"FFFA");
        if (!entry) return std::nullopt;
        com::Bstr text;
        com::Check(entry->get_ValueText(text.Out()));
        return BulletinFile(text.View());
    });
    if (!IsOpen()) return;
    std::intptr_t result = kShellFileNotFound;
    if (bulletin)
        result = reinterpret_cast<std::intptr_t>(ShellExecuteA(
            Handle(), "open", SystemPath(com::ModuleFolder() + L"\\" + *bulletin).c_str(), nullptr,
            nullptr, SW_SHOWMAXIMIZED));
    if (const auto message = DocumentationMessage(result)) ui::ShowMessage(*message, MB_OK);
}

void frmVantor::OnDeviceEvent(DeviceEvent event, std::wstring_view text) {
    switch (event) {
        case DeviceEvent::kChangedStatus:
            RefreshState();
            // The device has been heard of: polling tells whether it answers.
            if (m_disabledByFreeze) SetFreeze(false);
            UpdateWhenDue();
            break;
        case DeviceEvent::kChangedName:
            RefreshName();
            break;
        case DeviceEvent::kChangedApplication:
            RefreshName();
            m_updateDue = true;
            UpdateWhenDue();
            break;
        case DeviceEvent::kNVCPChanged:
            RefreshPoint(text);
            break;
        case DeviceEvent::kChangedXmitErr:
            break;
    }
}

LiveReading frmVantor::ReadPoint(std::wstring_view prefix, const std::wstring& key) {
    const com::Ptr<IDevice> device = m_device;
    com::Ptr<IDispatch> points;
    com::Check(prefix == kCpPrefix ? device->get_ConfigProperties(points.Out())
                                   : device->get_NetworkVariables(points.Out()));
    return ReadLivePoint(FindPoint(points.Get(), com::Variant(key)).Get(), [] {});
}

// Where it is not known what became of the rows, for want of memory say, all of them are greyed.
void frmVantor::RefreshPoint(std::wstring_view text) {
    bool refreshed = false;
    com::Quietly([&] {
        RefreshRows(text);
        refreshed = true;
    });
    if (!IsOpen()) return;
    if (!refreshed) GreyLists();
    ShowGeneralData();
}

void frmVantor::GreyLists() {
    for (const auto& [control, list] : m_listOf) list->SetAllStale();
}

// The point that the host names, in every row that shows it. The main view has its next poll.
void frmVantor::RefreshRows(std::wstring_view text) {
    const bool property = text.starts_with(kCpPrefix);
    const bool prefixed = property || text.starts_with(kNvPrefix);
    const std::wstring key = prefixed ? ItemKey(text) : std::wstring(text);
    std::vector<RowList*> lists;
    for (const auto& [control, list] : m_listOf) lists.push_back(list);
    for (RowList* list : lists) {
        for (const std::wstring_view prefix : {kNvPrefix, kCpPrefix}) {
            if (prefixed && (prefix == kCpPrefix) != property) continue;
            const std::wstring rowKey = std::wstring(prefix) + key;
            if (!list->PlaceOf(rowKey)) continue;
            const auto reading =
                com::Quietly([&] { return std::optional(ReadPoint(prefix, key)); });
            if (!IsOpen()) return;
            for (std::size_t place = 0; place < list->Rows().size(); ++place)
                if (list->Rows()[place].key == rowKey) ShowReading(*list, place, reading);
        }
    }
}

}  // namespace quillon
