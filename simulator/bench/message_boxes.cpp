#include "message_boxes.h"

#include <algorithm>

#include "com/error.h"
#include "com/module.h"
#include "dialog_driver.h"
#include "output.h"

namespace quorvex::bench {
namespace {

struct Button {
    std::wstring_view answer;
    int id;
};

constexpr Button kButtons[] = {{L"ok", IDOK},        {L"cancel", IDCANCEL}, {L"yes", IDYES},
                               {L"no", IDNO},        {L"retry", IDRETRY},   {L"abort", IDABORT},
                               {L"ignore", IDIGNORE}};

// What a box is dismissed with when nobody said how: the first of these that it has.
constexpr int kHarmless[] = {IDCANCEL, IDNO, IDABORT, IDOK};

constexpr wchar_t kWindowClass[] = L"QuorvexBenchBoxes";
constexpr UINT kAnswerBox = WM_APP;

MessageBoxes* g_boxes = nullptr;

std::wstring_view AnswerOf(int id) {
    for (const Button& button : kButtons) {
        if (button.id == id) return button.answer;
    }
    return L"";
}

struct Content {
    bool onlyBoxParts = true;
    std::wstring text;
};

BOOL CALLBACK OnChild(HWND child, LPARAM argument) {
    auto& content = *reinterpret_cast<Content*>(argument);
    const std::wstring kind = ClassOf(child);
    const bool isStatic = kind == L"Static";
    content.onlyBoxParts = content.onlyBoxParts && (isStatic || kind == L"Button");
    const LONG style = GetWindowLongW(child, GWL_STYLE);
    if (isStatic && (style & SS_TYPEMASK) != SS_ICON) content.text += TextOf(child);
    return TRUE;
}

// What a dialog window says if it is nothing but a text, an icon and buttons of the usual numbers.
std::optional<Content> ReadBox(HWND window) {
    Content content;
    EnumChildWindows(window, OnChild, reinterpret_cast<LPARAM>(&content));
    const bool hasButton = std::any_of(std::begin(kButtons), std::end(kButtons), [&](auto& button) {
        return GetDlgItem(window, button.id) != nullptr;
    });
    if (!content.onlyBoxParts || !hasButton) return std::nullopt;
    return content;
}

}  // namespace

std::optional<int> ButtonOf(std::wstring_view answer) {
    for (const Button& button : kButtons) {
        if (button.answer == answer) return button.id;
    }
    return std::nullopt;
}

MessageBoxes::MessageBoxes() {
    WNDCLASSW description{};
    description.lpfnWndProc = OnMessage;
    description.hInstance = com::ModuleHandle();
    description.lpszClassName = kWindowClass;
    RegisterClassW(&description);
    m_window = CreateWindowExW(0, kWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               description.hInstance, nullptr);
    if (!m_window) com::Check(HRESULT_FROM_WIN32(GetLastError()));
    m_hook = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
    if (!m_hook) com::Check(HRESULT_FROM_WIN32(GetLastError()));
    g_boxes = this;
}

MessageBoxes::~MessageBoxes() {
    g_boxes = nullptr;
    UnhookWindowsHookEx(m_hook);
    DestroyWindow(m_window);
    UnregisterClassW(kWindowClass, com::ModuleHandle());
}

LRESULT CALLBACK MessageBoxes::OnHook(int code, WPARAM wParam, LPARAM lParam) {
    try {
        const auto window = reinterpret_cast<HWND>(wParam);
        if (g_boxes && code == HCBT_ACTIVATE) g_boxes->OnActivate(window);
        if (g_boxes && code == HCBT_DESTROYWND) g_boxes->OnDestroy(window);
    } catch (...) {
        // Nothing C++ may cross the system; the box then waits for a person.
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK MessageBoxes::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kAnswerBox) return DefWindowProcW(window, message, wParam, lParam);
    try {
        if (g_boxes) g_boxes->AnswerBox(reinterpret_cast<HWND>(wParam));
    } catch (...) {
        // As in the hook.
    }
    return 0;
}

// A box can become active before it has its text and its buttons (Wine, task-modal boxes), so it is
// read when its own message loop runs.
void MessageBoxes::OnActivate(HWND window) {
    const bool known = std::find(m_open.begin(), m_open.end(), window) != m_open.end();
    if (m_attended || known || ClassOf(window) != L"#32770") return;
    m_open.push_back(window);
    PostMessageW(m_window, kAnswerBox, reinterpret_cast<WPARAM>(window), 0);
}

void MessageBoxes::AnswerBox(HWND window) {
    const auto content = ReadBox(window);
    if (!content) return;
    Box box;
    box.title = TextOf(window);
    box.text = content->text;
    int button = 0;
    if (m_answers.empty()) {
        box.trouble = L"no answer was queued";
    } else {
        button = m_answers.front();
        m_answers.pop_front();
        if (!GetDlgItem(window, button)) {
            box.trouble = L"it has no button \"" + std::wstring(AnswerOf(button)) + L"\"";
        }
    }
    if (!box.trouble.empty()) {
        const auto harmless = std::find_if(std::begin(kHarmless), std::end(kHarmless), [&](int id) {
            return GetDlgItem(window, id) != nullptr;
        });
        button = harmless == std::end(kHarmless) ? IDOK : *harmless;
    }
    box.pressed = AnswerOf(button);
    Print(L"Message box \"" + box.title + L"\": " + box.text + L" [" + box.pressed + L"]");
    m_boxes.push_back(std::move(box));
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
}

void MessageBoxes::OnDestroy(HWND window) {
    std::erase(m_open, window);
}

}  // namespace quorvex::bench
