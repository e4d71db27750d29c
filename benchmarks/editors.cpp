#include "measures.h"
//
#include <commctrl.h>

#include <array>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"
#include "device_window.h"
#include "editors/editors_resource.h"
#include "support/plugin_window.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 15;
constexpr int kEntries = 10'000;
constexpr UINT kGiveUp = 20'000;  // milliseconds

std::wstring LongList() {
    std::wstring list;
    for (int code = 0; code < kEntries; ++code) {
        const std::wstring number = std::to_wstring(code);
        list.append(number).append(L",Entry ").append(number).append(L";");
    }
    return list;
}

// A combo box as an editor has it, filled with the labels alone.
double FillBareBox() {
    std::vector<std::wstring> labels;
    labels.reserve(kEntries);
    for (int code = 0; code < kEntries; ++code) labels.push_back(L"Entry " + std::to_wstring(code));
    HWND owner = nullptr;
    const double seconds = Seconds([&] {
        owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 100, nullptr, nullptr,
                                nullptr, nullptr);
        const HWND box = CreateWindowExW(0, WC_COMBOBOXW, L"",
                                         WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWNLIST, 0,
                                         0, 300, 200, owner, nullptr, nullptr, nullptr);
        for (const std::wstring& label : labels)
            SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(label.c_str()));
        ShowWindow(owner, SW_SHOW);
    });
    DestroyWindow(owner);
    return seconds;
}

bool IsShown(HWND window, const wchar_t* kind) {
    return test::ClassOf(window) == kind && IsWindowVisible(window);
}

HWND TabsOf(HWND window) {
    return FindWindowExW(window, nullptr, WC_TABCONTROLW, nullptr);
}

// A list on the page that is shown; null when it has none with rows.
HWND ListWithRows(HWND window) {
    for (const HWND control : test::ControlsBelow(window))
        if (IsShown(control, WC_LISTVIEWW) && ListView_GetItemCount(control) > 0) return control;
    return nullptr;
}

// When the editor was seen first, and the calls it had made by then and made while keys were
// pressed in it.
struct Opening {
    double seen = 0;
    const Session* session = nullptr;
    std::vector<long> calls;
    long callsByKeys = 0;
    bool obeysKeys = false;
};
Opening* g_opening = nullptr;

constexpr std::array kMembers{L"IDevice.ConfigProperties.get",
                              L"Points.Item",
                              L"Points._NewEnum.get",
                              L"Point.SNVType.get",
                              L"Type.GenType.get",
                              L"Point.Value.get",
                              L"Point.FormattedValue.get",
                              L"Point.MinOverride.get",
                              L"Point.MaxOverride.get",
                              L"Point.Name.get",
                              L"Point.Key.get",
                              L"Point.Fields.get",
                              L"Type.Units.get",
                              L"Type.InvalidValue.get",
                              L"Type.BCoef.get",
                              L"Type.EnumDesc.get"};

std::vector<long> CallsOf(const Session& session) {
    std::vector<long> calls;
    calls.reserve(kMembers.size());
    for (const wchar_t* member : kMembers) calls.push_back(session.Calls(member));
    return calls;
}

// Keys that change the value, and others that move in it. True when they did change it.
bool PressKeys(HWND editor) {
    HWND box = GetDlgItem(editor, IDC_TXTNEWCPVALUE);
    if (!box) box = GetDlgItem(editor, IDC_CBOENUM);
    SetFocus(box);
    bool changed = false;
    std::wstring shown = test::WindowText(box);
    const auto note = [&] {
        const std::wstring before = std::exchange(shown, test::WindowText(box));
        changed = changed || shown != before;
    };
    for (const WPARAM key : {VK_END, VK_UP, VK_DOWN, VK_DOWN, VK_LEFT, VK_RIGHT}) {
        SendMessageW(box, WM_KEYDOWN, key, 1);
        note();
    }
    for (const wchar_t character : {L'\b', L'1', L'\b'}) {
        SendMessageW(box, WM_CHAR, character, 1);
        note();
    }
    return changed;
}

void CALLBACK LookForEditor(HWND, UINT, UINT_PTR, DWORD) noexcept {
    const HWND editor =
        test::FirstThreadWindow([](HWND window) { return IsShown(window, L"#32770"); });
    if (!g_opening || !editor || g_opening->seen != 0) return;
    if (!GetDlgItem(editor, IDCANCEL)) return;
    g_opening->seen = Now();
    try {
        g_opening->calls = CallsOf(*g_opening->session);
        const long before = AllCalls(*g_opening->session);
        g_opening->obeysKeys = PressKeys(editor);
        g_opening->callsByKeys = AllCalls(*g_opening->session) - before;
    } catch (...) {
        g_opening->calls.clear();
    }
    PostMessageW(editor, WM_COMMAND, IDCANCEL, 0);
}

