#include "window.h"

#include <algorithm>

#include "com/text.h"
#include "commands.h"
#include "ui/activation.h"
#include "window_owner.h"
#include "window_resource.h"

namespace quorvex::bench {
namespace {

namespace ui = quillon::ui;

constexpr UINT_PTR kLifeTimer = 1;
constexpr UINT kLifeInterval = 500;
constexpr UINT_PTR kLogTimer = 2;
constexpr UINT kLogInterval = 1000;
constexpr UINT_PTR kEndTimer = 3;
// A tick that comes late, for a loop held the thread, lets no more time pass than this.
constexpr ULONGLONG kLongestTick = 5000;
constexpr long kPollingRate = 25;

enum Column { kName, kState, kProgramId, kNeuronId };

void PutCell(HWND list, std::size_t row, int column, const std::wstring& text) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    SendMessageW(list, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
}

std::wstring ProgramIdOf(const Room& room) {
    com::Bstr programId;
    com::Check(room.device->get_ProgramId(programId.Out()));
    return programId.Text();
}

BOOL CALLBACK OnOtherWindow(HWND window, LPARAM windows) noexcept {
    try {
        if (IsWindowVisible(window))
            reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    } catch (...) {
        return FALSE;
    }
    return TRUE;
}

// Wine calls its window station visible in any case; it loads a driver only where it has a screen.
bool IsWineWithoutScreen() {
    if (!GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")) return false;
    ReleaseDC(nullptr, GetDC(nullptr));
    constexpr const wchar_t* kDrivers[] = {L"winex11.drv", L"winewayland.drv", L"winemac.drv"};
    return std::none_of(std::begin(kDrivers), std::end(kDrivers),
                        [](auto* driver) { return GetModuleHandleW(driver) != nullptr; });
}

}  // namespace

bool HasDisplay() {
    USEROBJECTFLAGS flags{};
    const bool known = GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags,
                                                 sizeof flags, nullptr) != FALSE;
    return !(known && !(flags.dwFlags & WSF_VISIBLE)) && !IsWineWithoutScreen();
}

BenchWindow::BenchWindow(Host& host) : m_host(host), m_panel(host), m_log(host.Simulator()) {}

BenchWindow::~BenchWindow() {
    m_host.SetListener(nullptr);
    Destroy();
}

void BenchWindow::Run(const WindowOptions& options) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_UPDOWN_CLASS};
    const ui::ActivationScope controls;
    InitCommonControlsEx(&classes);
    if (!CreateModeless(IDD_BENCH, nullptr)) throw Failure{L"the window cannot be made"};
    m_host.SetListener([this](const std::wstring& line) { m_log.Add(line); });
    if (options.time) {
        const auto end = std::chrono::milliseconds(*options.time).count();
        SetTimer(Handle(), kEndTimer, static_cast<UINT>(end), nullptr);
    }
    ShowWindow(Handle(), SW_SHOWNORMAL);
    for (const auto& name : options.open) OpenDevice(m_host.Find(name));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    m_host.SetListener(nullptr);
}

