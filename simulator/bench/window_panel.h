// The bench window's panel: what an operator finds on a room unit and in its room.
#pragma once

#include <string>

#include "host.h"

namespace quorvex::bench {

// Works on the panel's controls of the bench window.
class PanelView {
public:
    PanelView(Host& host) : m_host(host) {}

    void Attach(HWND window);
    // nullptr: no device is chosen, and everything is disabled.
    void Choose(const Room* room);
    // Shows how things are now. A field in which somebody types is left alone.
    void Refresh();
    // A command of one of the panel's controls; true: it was one.
    bool OnCommand(int id, int code);
    // The timer kModeTimer of the window.
    void OnModeTimer();

    static constexpr UINT_PTR kModeTimer = 4;

private:
    static LRESULT CALLBACK OnModeButton(HWND button, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR panel) noexcept;
    void PressMode(bool down);
    void ReleaseMode();
    void ReadStatus();
    void ReadCounts();
    void ReadTemperature();
    void ShowText(int id, const std::wstring& text);
    void ShowCheck(int id, bool on);
    std::wstring TextOf(int id) const;

    Host& m_host;
    HWND m_window = nullptr;
    const Room* m_room = nullptr;
    bool m_filling = false;            // changes are the program's own
    const Room* m_modeRoom = nullptr;  // whose MODE button is pressed
    ULONGLONG m_modeSince = 0;
};

}  // namespace quorvex::bench
