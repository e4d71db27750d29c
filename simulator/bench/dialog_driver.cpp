#include "dialog_driver.h"

#include <optional>
#include <utility>

#include "window_controls.h"

namespace quorvex::bench {
namespace {

constexpr int kFileName = 0x47C;  // of the platform's file dialogs
constexpr UINT kLookEvery = 20;
// How long a dialog may be there that no step wants, before it is taken for a fault.
constexpr ULONGLONG kPatience = 20000;

// A dialog window that waits for its operator. Windows with a menu bar are no dialogs, and those
// that another window disables wait for that one.
bool IsWaitingDialog(HWND window) {
    return IsWindowEnabled(window) && GetWindow(window, GW_OWNER) && !GetMenu(window) &&
           ClassOf(window) == L"#32770";
}

BOOL CALLBACK OnControlOfForm(HWND control, LPARAM found) {
    const std::wstring kind = ClassOf(control);
    if (kind == L"Static" || kind == L"Button") return TRUE;
    *reinterpret_cast<bool*>(found) = true;
    return FALSE;
}

// Message boxes hold texts and buttons alone, and are answered elsewhere.
bool IsMessageBox(HWND dialog) {
    bool form = false;
    EnumChildWindows(dialog, OnControlOfForm, reinterpret_cast<LPARAM>(&form));
    return !form;
}

class Driver {
public:
    explicit Driver(std::vector<DialogStep> steps) : m_steps(std::move(steps)) {
        s_driver = this;
        m_timer = SetTimer(nullptr, 0, kLookEvery, OnTimer);
    }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;
    ~Driver() {
        KillTimer(nullptr, m_timer);
        s_driver = nullptr;
    }

    // Throws Failure.
    void Finish() const {
        if (m_failure) throw Failure(*m_failure);
        if (m_next < m_steps.size())
            throw Failure{L"no dialog \"" + m_steps[m_next].title + L"\" came up"};
    }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
        try {
            if (s_driver) s_driver->Look();
        } catch (...) {
            // Nothing C++ may cross the system; the dialog is met again at the next tick.
        }
    }

    bool IsNext(HWND dialog) const {
        if (m_next == m_steps.size() || m_failure) return false;
        const DialogStep& step = m_steps[m_next];
        if (step.control != 0 && !GetDlgItem(dialog, step.control)) return false;
        return TextOf(dialog) == step.title;
    }

    void Look() {
        if (std::exchange(m_looking, true)) return;
        std::vector<HWND> dialogs = ShownWindows();
        std::erase_if(dialogs, [](HWND window) { return !IsWaitingDialog(window); });
        for (const HWND dialog : dialogs) {
            if (!IsWindow(dialog)) continue;
            if (dialog == m_done)
                Wait(dialog);
            else if (IsNext(dialog))
                Act(dialog);
            else if (!IsMessageBox(dialog))
                Wonder(dialog);
        }
        m_looking = false;
    }

    // Acted on, and on its way out: unless it did not like what it was given.
    void Wait(HWND dialog) {
        if (GetTickCount64() - m_actedAt > kPatience)
            Fail(dialog, L"the dialog \"" + TextOf(dialog) + L"\" does not go");
    }

    void Act(HWND dialog) {
        m_done = dialog;
        m_actedAt = GetTickCount64();
        m_strange = nullptr;
        const DialogStep& step = m_steps[m_next++];
        try {
            step.act(dialog);
        } catch (const Failure& failure) {
            Fail(dialog, failure.text);
        } catch (const com::Error& error) {
            Fail(dialog, Describe(error));
        }
    }

    void Wonder(HWND dialog) {
        const ULONGLONG now = GetTickCount64();
        if (dialog != m_strange) {
            m_strange = dialog;
            m_since = now;
        } else if (m_failure || now - m_since > kPatience) {
            Fail(dialog, L"a dialog \"" + TextOf(dialog) + L"\" came up that nothing expected");
        }
    }