bool BenchWindow::OnInit() {
    m_keyboard.emplace(Handle(), static_cast<ui::KeyListener*>(this));
    m_owner = com::Ptr<IDispatch>::Adopt(com::Make<WindowOwner>(Handle()).Detach());
    RECT whole{};
    GetWindowRect(Handle(), &whole);
    m_smallest = {whole.right - whole.left, whole.bottom - whole.top};
    // In the corner, for the windows of devices come up in the middle.
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    SetWindowPos(Handle(), nullptr, work.left, work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    PrepareList(Item(IDC_DEVICES), {L"Name", L"State", L"Program ID", L"Neuron ID"});
    m_log.Attach(Item(IDC_LOG), Item(IDC_CALLS));
    m_panel.Attach(Handle());
    SetAnchors();
    SetTexts();
    FillDevices();
    m_livedUntil = GetTickCount64();
    SetTimer(Handle(), kLifeTimer, kLifeInterval, nullptr);
    SetTimer(Handle(), kLogTimer, kLogInterval, nullptr);
    SetFocus(Item(IDC_DEVICES));
    return false;
}

void BenchWindow::SetTexts() {
    SetWindowTextW(Handle(), (L"Quorvex bench \u2013 " + m_host.NetworkName()).c_str());
    VARIANT_BOOL recording = VARIANT_FALSE;
    com::Check(m_host.Simulator().get_Recording(&recording));
    CheckDlgButton(Handle(), IDC_RECORD, recording ? BST_CHECKED : BST_UNCHECKED);
}

void BenchWindow::SetAnchors() {
    m_layout.Start(Handle());
    m_layout.Add(IDC_DEVICES, ui::kLeft | ui::kTop | ui::kRight);
    for (int id = IDC_PANEL_GROUP; id <= IDC_MODE_STATE; ++id)
        m_layout.Add(id, ui::kTop | ui::kRight);
    m_layout.Add(IDC_CALLS, ui::kLeft | ui::kTop | ui::kBottom);
    m_layout.Add(IDC_LOG, ui::kFill);
    m_layout.Add(IDC_RECORD, ui::kLeft | ui::kBottom);
    m_layout.Add(IDC_EMPTY, ui::kRight | ui::kBottom);
}

std::optional<INT_PTR> BenchWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED) {
                m_layout.Apply();
                m_log.FitColumns();
                FitDeviceColumns();
                InvalidateRect(Handle(), nullptr, TRUE);
            }
            return TRUE;
        case WM_GETMINMAXINFO:
            OnSmallest(*reinterpret_cast<MINMAXINFO*>(lParam));
            return TRUE;
        case WM_TIMER:
            OnTimer(wParam);
            return TRUE;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_CLOSE:
            CloseAll();
            return TRUE;
        default:
            return Dialog::OnMessage(message, wParam, lParam);
    }
}

void BenchWindow::OnDestroyed() {
    m_keyboard.reset();
    PostQuitMessage(0);
}

void BenchWindow::OnSmallest(MINMAXINFO& info) const {
    info.ptMinTrackSize = {m_smallest.cx, m_smallest.cy};
}

// The windows of the plug-in are asked as their operator would close them; what is left then goes
// with its owner.
void BenchWindow::CloseAll() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), OnOtherWindow, reinterpret_cast<LPARAM>(&windows));
    for (const HWND window : windows)
        if (window != Handle() && IsWindow(window)) SendMessageW(window, WM_CLOSE, 0, 0);
    Destroy();
}

template <class Action>
void BenchWindow::Try(const std::wstring& what, Action&& action) {
    try {
        action();
    } catch (const com::Error& error) {
        m_log.Add(what + L" failed: " + Describe(error));
    } catch (const Failure& failure) {
        m_log.Add(what + L" failed: " + failure.text);
    }
}

void BenchWindow::OnTimer(UINT_PTR timer) {
    if (timer == kEndTimer) {
        KillTimer(Handle(), kEndTimer);
        CloseAll();
    } else if (timer == PanelView::kModeTimer) {
        Try(L"The MODE button", [&] { m_panel.OnModeTimer(); });
    } else if (timer == kLifeTimer) {
        Try(L"Letting the rooms live", [&] { Live(); });
    } else if (timer == kLogTimer && IsWindowVisible(Handle()) && !IsIconic(Handle())) {
        Try(L"Reading the host's log", [&] { m_log.Refresh(); });
    }
}

void BenchWindow::Live() {
    const ULONGLONG now = GetTickCount64();
    m_host.Advance(static_cast<long>(std::min(now - m_livedUntil, kLongestTick)));
    m_livedUntil = now;
    ShowStates();
    m_panel.Refresh();
    const auto& reports = m_host.Reports();
    for (; m_reports < reports.size(); ++m_reports)
        m_log.Add(ReportText(m_host, reports[m_reports]));
}

void BenchWindow::FillDevices() {
    const HWND list = Item(IDC_DEVICES);
    const auto& rooms = m_host.Rooms();
    const int chosen = std::max(ListView_GetNextItem(list, -1, LVNI_SELECTED), 0);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list);
    m_states.assign(rooms.size(), {});
    for (std::size_t row = 0; row < rooms.size(); ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(row);
        item.pszText = const_cast<wchar_t*>(rooms[row].name.c_str());
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        Try(rooms[row].name, [&] { PutCell(list, row, kProgramId, ProgramIdOf(rooms[row])); });
        PutCell(list, row, kNeuronId, rooms[row].neuron);
    }
    ShowStates();
    FitDeviceColumns();
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    ListView_SetItemState(list, chosen, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list, chosen, FALSE);
}