// A device's window with one row, which is edited.
class EditedRow {
public:
    EditedRow(const Session& session, const Room& room)
        : m_session(session), m_device(room.subject.As<IDeviceEx>()) {
        IDispatch* owner = nullptr;
        long rate = 25;
        com::Check(m_device->ShowFocus(&owner, &rate));
        m_window = test::FirstThreadWindow([](HWND window) { return TabsOf(window) != nullptr; });
        if (!m_window) throw std::runtime_error("the device's window did not come up");
        for (UINT_PTR timer = 1; timer <= 5; ++timer) KillTimer(m_window, timer);
        ShowTabWithRows();
    }
    EditedRow(const EditedRow&) = delete;
    EditedRow& operator=(const EditedRow&) = delete;
    ~EditedRow() {
        m_device->CloseFocus();
        DestroyWindow(m_window);
    }

    // Seconds from the key to the editor's being seen.
    double Edit() {
        com::Check(m_session.Host().Clear());
        Opening opening;
        opening.session = &m_session;
        g_opening = &opening;
        const UINT_PTR timer = SetTimer(nullptr, 0, 1, LookForEditor);
        SetFocus(m_list);
        const double start = Now();
        PostMessageW(m_list, WM_KEYDOWN, VK_RETURN, 1);
        MSG message;
        const ULONGLONG end = GetTickCount64() + kGiveUp;
        while (opening.seen == 0 && GetTickCount64() < end) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        KillTimer(nullptr, timer);
        g_opening = nullptr;
        if (opening.seen == 0) throw std::runtime_error("no editor came up");
        const double seconds = opening.seen - start;
        m_last = std::move(opening);
        return seconds;
    }
    const Opening& Last() const { return m_last; }

private:
    void ShowTabWithRows() {
        const HWND tabs = TabsOf(m_window);
        const auto count = SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0);
        for (LRESULT place = 0; place < count && !m_list; ++place) {
            SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(place), 0);
            NMHDR notice{tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)),
                         static_cast<UINT>(TCN_SELCHANGE)};
            SendMessageW(m_window, WM_NOTIFY, notice.idFrom, reinterpret_cast<LPARAM>(&notice));
            m_list = ListWithRows(m_window);
        }
        if (!m_list) throw std::runtime_error("the device's window has no row");
        ListView_SetItemState(m_list, 0, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    }

    const Session& m_session;
    com::Ptr<IDeviceEx> m_device;
    HWND m_window = nullptr;
    HWND m_list = nullptr;
    Opening m_last;
};

void WriteSettings(const Session& session, const Room& room) {
    com::Bstr programId;
    com::Check(room.subject->get_ProgramId(programId.Out()));
    std::ofstream(session.Folder() / (programId.Text() + L".ini"))
        << "[CommissioningCPs]\r\n0=0\r\n";
}

// How often an opening asked, and keys asked; a member asked twice is one too many.
void AddCalls(Table& table, const std::string& kind, const Opening& opening) {
    if (!opening.obeysKeys) throw std::runtime_error("an editor takes no keys");
    long all = 0;
    int twice = 0;
    for (const long count : opening.calls) {
        all += count;
        if (count > 1) ++twice;
    }
    if (all == 0) throw std::runtime_error("an editor asked nothing");
    table.Add({"members asked twice by opening the editor of " + kind,
               "",
               {static_cast<double>(twice)},
               "",
               0,
               std::to_string(all) + " host calls"});
    table.Add({"host calls of nine keys pressed in it",
               kind,
               {static_cast<double>(opening.callsByKeys)},
               "",
               0,
               ""});
}

}  // namespace

void MeasureEditors(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = 1, .properties = 1});
    WriteSettings(session, room);
    ISimulator& host = session.Host();
    const auto answer = [&](const wchar_t* member, const std::wstring& text) {
        com::Check(host.Answer(com::Bstr(member).Get(), com::Variant(std::wstring_view(text))));
    };
    EditedRow row(session, room);
    answer(L"Type.EnumDesc.get", L"0,Off;1,On;2,Auto;");
    for (const auto& [type, kind] : {std::pair{L"SignedNumeric", "a number"},
                                     {L"Float", "a real number"},
                                     {L"Textual", "a text"},
                                     {L"Enum", "an enumeration"}}) {
        answer(L"Type.GenType.get", type);
        row.Edit();
        AddCalls(table, kind, row.Last());
    }
    answer(L"Type.EnumDesc.get", LongList());
    const Comparison measured = Compare(
        kRounds, [&] { return row.Edit(); }, FillBareBox);
    table.AddRatio("opening the editor of an enumeration with 10,000 entries",
                   "filling a bare combo box with as many", 1.5, measured, 1);
    com::Check(host.Restore());
}

}  // namespace quillon::benchmarks
