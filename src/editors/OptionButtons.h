// A column of option buttons that is a control of a dialog: the array optButton.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "editors/option_list.h"
#include "ui/dialog.h"

namespace quillon {

// A button is chosen by a click, Space, its access key, or an arrow key from the one before it;
// never by taking the focus alone. A column taller than its place is scrolled, by wheel, bar and
// the buttons that take the focus.
class OptionButtons final : public ui::Dialog {
public:
    // More options than this are not offered: a process has no more than 10,000 window handles.
    static constexpr std::size_t kMostButtons = 1000;
    // From one button to the next.
    static constexpr int kTwipsApart = 400;

    // `chosen` is called after each choice of the operator's.
    explicit OptionButtons(std::function<void()> chosen) : m_chosen(std::move(chosen)) {}

    bool Create(HWND parent, const std::vector<Option>& options);
    // What the column needs to be shown whole, in pixels. A column without buttons needs nothing.
    SIZE NeededSize() const;
    void Place(const RECT& rect);

    void Check(std::size_t position);
    // The first checked one.
    std::optional<std::size_t> Checked() const;
    // Gives the focus to the checked button, else to the first one. False when there is none.
    bool TakeFocus() const;

private:
    static LRESULT CALLBACK OnButton(HWND button, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR self) noexcept;

    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id, int code, HWND control) override;

    void AddButton(std::size_t position, const std::wstring& caption, HFONT font);
    int TopOf(std::size_t position) const;
    std::optional<std::size_t> PositionOf(HWND button) const;
    void Choose(std::size_t position);
    void OnArrow(HWND button, bool forward);
    void OnScrollBar(int request);
    void ScrollTo(int top);
    void ShowWhole(HWND button);
    int PageHeight() const;

    std::function<void()> m_chosen;
    const std::vector<Option>* m_options = nullptr;  // while the window is made
    std::vector<HWND> m_buttons;
    RECT m_first{};  // the first button as laid out, unscrolled
    int m_dpi = 96;
    int m_width = 0;
    int m_top = 0;  // scrolled by this much
    int m_wheel = 0;
    bool m_takingFocus = false;
};

}  // namespace quillon
