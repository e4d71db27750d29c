// frmVantor: the frame. Creation, tabs, keyboard, closing.
#include "window/frmVantor.h"

#include <commctrl.h>

#include "com/late.h"
#include "com/module.h"
#include "plugin/process_state.h"
#include "ui/activation.h"
#include "ui/module.h"
#include "window/app_status.h"

namespace quillon {

namespace {

struct TabDescription {
    const wchar_t* caption;
    int dialog;
    std::vector<Page::Anchored> anchored;
};

// By tab number.
const std::array<TabDescription, kTabCount>& Tabs() {
    using namespace ui;
    static const std::array<TabDescription, kTabCount> tabs{{
        {L"Hw", IDD_PAGE_HW, {}},
        {L"Nimbra", IDD_PAGE_MAIN, {}},
        {L"Test", IDD_PAGE_TEST, {{IDC_LVMONITOR, kFill}}},
        {L"Setup", IDD_PAGE_SETUP, {{IDC_LVADVANCEDCPS, kFill}}},
        {L"General Data", IDD_PAGE_GENERAL, {}},
        {L"Calibration", IDD_PAGE_CALIBRATION, {{IDC_LBLISTRUZIONI, kLeft | kTop | kRight}}},
        {L"Tune",
         IDD_PAGE_TUNE,
         {{IDC_FRAME4, kLeft | kTop | kBottom},
          {IDC_LVCPS, kLeft | kTop | kBottom},
          {IDC_FRAME5, kFill},
          {IDC_LVCOV, kFill}}},
        {L"Label Print", IDD_PAGE_LABEL, {}},
    }};
    return tabs;
}

UINT DpiOf(HWND window) {
    const HDC context = GetDC(window);
    const int dpi = GetDeviceCaps(context, LOGPIXELSX);
    ReleaseDC(window, context);
    return static_cast<UINT>(dpi);
}

// Pictures are drawn for these sizes; the largest one that the scaling has room for is taken, 16
// pixels at 96 dpi.
int ImageSize(UINT dpi) {
    if (dpi < 120) return 16;
    if (dpi < 168) return 24;
    return dpi < 240 ? 32 : 48;
}

// The small images in the order of their keys.
HIMAGELIST LoadImageList(UINT dpi) {
    const int size = ImageSize(dpi);
    const HIMAGELIST images = ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK,
                                               static_cast<int>(kImageKeys.size()), 0);
    for (const std::wstring_view key : kImageKeys) {
        const std::wstring name = L"LIST_" + std::wstring(key);
        const auto icon = static_cast<HICON>(
            LoadImageW(ui::OwnModule(), name.c_str(), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
        ImageList_ReplaceIcon(images, -1, icon);
        DestroyIcon(icon);
    }
    return images;
}

}  // namespace

frmVantor::frmVantor() = default;

std::shared_ptr<frmVantor> frmVantor::Create() {
    std::shared_ptr<frmVantor> form(new frmVantor);
    if (!form->CreateModeless(IDD_VANTOR, nullptr)) return nullptr;
    form->Open();
    return form;
}

frmVantor::~frmVantor() {
    Destroy();
}

bool frmVantor::OnInit() {
    m_actions = {[this](int id, HWND) { OnPageCommand(id); },
                 [this](HWND list) { EditRow(list); },
                 [this](HWND list, POINT screen) { OnListMenu(list, screen); },
                 [this](HWND control) { return ListOf(control); },
                 [this](int label) { PostEdit(IDC_LBLNV_FIRST + label); },
                 [this] { return KeepAlive(); }};
    m_caption = kDesignCaption;
    m_layout.Start(Handle());
    m_layout.Add(IDC_SSTAB1, ui::kFill);
    const int besides[] = {IDC_PCTDEVSTATE, IDC_LBLDEVSTATE, IDC_LBLSTATECAPTION};
    for (const int id : besides) m_layout.Add(id, ui::kLeft | ui::kBottom);
    m_ilSmall = LoadImageList(DpiOf(Handle()));
    m_ledOn = ImageList_GetIcon(m_ilSmall, IconIndex(L"ledon"), ILD_NORMAL);
    m_ledOff = ImageList_GetIcon(m_ilSmall, IconIndex(L"ledoff"), ILD_NORMAL);
    CreatePages();
    OnSize();
    m_keyboard = std::make_unique<ui::KeyboardHandling>(Handle(), this);
    return false;
}

void frmVantor::CreatePages() {
    for (int tab = 0; tab < kTabCount; ++tab) {
        const TabDescription& description = Tabs()[static_cast<std::size_t>(tab)];
        auto page = std::make_unique<Page>(m_actions, description.anchored);
        if (!page->Create(description.dialog, Handle())) throw com::Error(E_OUTOFMEMORY);
        m_pages[static_cast<std::size_t>(tab)] = std::move(page);
    }
    const auto attach = [&](RowList& list, int tab, int id) {
        list.Attach(PageAt(tab).Item(id));
        m_listOf[list.Control()] = &list;
    };
    attach(m_lvMonitor, kTabTest, IDC_LVMONITOR);
    attach(m_lvAdvancedCPs, kTabSetup, IDC_LVADVANCEDCPS);
    attach(m_lvCPs, kTabTune, IDC_LVCPS);
    attach(m_lvCOV, kTabTune, IDC_LVCOV);
}

void frmVantor::SetDevice(CDevice* device) {
    m_object = device;
    m_device = m_object.As<IDevice>();
    m_deviceEx = m_object.As<IDeviceEx>();
    const std::weak_ptr<Form> self = weak_from_this();
    com::Quietly([&] {
        m_events = com::Make<DeviceEvents>(
            m_device.Get(), [this, self](DeviceEvent event, std::wstring_view text) {
                if (const auto alive = self.lock(); alive && alive->IsOpen())
                    OnDeviceEvent(event, text);
            });
    });
}

void frmVantor::Show(HWND) {
    if (IsIconic(Handle())) ShowWindow(Handle(), SW_RESTORE);
    ShowWindow(Handle(), SW_SHOW);
    SetForegroundWindow(Handle());
}

std::shared_ptr<void> frmVantor::KeepAlive() {
    return weak_from_this().lock();
}

void frmVantor::Close() {
    Destroy();
}

void frmVantor::OnDestroyed() {
    m_keyboard.reset();
    if (m_events) m_events->Stop();
    m_events.Reset();
    m_listOf.clear();
    m_label.ClosePort();
    // The flag that it has set would rest the other windows for good.
    if (std::exchange(m_disabledByFreeze, false)) Process().freeze = false;
    ImageList_Destroy(m_ilSmall);
    for (HICON* icon : {&m_icon, &m_failureIcon, &m_ledOn, &m_ledOff})
        if (*icon) DestroyIcon(std::exchange(*icon, nullptr));
    if (m_stateBrush) DeleteObject(m_stateBrush);
    m_ilSmall = nullptr;
    m_stateBrush = nullptr;
    m_deviceEx.Reset();
    m_device.Reset();
    m_owner.Reset();
    m_object.Reset();
    Unload();
}

std::optional<INT_PTR> frmVantor::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            OnSize();
            return TRUE;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return TRUE;
        case WM_ACTIVATE:
        case WM_SETFOCUS:
            // A dialog would give the focus back to the control that had it, which is disabled.
            if (!m_disabledByFreeze) return std::nullopt;
            if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) SetFocus(Handle());
            return TRUE;
        case WM_TIMER:
            Tick(static_cast<Timer>(wParam));
            return TRUE;
        case WM_NOTIFY: {
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (header.hwndFrom != Item(IDC_SSTAB1) || header.code != TCN_SELCHANGE)
                return std::nullopt;
            ShowPage();
            return TRUE;
        }
        case WM_CTLCOLORSTATIC:
            return ColorState(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
        case WM_CLOSE:
            Unload();
            return TRUE;
        default:
            return Dialog::OnMessage(message, wParam, lParam);
    }
}

