#include "device_window.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "com/error.h"
#include "com/text.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::benchmarks {

namespace {

// Far apart, so that polling does not mix with what is measured.
constexpr long kPollingRate = 100'000;

std::string Section(const char* name, int entries) {
    std::string text = "[" + std::string(name) + "]\r\n";
    for (int entry = 0; entry < entries; ++entry)
        text += std::to_string(entry) + "=" + std::to_string(entry) + "\r\n";
    return text;
}

std::vector<HWND> ShownDialogs() {
    std::vector<HWND> dialogs = test::Dialogs();
    std::erase_if(dialogs, [](HWND dialog) { return !IsWindowVisible(dialog); });
    return dialogs;
}

}  // namespace

WindowSettings::WindowSettings(const Session& session, const WindowRows& rows)
    : m_file((session.Folder() / (std::wstring(kProgramId) + L".ini")).string()) {
    std::ifstream before(m_file, std::ios::binary);
    m_before.assign(std::istreambuf_iterator<char>(before), {});
    std::ofstream(m_file, std::ios::binary)
        << "[Settings]\r\nDisplayHW=1\r\n"
        << Section("MainView", 5) << Section("TestNVIs", rows.variables)
        << Section("AdvancedCPs", rows.properties);
}

WindowSettings::~WindowSettings() {
    std::ofstream(m_file, std::ios::binary) << m_before;
}

HWND OpenDeviceWindow(const Room& room) {
    IDispatch* owner = nullptr;
    long rate = kPollingRate;
    com::Check(room.subject.As<IDeviceEx>()->ShowFocus(&owner, &rate));
    for (const HWND window : ShownDialogs())
        if (GetDlgItem(window, IDC_SSTAB1)) return window;
    throw std::runtime_error("no device window came up");
}

void CloseDeviceWindows() {
    for (const HWND window : ShownDialogs()) SendMessageW(window, WM_CLOSE, 0, 0);
    if (!ShownDialogs().empty()) throw std::runtime_error("a window stays open");
}

HWND ControlOf(HWND window, int id) {
    const HWND control = test::ControlOf(window, id);
    if (!control) throw std::runtime_error("a control is missing");
    return control;
}

long AllCalls(const Session& session) {
    com::Bstr lines;
    com::Check(session.Host().get_Counts(lines.Out()));
    long all = 0;
    const std::string text(lines.View().begin(), lines.View().end());
    for (std::size_t place = 0; place < text.size(); place = text.find('\n', place) + 1) {
        long count = 0;
        std::from_chars(text.data() + place, text.data() + text.size(), count);
        all += count;
        if (text.find('\n', place) == std::string::npos) break;
    }
    return all;
}

}  // namespace quillon::benchmarks