void BenchWindow::ShowStates() {
    const auto& rooms = m_host.Rooms();
    for (std::size_t row = 0; row < m_states.size(); ++row) {
        std::wstring state = commands::StateText(m_host.Now(rooms[row]).state);
        if (state == m_states[row]) continue;
        PutCell(Item(IDC_DEVICES), row, kState, state);
        m_states[row] = std::move(state);
    }
}

// In parts of the list's width: the columns are as long as names usually are.
void BenchWindow::FitDeviceColumns() const {
    constexpr int kParts[] = {22, 28, 28, 22};
    const HWND list = Item(IDC_DEVICES);
    RECT client{};
    GetClientRect(list, &client);
    for (int column = kName; column <= kNeuronId; ++column)
        ListView_SetColumnWidth(list, column, client.right * kParts[column] / 100);
}

Room* BenchWindow::Chosen() {
    const int row = ListView_GetNextItem(Item(IDC_DEVICES), -1, LVNI_SELECTED);
    auto& rooms = m_host.Rooms();
    return row >= 0 && static_cast<std::size_t>(row) < rooms.size()
               ? &rooms[static_cast<std::size_t>(row)]
               : nullptr;
}

std::optional<INT_PTR> BenchWindow::OnNotify(NMHDR& header) {
    if (header.idFrom == IDC_LOG && header.code == LVN_GETDISPINFOW) {
        m_log.Answer(reinterpret_cast<NMLVDISPINFOW&>(header).item);
        return TRUE;
    }
    if (header.idFrom != IDC_DEVICES) return std::nullopt;
    if (header.code == LVN_ITEMCHANGED) {
        const auto& change = reinterpret_cast<NMLISTVIEW&>(header);
        if ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) {
            const Room* const room = Chosen();
            EnableWindow(Item(IDC_OPEN), room != nullptr);
            EnableWindow(Item(IDC_CLOSE_FOCUS), room != nullptr);
            Try(L"The panel", [&] { m_panel.Choose(room); });
        }
        return TRUE;
    }
    if (header.code == NM_DBLCLK) {
        if (const Room* const room = Chosen()) OpenDevice(*room);
        return TRUE;
    }
    return std::nullopt;
}

bool BenchWindow::OnCommand(int id, int code, HWND) {
    bool done = false;
    Try(L"The panel", [&] { done = m_panel.OnCommand(id, code); });
    if (done || code != BN_CLICKED) return done;
    const Room* const room = Chosen();
    switch (id) {
        case IDC_OPEN:
            if (room) OpenDevice(*room);
            return true;
        case IDC_CLOSE_FOCUS:
            if (room) CloseFocus(*room);
            return true;
        case IDC_REFRESH:
            FillDevices();
            return true;
        case IDC_RECORD:
            com::Check(m_host.Simulator().put_Recording(
                IsDlgButtonChecked(Handle(), id) ? VARIANT_TRUE : VARIANT_FALSE));
            return true;
        case IDC_EMPTY:
            Try(L"Emptying the log", [&] { m_log.Empty(); });
            return true;
        default:
            return false;
    }
}

bool BenchWindow::OnKey(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_F5) {
        FillDevices();
        return true;
    }
    if (message.wParam != VK_RETURN) return false;
    const HWND focus = GetFocus();
    if (focus == Item(IDC_DEVICES)) {
        if (const Room* const room = Chosen()) OpenDevice(*room);
        return true;
    }
    if (focus != Item(IDC_TEMPERATURE_NEW)) return false;
    OnCommand(IDC_TEMPERATURE_SET, BN_CLICKED, nullptr);
    return true;
}

// The call can handle messages for long, so that the window may be gone when it returns.
void BenchWindow::OpenDevice(const Room& room) {
    Try(L"Opening " + room.name, [&] {
        const auto extended = room.device.As<IDeviceEx>();
        if (!extended) throw Failure{L"the plug-in has no IDeviceEx"};
        com::Ptr<IDispatch> owner = m_owner;
        IDispatch* argument = owner.Get();
        long rate = kPollingRate;
        com::Check(extended->ShowFocus(&argument, &rate));
    });
}

void BenchWindow::CloseFocus(const Room& room) {
    Try(L"Closing the focus of " + room.name, [&] {
        const auto extended = room.device.As<IDeviceEx>();
        if (!extended) throw Failure{L"the plug-in has no IDeviceEx"};
        com::Check(extended->CloseFocus());
    });
}

}  // namespace quorvex::bench