// No smaller than it was designed.
void frmVantor::LimitSize(MINMAXINFO& info) const {
    RECT least{0, 0, m_layout.DesignedSize().cx, m_layout.DesignedSize().cy};
    AdjustWindowRectEx(&least, WS_OVERLAPPEDWINDOW, TRUE, WS_EX_CONTROLPARENT);
    info.ptMinTrackSize = {least.right - least.left, least.bottom - least.top};
}

// The device's state is drawn in its own colours; other controls in the usual ones.
std::optional<INT_PTR> frmVantor::ColorState(HWND control, HDC context) {
    if (control != Item(IDC_LBLDEVSTATE) && control != Item(IDC_PCTDEVSTATE)) return std::nullopt;
    SetTextColor(context, m_stateView.darkText ? RGB(0, 0, 0) : RGB(255, 255, 255));
    SetBkColor(context, m_stateView.color);
    return reinterpret_cast<INT_PTR>(m_stateBrush);
}

// ---- tabs

void frmVantor::FillTabs(bool showHardware) {
    const HWND tabs = Item(IDC_SSTAB1);
    TabCtrl_DeleteAllItems(tabs);
    int place = 0;
    for (int tab = 0; tab < kTabCount; ++tab) {
        if (!ShowsTab(tab, showHardware)) continue;
        TCITEMW item{};
        item.mask = TCIF_TEXT | TCIF_PARAM;
        item.pszText = const_cast<wchar_t*>(Tabs()[static_cast<std::size_t>(tab)].caption);
        item.lParam = tab;
        TabCtrl_InsertItem(tabs, place++, &item);
    }
}

namespace {

int TabAt(HWND tabs, int place) {
    TCITEMW item{};
    item.mask = TCIF_PARAM;
    return place >= 0 && TabCtrl_GetItem(tabs, place, &item) ? static_cast<int>(item.lParam) : -1;
}

}  // namespace

bool frmVantor::TabShown(int tab) const {
    const HWND tabs = Item(IDC_SSTAB1);
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place)
        if (TabAt(tabs, place) == tab) return true;
    return false;
}

