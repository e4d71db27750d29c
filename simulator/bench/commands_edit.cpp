// The command that edits a value in the plug-in's own window.
#include "commands.h"
#include "dialog_driver.h"
#include "editor_steps.h"
#include "window_controls.h"
//
#include <commctrl.h>

#include <vector>

namespace quorvex::bench::commands {
namespace {

// A device's window, for as long as its value is edited.
class EditedWindow {
public:
    EditedWindow(DeviceWindows& windows, const Room& room)
        : m_windows(windows), m_room(room), m_window(windows.Open(room)) {}
    EditedWindow(const EditedWindow&) = delete;
    EditedWindow& operator=(const EditedWindow&) = delete;
    ~EditedWindow() {
        m_windows.Close(m_room);
        PumpMessages();
    }

    HWND Get() const { return m_window; }

private:
    DeviceWindows& m_windows;
    const Room& m_room;
    HWND m_window;
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
    const EditedWindow window(session.Windows(), session.GetHost().Find(words[0]));
    SelectTab(window.Get(), words[1]);
    HWND edited = ValueToEdit(window.Get(), words[2]);
    if (!edited) edited = RowToEdit(window.Get(), words[2]);
    EditorSteps driver(std::move(steps));
    PostMessageW(edited, WM_KEYDOWN, VK_RETURN, 1);
    driver.Finish();
}

}  // namespace quorvex::bench::commands
