#include "support/message_boxes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "support/plugin_window.h"

namespace quillon::test {
namespace {

constexpr int kButtons[] = {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO};
// What a box that nobody expected is dismissed with: the first of these that it has.
constexpr int kHarmless[] = {IDCANCEL, IDNO, IDABORT, IDOK};

MessageBoxes* g_boxes = nullptr;

Icon IconOf(HWND picture) {
    const auto shown = reinterpret_cast<HICON>(SendMessageW(picture, STM_GETICON, 0, 0));
    const auto is = [&](const wchar_t* name) { return shown == LoadIconW(nullptr, name); };
    if (!shown) return Icon::kNone;
    if (is(IDI_ERROR)) return Icon::kStop;
    if (is(IDI_QUESTION)) return Icon::kQuestion;
    if (is(IDI_WARNING)) return Icon::kExclamation;
    return is(IDI_INFORMATION) ? Icon::kInformation : Icon::kNone;
}

struct Content {
    bool onlyBoxParts = true;
    Box box;
};

void AddPart(Content& content, HWND part) {
    const std::wstring kind = ClassOf(part);
    if (kind == L"Button") return;
    content.onlyBoxParts = content.onlyBoxParts && kind == L"Static";
    if (kind != L"Static") return;
    const LONG style = GetWindowLongW(part, GWL_STYLE);
    if ((style & SS_TYPEMASK) == SS_ICON)
        content.box.icon = IconOf(part);
    else
        content.box.text += WindowText(part);
}

// A dialog window of nothing but a text, an icon and buttons of the usual numbers.
std::optional<Box> ReadBox(HWND window) {
    if (ClassOf(window) != L"#32770") return std::nullopt;
    Content content;
    for (const HWND part : ControlsBelow(window)) AddPart(content, part);
    Box box = std::move(content.box);
    for (const int button : kButtons)
        if (GetDlgItem(window, button)) box.buttons.push_back(button);
    if (!content.onlyBoxParts || box.buttons.empty()) return std::nullopt;
    // Windows numbers the button of a box that has OK alone as if it were Cancel.
    if (box.buttons == std::vector<int>{IDCANCEL}) box.buttons = {IDOK};
    box.title = WindowText(window);
    box.hadOwner = GetWindow(window, GW_OWNER) != nullptr;
    return box;
}

int Harmless(const Box& box) {
    const auto has = [&](int button) { return std::ranges::count(box.buttons, button) > 0; };
    const auto* found = std::find_if(std::begin(kHarmless), std::end(kHarmless), has);
    return found == std::end(kHarmless) ? box.buttons.front() : *found;
}

void Press(HWND window, int button) {
    if (!GetDlgItem(window, button)) button = IDCANCEL;
    PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(MAKELONG(button, BN_CLICKED)),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
}

}  // namespace

MessageBoxes::MessageBoxes() {
    g_boxes = this;
    m_hook = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
    EXPECT_NE(m_hook, nullptr) << GetLastError();
}

MessageBoxes::~MessageBoxes() {
    UnhookWindowsHookEx(m_hook);
    g_boxes = nullptr;
    if (!m_replies.empty())
        ADD_FAILURE() << m_replies.size() << " message boxes were expected and never came up";
}

void MessageBoxes::Answer(int button, std::function<void()> before) {
    m_replies.push_back({button, std::move(before)});
}

LRESULT CALLBACK MessageBoxes::OnHook(int code, WPARAM wParam, LPARAM lParam) {
    try {
        const auto window = reinterpret_cast<HWND>(wParam);
        if (g_boxes && code == HCBT_ACTIVATE) g_boxes->OnActivate(window);
        if (g_boxes && code == HCBT_DESTROYWND) {
            std::erase(g_boxes->m_open, window);
            std::erase(g_boxes->m_waiting, window);
        }
    } catch (...) {
        ADD_FAILURE() << "a message box could not be answered";
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::optional<MessageBoxes::Reply> MessageBoxes::TakeReply(const Box& box) {
    if (m_replies.empty() && m_choose) {
        if (const int button = m_choose(box)) return Reply{button, {}};
    }
    if (m_replies.empty()) {
        ADD_FAILURE() << "unexpected message box: " << testing::PrintToString(box.text);
        return std::nullopt;
    }
    Reply reply = std::move(m_replies.front());
    m_replies.pop_front();
    if (std::ranges::count(box.buttons, reply.button) == 0) {
        ADD_FAILURE() << "no button " << reply.button
                      << " in message box: " << testing::PrintToString(box.text);
        return std::nullopt;
    }
    return reply;
}

// A box is activated before it has its text and its buttons, so it is looked at from its own loop.
void MessageBoxes::OnActivate(HWND window) {
    if (ClassOf(window) != L"#32770" || std::ranges::count(m_open, window) > 0) return;
    m_open.push_back(window);
    m_waiting.push_back(window);
    EXPECT_NE(SetTimer(nullptr, 0, 1, OnTimer), 0u);
}

void CALLBACK MessageBoxes::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (!g_boxes) return;
    try {
        for (const HWND window : std::exchange(g_boxes->m_waiting, {})) g_boxes->OnShown(window);
    } catch (...) {
        ADD_FAILURE() << "a message box could not be answered";
    }
}

// A box that has gone meanwhile may have left its number to a window of another process.
void MessageBoxes::OnShown(HWND window) {
    if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) return;
    auto box = ReadBox(window);
    if (!box) return;
    const auto reply = TakeReply(*box);
    box->pressed = reply ? reply->button : Harmless(*box);
    const int button = box->pressed;
    m_seen.push_back(std::move(*box));
    if (reply && reply->before) reply->before();
    Press(window, button);
}

}  // namespace quillon::test