void frmVantor::SelectTab(int tab) {
    const HWND tabs = Item(IDC_SSTAB1);
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place) {
        if (TabAt(tabs, place) != tab) continue;
        TabCtrl_SetCurSel(tabs, place);
        ShowPage();
        return;
    }
}

// The tab that is shown stays shown.
void frmVantor::HideTab(int tab) {
    const HWND tabs = Item(IDC_SSTAB1);
    if (IsChild(PageWindow(tab), GetFocus())) SetFocus(tabs);
    for (int place = 0; place < TabCtrl_GetItemCount(tabs); ++place) {
        if (TabAt(tabs, place) != tab) continue;
        const int selected = TabCtrl_GetCurSel(tabs);
        TabCtrl_DeleteItem(tabs, place);
        if (selected != place) TabCtrl_SetCurSel(tabs, selected - (selected > place ? 1 : 0));
        return;
    }
}

void frmVantor::MoveTab(int direction) {
    const HWND tabs = Item(IDC_SSTAB1);
    const int count = TabCtrl_GetItemCount(tabs);
    if (count == 0 || !IsWindowEnabled(tabs)) return;
    const int place = (TabCtrl_GetCurSel(tabs) + direction + count) % count;
    SetFocus(tabs);
    SelectTab(TabAt(tabs, place));
}

void frmVantor::ShowPage() {
    const HWND tabs = Item(IDC_SSTAB1);
    m_tab = TabAt(tabs, TabCtrl_GetCurSel(tabs));
    ArrangePages();
    for (const auto& [control, list] : m_listOf) list->SelectNone();
    for (int tab = 0; tab < kTabCount; ++tab)
        ShowWindow(PageWindow(tab), tab == m_tab ? SW_SHOWNA : SW_HIDE);
    StartTimer(Timer::kTmrNvs, 0);
    StartTimer(Timer::kTmrHw, 0);
    const TabTimers timers = TimersOfTab(m_tab);
    StartTimer(Timer::kTmrNvs, timers.nvs);
    StartTimer(Timer::kTmrHw, timers.hw);
    if (m_tab == kTabLabelPrint) SetUpLabelTab();
}

void frmVantor::ArrangePages() {
    const HWND tabs = Item(IDC_SSTAB1);
    RECT inside{};
    GetClientRect(tabs, &inside);
    TabCtrl_AdjustRect(tabs, FALSE, &inside);
    MapWindowPoints(tabs, Handle(), reinterpret_cast<POINT*>(&inside), 2);
    for (int tab = 0; tab < kTabCount; ++tab)
        SetWindowPos(PageWindow(tab), HWND_TOP, inside.left, inside.top, inside.right - inside.left,
                     inside.bottom - inside.top, SWP_NOACTIVATE);
}

void frmVantor::OnSize() {
    const HWND bar = Item(IDC_STATUSBAR1);
    SendMessageW(bar, WM_SIZE, 0, 0);
    RECT client{};
    GetClientRect(Handle(), &client);
    const int parts[] = {client.right / 6, client.right * 7 / 12, -1};
    SendMessageW(bar, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(parts));
    m_layout.Apply();
    ArrangePages();
    for (const auto& [control, list] : m_listOf) list->FitColumns();
}

// ---- keyboard

RowList* frmVantor::ListOf(HWND control) {
    const auto found = m_listOf.find(control);
    return found == m_listOf.end() ? nullptr : found->second;
}

RowList* frmVantor::FocusedList() {
    return ListOf(GetFocus());
}

bool frmVantor::OnKey(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    // The keyboard comes past the window procedure, and a key may close the window.
    const auto hold = KeepAlive();
    const bool control = GetKeyState(VK_CONTROL) < 0;
    switch (message.wParam) {
        case VK_F5:
            Update();
            return true;
        case VK_TAB:
            if (!control) return false;
            MoveTab(GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
            return true;
        case VK_ESCAPE:
            return true;
        case VK_RETURN:
        case VK_F2:
            // Enter never presses a button, not even the focused one: that could be Reset. Held
            // down, it would open again what has just been closed.
            if (!ui::IsRepeated(message.lParam)) PostEditOfFocused();
            return true;
        case 'C':
        case 'A':
            if (!control || !FocusedList()) return false;
            if (message.wParam == 'C')
                FocusedList()->CopySelected();
            else
                FocusedList()->SelectAll();
            return true;
        default:
            return false;
    }
}

void frmVantor::SetCaptionAndIcon(const std::wstring& caption, bool failure) {
    if (caption != m_caption) {
        m_caption = caption;
        SetWindowTextW(Handle(), caption.c_str());
    }
    if (failure == m_failureShown && SendMessageW(Handle(), WM_GETICON, ICON_SMALL, 0)) return;
    m_failureShown = failure;
    const auto icon = reinterpret_cast<LPARAM>(failure ? m_failureIcon : m_icon);
    SendMessageW(Handle(), WM_SETICON, ICON_SMALL, icon);
    SendMessageW(Handle(), WM_SETICON, ICON_BIG, icon);
}

}  // namespace quillon