    // The first failure is the one that is told.
    void Fail(HWND dialog, std::wstring text) {
        if (!m_failure) m_failure = Failure{std::move(text)};
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }

    static inline Driver* s_driver = nullptr;
    std::vector<DialogStep> m_steps;
    std::size_t m_next = 0;
    std::optional<Failure> m_failure;
    UINT_PTR m_timer = 0;
    HWND m_done = nullptr;  // acted on last
    ULONGLONG m_actedAt = 0;
    HWND m_strange = nullptr;  // matches no step
    ULONGLONG m_since = 0;
    bool m_looking = false;
};

// The place of the entry with the caption; -1 when there is none.
int PlaceOf(HMENU menu, std::wstring_view caption) {
    for (int place = 0; place < GetMenuItemCount(menu); ++place) {
        const int length =
            GetMenuStringW(menu, static_cast<UINT>(place), nullptr, 0, MF_BYPOSITION);
        std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
        GetMenuStringW(menu, static_cast<UINT>(place), text.data(), length + 1, MF_BYPOSITION);
        text.resize(static_cast<std::size_t>(length));
        if (PlainCaption(text) == caption) return place;
    }
    return -1;
}

}  // namespace

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, std::size(name)))};
}

std::wstring PlainCaption(std::wstring_view caption) {
    std::wstring text(caption.substr(0, caption.find(L'\t')));
    std::erase(text, L'&');
    return text;
}

DialogStep NameFile(std::wstring title, std::wstring file) {
    return {std::move(title), kFileName, [file = std::move(file)](HWND dialog) {
                SetDlgItemTextW(dialog, kFileName, file.c_str());
                PostMessageW(dialog, WM_COMMAND, IDOK, 0);
            }};
}

DialogStep CancelFile(std::wstring title) {
    return {std::move(title), kFileName,
            [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); }};
}

void DriveDialogs(std::vector<DialogStep> steps, const std::function<void()>& command) {
    const Driver driver(std::move(steps));
    command();
    driver.Finish();
}

void ChooseMenu(HWND window, const std::vector<std::wstring_view>& captions) {
    HMENU menu = GetMenu(window);
    UINT id = 0;
    for (const std::wstring_view caption : captions) {
        const int place = PlaceOf(menu, caption);
        if (place < 0) throw Failure{L"the menu has no entry \"" + std::wstring(caption) + L"\""};
        const UINT state = GetMenuState(menu, static_cast<UINT>(place), MF_BYPOSITION);
        if (state & (MF_GRAYED | MF_DISABLED))
            throw Failure{L"the menu entry \"" + std::wstring(caption) + L"\" is greyed"};
        id = GetMenuItemID(menu, place);
        menu = GetSubMenu(menu, place);
    }
    SendMessageW(window, WM_COMMAND, id, 0);
}

void PressButton(HWND dialog, std::wstring_view caption) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (ClassOf(control) != L"Button" || PlainCaption(TextOf(control)) != caption) continue;
        if (!IsWindowEnabled(control) || !IsWindowVisible(control)) break;
        SendMessageW(control, BM_CLICK, 0, 0);
        return;
    }
    throw Failure{L"there is no button \"" + std::wstring(caption) + L"\" to press"};
}

void ClickLine(HWND listBox, int line) {
    SendMessageW(listBox, LB_SETTOPINDEX, static_cast<WPARAM>(line), 0);
    RECT place{};
    if (SendMessageW(listBox, LB_GETITEMRECT, static_cast<WPARAM>(line),
                     reinterpret_cast<LPARAM>(&place)) == LB_ERR)
        throw Failure{L"the list has no line " + std::to_wstring(line)};
    const LPARAM point = MAKELPARAM(place.left + 2, (place.top + place.bottom) / 2);
    SendMessageW(listBox, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(listBox, WM_LBUTTONUP, 0, point);
}

}  // namespace quorvex::bench
