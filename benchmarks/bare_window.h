// The device window as bare as the system can make it.
#pragma once

#include <windows.h>
//
#include <commctrl.h>

#include <string>
#include <utility>
#include <vector>

#include "session.h"

namespace quillon::benchmarks {

// The window's dialogs without anything behind them, and what it reads and shows in its lists. Goes
// with this.
class BareWindow {
public:
    BareWindow(const Room& room, std::string settings)
        : m_device(room.bare.Get()), m_settings(std::move(settings)) {}
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;
    ~BareWindow();

    void Open();

private:
    HWND Make(int dialog, HWND parent) const;
    void CreateWindows();
    std::string Read(const char* section, const char* key) const;
    std::vector<std::string> ReadSection(const char* section) const;
    void Fill(int id, IDispatch* points, const std::vector<std::string>& entries, bool variables);

    IDevice* m_device;
    std::string m_settings;
    HMODULE m_module = GetModuleHandleW(L"Quillon.dll");
    HWND m_frame = nullptr;
    HWND m_splash = nullptr;
    HIMAGELIST m_images = nullptr;
};

}  // namespace quillon::benchmarks
