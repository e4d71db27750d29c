// Label printing and help, by the windows of devices.
#include <algorithm>
#include <vector>

#include "commands.h"
#include "dialog_driver.h"
#include "window_controls.h"

namespace quorvex::bench::commands {
namespace {

// Watches while it lives how long messages of a window's thread have to wait, by a timer of 10 ms;
// up to the moment when a message box of the window comes up.
class Watch {
public:
    explicit Watch(HWND window) : m_start(GetTickCount64()) {
        s_window = window;
        s_last = m_start;
        s_longest = 0;
        m_timer = SetTimer(nullptr, 0, 10, OnTimer);
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { KillTimer(nullptr, m_timer); }

    ULONGLONG Elapsed() const { return GetTickCount64() - m_start; }
    static ULONGLONG LongestGap() { return s_longest; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        const ULONGLONG now = GetTickCount64();
        if (GetLastActivePopup(s_window) == s_window) s_longest = std::max(s_longest, now - s_last);
        s_last = now;
    }

    static inline HWND s_window = nullptr;
    static inline ULONGLONG s_last = 0;
    static inline ULONGLONG s_longest = 0;
    ULONGLONG m_start;
    UINT_PTR m_timer = 0;
};

}  // namespace

void PrintLabel(Session& session, const Words& words) {
    const HWND window = session.Windows().Open(session.GetHost().Find(words[0]));
    SelectTab(window, L"Label Print");
    const HWND models = ShownControl(window, L"ListBox");
    const auto line =
        static_cast<int>(SendMessageW(models, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                      reinterpret_cast<LPARAM>(words[1].c_str())));
    if (line == LB_ERR) throw Failure{L"the list has no model \"" + words[1] + L"\""};
    ClickLine(models, line);
    const Watch watch(window);
    PressButton(GetParent(models), L"Print Label");
    Print(L"The print took " + std::to_wstring(watch.Elapsed()) +
          L" ms; messages waited for at most " + std::to_wstring(Watch::LongestGap()) + L" ms");
}

// The help viewer makes its window on the thread that asks for it.
void OpenHelp(Session& session, const Words& words) {
    const HWND window = session.Windows().Open(session.GetHost().Find(words[0]));
    const std::vector<HWND> before = ShownWindows();
    ChooseMenu(window, {L"?", L"Help"});
    for (const HWND shown : ShownWindows()) {
        if (std::find(before.begin(), before.end(), shown) != before.end()) continue;
        Print(L"Help shows \"" + TextOf(shown) + L"\"");
        SendMessageW(shown, WM_CLOSE, 0, 0);
        return;
    }
    throw Failure{L"no help came up"};
}

}  // namespace quorvex::bench::commands
