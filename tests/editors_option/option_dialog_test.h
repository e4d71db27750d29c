// The fixture of the option dialogs: the main view's first value is the edited point, and an
// operator's steps run from the dialog's own message loop.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "window/window_test.h"

namespace quillon::test {

// Points of the edited device besides those of the small network.
inline constexpr int kOccupancyPoint = 2;
inline constexpr int kFanPoint = 3;
inline constexpr int kAppModePoint = 20;
inline constexpr int kHoldOffPoint = 21;
inline constexpr int kLightingPoint = 22;
inline constexpr int kOccupancyFieldsPoint = 23;

// The visible window of this thread that another one owns; null when there is none.
HWND PopupOf(HWND owner);

class OptionDialogTest : public WindowTest {
protected:
    using Step = std::function<void()>;

    void SetUp() override;
    void TearDown() override;

    // A device window whose main view shows the point in its first label, edited as `entry` says.
    void OpenFor(int point, const std::string& entry);
    const Window& TheWindow() const { return m_window; }

    // Asks for the edit of a label's value and does the steps while the dialog is up. A dialog that
    // none of them closes fails the test, and so does one that does not come up.
    void Edit(const std::vector<Step>& steps, int label = 0);
    void ExpectNoDialog(int label = 0);
    // Runs something that shows a modal dialog owned by a window, and the steps in it.
    void Run(HWND owner, const std::function<void()>& shows, const std::vector<Step>& steps);

    // The dialog that the steps are done in; null when it is gone.
    HWND Dialog() const { return IsWindow(m_dialog) ? m_dialog : nullptr; }
    std::vector<HWND> Buttons() const;
    HWND Button(int position) const;
    Lines Labels() const;
    // The caption of the checked button; empty when none is.
    std::wstring Checked() const;
    bool OkEnabled() const { return IsWindowEnabled(GetDlgItem(Dialog(), IDOK)) != FALSE; }

    // Steps
    Step Key(WPARAM key) const;
    // The same as a key that is held down sends it again.
    Step HeldKey(WPARAM key) const;
    Step ShiftTab() const;
    Step AccessKey(wchar_t letter) const;
    Step Click(int position) const;
    Step ClickOk() const;
    Step Expect(std::function<void()> check) const { return check; }

    // A point's bytes as they are, past the log.
    std::wstring Raw(int point);
    // Texts put to the host, in their order.
    static Lines Puts() { return Only(Host().Log(), L"Point.Value.put"); }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
    void Tick();
    bool Ready();

    Window m_window;
    HWND m_owner = nullptr;
    HWND m_dialog = nullptr;
    DWORD m_start = 0;
    std::deque<Step> m_steps;
    UINT_PTR m_timer = 0;
};

}  // namespace quillon::test
