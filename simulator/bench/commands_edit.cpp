// The command that edits a value in the plug-in's own window.
#include "commands.h"
#include "editor_steps.h"
#include "window_controls.h"
//
#include <commctrl.h>

#include <set>
#include <vector>

namespace quorvex::bench::commands {
namespace {

BOOL CALLBACK NoteWindow(HWND window, LPARAM windows) {
    reinterpret_cast<std::set<HWND>*>(windows)->insert(window);
    return TRUE;
}

std::set<HWND> Windows() {
    std::set<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), NoteWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

// A device's window, opened as the host opens it, and closed again at the end.
class DeviceWindow {
public:
    explicit DeviceWindow(const Room& room) : m_device(room.device.As<IDeviceEx>()) {
        const std::set<HWND> before = Windows();
        IDispatch* owner = nullptr;
        long rate = 25;
        com::Check(m_device->ShowFocus(&owner, &rate));
        for (const HWND window : Windows())
            if (!before.contains(window) && FindWindowExW(window, nullptr, WC_TABCONTROLW, nullptr))
                m_window = window;
        if (!m_window) throw Failure{L"no new window of the device came up"};
    }
    DeviceWindow(const DeviceWindow&) = delete;
    DeviceWindow& operator=(const DeviceWindow&) = delete;
    // The splash first, then the window.
    ~DeviceWindow() {
        m_device->CloseFocus();
        if (IsWindow(m_window)) SendMessageW(m_window, WM_CLOSE, 0, 0);
        PumpMessages();
    }

    HWND Get() const { return m_window; }

private:
    com::Ptr<IDeviceEx> m_device;
    HWND m_window = nullptr;
};

struct Row {
    std::wstring text;
    HWND list = nullptr;
    int place = -1;
};

BOOL CALLBACK FindRow(HWND control, LPARAM argument) {
    auto& row = *reinterpret_cast<Row*>(argument);
    if (ClassOf(control) != WC_LISTVIEWW || !IsWindowVisible(control)) return TRUE;
    LVFINDINFOW info{};
    info.flags = LVFI_STRING;
    info.psz = row.text.c_str();
    row.place = static_cast<int>(SendMessageW(control, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                                              reinterpret_cast<LPARAM>(&info)));
    row.list = control;
    return row.place < 0;
}

BOOL CALLBACK FindValue(HWND control, LPARAM values) {
    const bool isValue = ClassOf(control) == WC_STATICW && IsWindowVisible(control) &&
                         (GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP) != 0;
    if (isValue) reinterpret_cast<std::vector<HWND>*>(values)->push_back(control);
    return TRUE;
}

// A value of the main view by its number from 0, with the focus; null when there is no such value.
HWND ValueToEdit(HWND window, const std::wstring& number) {
    std::vector<HWND> values;
    EnumChildWindows(window, FindValue, reinterpret_cast<LPARAM>(&values));
    if (number.size() != 1 || number[0] < L'0') return nullptr;
    const auto place = static_cast<std::size_t>(number[0] - L'0');
    if (place >= values.size()) return nullptr;
    SetFocus(values[place]);
    return values[place];
}

// A row of a list by its text, selected and with the focus.
HWND RowToEdit(HWND window, const std::wstring& text) {
    Row row{text};
    EnumChildWindows(window, FindRow, reinterpret_cast<LPARAM>(&row));
    if (row.place < 0) throw Failure{L"the tab has no row \"" + text + L"\""};
    SetFocus(row.list);
    ListView_SetItemState(row.list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemState(row.list, row.place, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
    return row.list;
}

}  // namespace

void Edit(Session& session, const Words& words) {
    std::deque<Step> steps = ReadSteps({words.begin() + 3, words.end()});
    const DeviceWindow window(session.GetHost().Find(words[0]));
    SelectTab(window.Get(), words[1]);
    HWND edited = ValueToEdit(window.Get(), words[2]);
    if (!edited) edited = RowToEdit(window.Get(), words[2]);
    EditorSteps driver(std::move(steps));
    PostMessageW(edited, WM_KEYDOWN, VK_RETURN, 1);
    driver.Finish();
}

}  // namespace quorvex::bench::commands
