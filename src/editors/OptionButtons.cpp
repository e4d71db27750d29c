#include "editors/OptionButtons.h"

#include <commctrl.h>

#include <algorithm>
#include <new>

#include "window/resource.h"

namespace quillon {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr UINT_PTR kSubclass = 1;

// The width of a caption with the circle before it.
int WidthOf(HDC context, const std::wstring& caption) {
    SIZE size{};
    GetTextExtentPoint32W(context, caption.c_str(), static_cast<int>(caption.size()), &size);
    return size.cx + 2 * GetSystemMetrics(SM_CXMENUCHECK);
}

bool IsChecked(HWND button) {
    return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void SetTabStop(HWND button, bool stop) {
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    const LONG wanted = stop ? style | WS_TABSTOP : style & ~WS_TABSTOP;
    if (wanted != style) SetWindowLongW(button, GWL_STYLE, wanted);
}

}  // namespace

bool OptionButtons::Create(HWND parent, const std::vector<Option>& options) {
    m_options = &options;
    const bool made = CreatePage(IDD_OPTION_BUTTONS, parent);
    m_options = nullptr;
    return made;
}

bool OptionButtons::OnInit() {
    const HWND first = Item(IDC_OPTBUTTON_FIRST);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(first, WM_GETFONT, 0, 0));
    GetWindowRect(first, &m_first);
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&m_first), 2);
    const HDC context = GetDC(Handle());
    m_dpi = GetDeviceCaps(context, LOGPIXELSY);
    const HGDIOBJ before = SelectObject(context, font);
    const std::size_t count = std::min(m_options->size(), kMostButtons);
    m_buttons.reserve(count);
    for (std::size_t position = 0; position < count; ++position) {
        const std::wstring& caption = (*m_options)[position].label;
        AddButton(position, caption, font);
        m_width = std::max(m_width, WidthOf(context, caption));
    }
    SelectObject(context, before);
    ReleaseDC(Handle(), context);
    ShowWindow(first, m_buttons.empty() ? SW_HIDE : SW_SHOW);
    return false;
}

