// The bench's window: the devices of the network, a panel for the chosen room, and what the host is
// asked. While it is open the rooms live.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "host.h"
#include "ui/dialog.h"
#include "ui/keyboard.h"
#include "ui/layout.h"
#include "window_log.h"
#include "window_panel.h"

namespace quorvex::bench {

struct WindowOptions {
    std::optional<std::chrono::seconds> time;  // none: until it is closed
    std::vector<std::wstring> open;            // devices whose window opens at once, by name
};

// Whether this process can show windows to somebody.
bool HasDisplay();

class BenchWindow final : public quillon::ui::Dialog, private quillon::ui::KeyListener {
public:
    explicit BenchWindow(Host& host);
    ~BenchWindow() override;

    // Shows the window and runs the thread's messages until it is closed; then every other window
    // of the thread is asked to close, too. Throws Failure when the window cannot be made.
    void Run(const WindowOptions& options);

private:
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id, int code, HWND control) override;
    void OnDestroyed() override;
    bool OnKey(const MSG& message) override;

    void SetTexts();
    void SetAnchors();
    std::optional<INT_PTR> OnNotify(NMHDR& header);
    void OnTimer(UINT_PTR timer);
    void OnSmallest(MINMAXINFO& info) const;
    void Live();
    void FillDevices();
    void ShowStates();
    void FitDeviceColumns() const;
    Room* Chosen();
    void OpenDevice(const Room& room);
    void CloseFocus(const Room& room);
    void CloseAll();
    // Runs the action; what fails is told in the log.
    template <class Action>
    void Try(const std::wstring& what, Action&& action);

    Host& m_host;
    PanelView m_panel;
    LogView m_log;
    quillon::ui::Layout m_layout;
    std::optional<quillon::ui::KeyboardHandling> m_keyboard;
    com::Ptr<IDispatch> m_owner;
    std::vector<std::wstring> m_states;  // as shown, by row
    std::size_t m_reports = 0;           // told in the log
    ULONGLONG m_livedUntil = 0;
    SIZE m_smallest{};
};

}  // namespace quorvex::bench
