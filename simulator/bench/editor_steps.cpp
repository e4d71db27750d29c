#include "editor_steps.h"

#include "dialog_driver.h"
//
#include <commctrl.h>

#include <array>
#include <utility>

namespace quorvex::bench {
namespace {

constexpr ULONGLONG kEditorPatience = 30'000;

EditorSteps* g_steps = nullptr;

struct Key {
    std::wstring_view name;
    int code;
};

constexpr std::array kKeys{
    Key{L"enter", VK_RETURN},   Key{L"escape", VK_ESCAPE}, Key{L"tab", VK_TAB},
    Key{L"backspace", VK_BACK}, Key{L"delete", VK_DELETE}, Key{L"home", VK_HOME},
    Key{L"end", VK_END},        Key{L"up", VK_UP},         Key{L"down", VK_DOWN},
    Key{L"left", VK_LEFT},      Key{L"right", VK_RIGHT},   Key{L"space", VK_SPACE},
    Key{L"f2", VK_F2}};

int KeyOf(const std::wstring& name) {
    for (const Key& key : kKeys)
        if (key.name == name) return key.code;
    throw Failure{L"\"" + name + L"\" is no key"};
}

// A dialog that can be worked with: on top of its owner, and not below another.
BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    if (ClassOf(window) != L"#32770" || !GetWindow(window, GW_OWNER)) return TRUE;
    if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    // Message boxes are answered elsewhere.
    if (!GetDlgItem(window, IDCANCEL) || !GetDlgItem(window, IDOK)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND DialogInFront() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

struct Search {
    std::wstring kind;
    std::wstring text;
    HWND found = nullptr;
};

BOOL CALLBACK FindControl(HWND control, LPARAM argument) {
    auto& search = *reinterpret_cast<Search*>(argument);
    if (ClassOf(control) != search.kind || !IsWindowVisible(control)) return TRUE;
    wchar_t text[256] = {};
    GetWindowTextW(control, text, 256);
    if (!search.text.empty() && text != search.text) return TRUE;
    search.found = control;
    return FALSE;
}

HWND ControlOf(HWND dialog, const wchar_t* kind, const std::wstring& text = {}) {
    Search search{kind, text};
    EnumChildWindows(dialog, FindControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void ChooseEntry(HWND box, const std::wstring& label) {
    const LRESULT entry = SendMessageW(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(label.c_str()));
    if (entry == CB_ERR) throw Failure{L"there is no entry \"" + label + L"\""};
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(GetParent(box), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(box), CBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(box));
}

void ChooseRow(HWND list, const std::wstring& text) {
    LVFINDINFOW info{};
    info.flags = LVFI_STRING;
    info.psz = text.c_str();
    const auto row = static_cast<int>(SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                                                   reinterpret_cast<LPARAM>(&info)));
    if (row < 0) throw Failure{L"there is no row \"" + text + L"\""};
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SetFocus(list);
    PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
}

// An entry of a drop-down list, an option or check box by its text, or a row, which Enter opens.
void Choose(HWND dialog, const std::wstring& text) {
    if (const HWND box = ControlOf(dialog, WC_COMBOBOXW)) return ChooseEntry(box, text);
    if (const HWND list = ControlOf(dialog, WC_LISTVIEWW)) return ChooseRow(list, text);
    const HWND button = ControlOf(dialog, WC_BUTTONW, text);
    if (!button) throw Failure{L"there is nothing \"" + text + L"\" to choose"};
    PostMessageW(button, BM_CLICK, 0, 0);
}

void ExpectShown(HWND dialog, const std::wstring& text) {
    for (const wchar_t* kind : {WC_EDITW, WC_COMBOBOXW, WC_STATICW})
        if (ControlOf(dialog, kind, text)) return;
    const HWND field = ControlOf(dialog, WC_EDITW);
    wchar_t shown[256] = {};
    if (field) GetWindowTextW(field, shown, 256);
    throw Failure{L"the dialog does not show \"" + text + L"\" but \"" + shown + L"\""};
}

}  // namespace

std::deque<Step> ReadSteps(const Words& words) {
    std::deque<Step> steps;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::wstring& word = words[i];
        const auto argument = [&]() -> const std::wstring& {
            if (i + 1 == words.size()) throw Failure{L"\"" + word + L"\" of what?"};
            return words[++i];
        };
        if (word == L"type") {
            steps.push_back({Step::Kind::kType, argument()});
        } else if (word == L"key") {
            steps.push_back({Step::Kind::kKey, {}, KeyOf(argument())});
        } else if (word == L"choose") {
            steps.push_back({Step::Kind::kChoose, argument()});
        } else if (word == L"shows") {
            steps.push_back({Step::Kind::kShows, argument()});
        } else if (word == L"invalid") {
            steps.push_back({Step::Kind::kChoose, L"Invalid"});
        } else if (word == L"ok" || word == L"cancel") {
            steps.push_back({Step::Kind::kPress, {}, word == L"ok" ? IDOK : IDCANCEL});
        } else {
            throw Failure{L"\"" + word + L"\" is no step of an edit"};
        }
    }
    return steps;
}

EditorSteps::EditorSteps(std::deque<Step> steps) : m_steps(std::move(steps)) {
    g_steps = this;
    m_lastStep = GetTickCount64();
    m_timer = SetTimer(nullptr, 0, 10, OnTimer);
}

EditorSteps::~EditorSteps() {
    KillTimer(nullptr, m_timer);
    g_steps = nullptr;
}

void CALLBACK EditorSteps::OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    try {
        if (g_steps) g_steps->RunNext();
    } catch (const Failure& failure) {
        g_steps->m_trouble = failure.text;
    } catch (...) {
        g_steps->m_trouble = L"a step failed";
    }
}

// Keys and clicks are posted, so a step is over before the next one is looked for, whatever dialog
// it opens. A dialog has settled when it is in front at two ticks and nothing is posted any more.
void EditorSteps::RunNext() {
    const HWND dialog = DialogInFront();
    const HWND before = std::exchange(m_inFront, dialog);
    const bool busy = HIWORD(GetQueueStatus(QS_POSTMESSAGE | QS_SENDMESSAGE)) != 0;
    if (!dialog || dialog != before || busy) return;
    if (!m_trouble.empty() || GetTickCount64() - m_lastStep > kEditorPatience) {
        if (m_trouble.empty()) m_trouble = L"the dialog was left open";
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    if (m_steps.empty()) return;
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    m_lastStep = GetTickCount64();
    m_inFront = nullptr;
    Do(dialog, step);
}

void EditorSteps::Do(HWND dialog, const Step& step) {
    const HWND focus = GetFocus();
    switch (step.kind) {
        case Step::Kind::kType:
            for (const wchar_t character : step.text) PostMessageW(focus, WM_CHAR, character, 1);
            break;
        case Step::Kind::kKey:
            PostMessageW(focus, WM_KEYDOWN, static_cast<WPARAM>(step.number), 1);
            break;
        case Step::Kind::kChoose:
            Choose(dialog, step.text);
            break;
        case Step::Kind::kShows:
            ExpectShown(dialog, step.text);
            break;
        case Step::Kind::kPress:
            PostMessageW(GetDlgItem(dialog, step.number), BM_CLICK, 0, 0);
            break;
    }
}

// The key that opens the dialog is handled until the dialog is closed, so an empty queue means that
// all is over.
void EditorSteps::Finish() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (!m_trouble.empty()) throw Failure{m_trouble};
    if (!m_steps.empty()) throw Failure{L"no dialog came up for the rest of the steps"};
}

}  // namespace quorvex::bench