void OptionButtons::AddButton(std::size_t position, const std::wstring& caption, HFONT font) {
    const int id = IDC_OPTBUTTON_FIRST + static_cast<int>(position);
    HWND button = Item(id);
    if (position > 0) {
        button = CreateWindowW(L"BUTTON", L"", WS_CHILD | WS_VISIBLE | BS_RADIOBUTTON, m_first.left,
                               TopOf(position), m_first.right - m_first.left,
                               m_first.bottom - m_first.top, Handle(),
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        // Without one of its options the column would stand for others than it shows.
        if (!button) throw std::bad_alloc();
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    SetWindowTextW(button, caption.c_str());
    SetWindowSubclass(button, OnButton, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    m_buttons.push_back(button);
}

int OptionButtons::TopOf(std::size_t position) const {
    return m_first.top + MulDiv(kTwipsApart * static_cast<int>(position), m_dpi, kTwipsPerInch);
}

SIZE OptionButtons::NeededSize() const {
    if (m_buttons.empty()) return {};
    const int height = m_first.bottom - m_first.top;
    return {m_first.left + m_width, TopOf(m_buttons.size() - 1) + height + m_first.top};
}

void OptionButtons::Place(const RECT& rect) {
    SetWindowPos(Handle(), nullptr, rect.left, rect.top, rect.right - rect.left,
                 rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(static_cast<int>(NeededSize().cy) - 1, 0);
    info.nPage = static_cast<UINT>(rect.bottom - rect.top);
    SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
    RECT client{};
    GetClientRect(Handle(), &client);
    for (const HWND button : m_buttons)
        SetWindowPos(button, nullptr, 0, 0, client.right - m_first.left,
                     m_first.bottom - m_first.top, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
}

// ---- the choice

std::optional<std::size_t> OptionButtons::PositionOf(HWND button) const {
    const auto found = std::find(m_buttons.begin(), m_buttons.end(), button);
    if (found == m_buttons.end()) return std::nullopt;
    return static_cast<std::size_t>(found - m_buttons.begin());
}

std::optional<std::size_t> OptionButtons::Checked() const {
    const auto found = std::find_if(m_buttons.begin(), m_buttons.end(), IsChecked);
    if (found == m_buttons.end()) return std::nullopt;
    return static_cast<std::size_t>(found - m_buttons.begin());
}

// The checked button is the one that Tab goes to.
void OptionButtons::Check(std::size_t position) {
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        const bool one = i == position;
        if (IsChecked(m_buttons[i]) != one)
            SendMessageW(m_buttons[i], BM_SETCHECK, one ? BST_CHECKED : BST_UNCHECKED, 0);
        SetTabStop(m_buttons[i], one);
    }
}

void OptionButtons::Choose(std::size_t position) {
    Check(position);
    m_chosen();
}

bool OptionButtons::TakeFocus() const {
    if (m_buttons.empty()) return false;
    SetFocus(m_buttons[Checked().value_or(0)]);
    return true;
}

bool OptionButtons::OnCommand(int, int code, HWND control) {
    // A button also says that it is clicked when it only takes the focus.
    if (code != BN_CLICKED || m_takingFocus) return false;
    const auto position = PositionOf(control);
    if (!position) return false;
    Choose(*position);
    return true;
}

void OptionButtons::OnArrow(HWND button, bool forward) {
    const auto position = PositionOf(button);
    if (!position) return;
    const std::size_t count = m_buttons.size();
    const std::size_t next = (*position + (forward ? 1 : count - 1)) % count;
    SetFocus(m_buttons[next]);
    Choose(next);
}

LRESULT CALLBACK OptionButtons::OnButton(HWND button, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR self) noexcept {
    auto& column = *reinterpret_cast<OptionButtons*>(self);
    try {
        switch (message) {
            case WM_GETDLGCODE:
                return DefSubclassProc(button, message, wParam, lParam) | DLGC_WANTARROWS;
            case WM_SETFOCUS: {
                column.ShowWhole(button);
                column.m_takingFocus = true;
                const LRESULT result = DefSubclassProc(button, message, wParam, lParam);
                column.m_takingFocus = false;
                return result;
            }
            case WM_KEYDOWN:
                if (wParam >= VK_LEFT && wParam <= VK_DOWN) {
                    column.OnArrow(button, wParam == VK_RIGHT || wParam == VK_DOWN);
                    return 0;
                }
                break;
            case WM_NCDESTROY:
                RemoveWindowSubclass(button, OnButton, kSubclass);
                break;
            default:
                break;
        }
    } catch (...) {
        return 0;
    }
    return DefSubclassProc(button, message, wParam, lParam);
}

// ---- scrolling

std::optional<INT_PTR> OptionButtons::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_VSCROLL:
            OnScrollBar(LOWORD(wParam));
            return TRUE;
        case WM_MOUSEWHEEL: {
            m_wheel += GET_WHEEL_DELTA_WPARAM(wParam);
            const int notches = m_wheel / WHEEL_DELTA;
            m_wheel -= notches * WHEEL_DELTA;
            ScrollTo(m_top - notches * MulDiv(kTwipsApart, m_dpi, kTwipsPerInch));
            return TRUE;
        }
        default:
            return Dialog::OnMessage(message, wParam, lParam);
    }
}

int OptionButtons::PageHeight() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return client.bottom;
}

void OptionButtons::OnScrollBar(int request) {
    const int line = MulDiv(kTwipsApart, m_dpi, kTwipsPerInch);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    switch (request) {
        case SB_LINEUP:
            return ScrollTo(m_top - line);
        case SB_LINEDOWN:
            return ScrollTo(m_top + line);
        case SB_PAGEUP:
            return ScrollTo(m_top - PageHeight());
        case SB_PAGEDOWN:
            return ScrollTo(m_top + PageHeight());
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            GetScrollInfo(Handle(), SB_VERT, &info);
            return ScrollTo(info.nTrackPos);
        default:
            return;
    }
}

void OptionButtons::ScrollTo(int top) {
    const int last = std::max(static_cast<int>(NeededSize().cy) - PageHeight(), 0);
    top = std::clamp(top, 0, last);
    if (top == m_top) return;
    ScrollWindowEx(Handle(), 0, m_top - top, nullptr, nullptr, nullptr, nullptr,
                   SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
    m_top = top;
    SetScrollPos(Handle(), SB_VERT, top, TRUE);
}

void OptionButtons::ShowWhole(HWND button) {
    const auto position = PositionOf(button);
    if (!position) return;
    const int top = TopOf(*position) - m_first.top;
    const int bottom = TopOf(*position) + (m_first.bottom - m_first.top) + m_first.top;
    if (top < m_top)
        ScrollTo(top);
    else if (bottom > m_top + PageHeight())
        ScrollTo(bottom - PageHeight());
}

}  // namespace quillon
