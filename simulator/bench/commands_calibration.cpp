// Calibration, by the windows of devices and the hands on the unit.
#include "commands.h"
#include "dialog_driver.h"
#include "window_controls.h"

namespace quorvex::bench::commands {
namespace {

constexpr long kModeInput = 1;  // the second one
constexpr long kModeAlone = 1 << kModeInput;
constexpr long kSettling = 500;          // milliseconds, for a new count
constexpr DWORD kLongestPress = 10'000;  // milliseconds

// Holds MODE down until the window has taken the voltage, boxes included.
void PressMode(Host& host, const Room& room, HWND voltage) {
    const ULONGLONG start = GetTickCount64();
    host.SetInput(room, kModeInput, true);
    bool taken = false;
    while (!taken && GetTickCount64() - start < kLongestPress) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        PumpMessages();
        taken = !IsWindow(voltage) || GetWindowTextLengthW(voltage) == 0;
    }
    host.SetInput(room, kModeInput, false);
    if (!taken) throw Failure{L"the window did not take the voltage"};
}

}  // namespace

void Calibrate(Session& session, const Words& words) {
    Host& host = session.GetHost();
    const Room& room = host.Find(words[0]);
    const bool high = ParseSwitch(words[1], L"high", L"low");
    if (host.Now(room).inputs & ~kModeAlone)
        throw Failure{L"inputs other than MODE are on: the unit cannot be calibrated"};
    const HWND window = session.Windows().Open(room);
    SelectTab(window, L"Calibration");
    host.SetCalibrationSwitch(room, high);
    host.Advance(kSettling);
    const HWND voltage = ShownControl(window, L"Edit");
    SetWindowTextW(voltage, words[2].c_str());
    PressMode(host, room, voltage);
}

void Calibrations(Session& session, const Words& words) {
    const bool save = ParseSwitch(words[0], L"save", L"load");
    const std::wstring file = FullPath(words[2]);
    const HWND window = session.Windows().Open(session.GetHost().Find(words[1]));
    // The file dialog would ask before it replaces one.
    if (save) DeleteFileW(file.c_str());
    const auto title =
        save ? L"Save calibration data to file..." : L"Download calibration data from file...";
    DriveDialogs({NameFile(title, file)}, [&] {
        ChooseMenu(window, {L"Action", L"Calibrations", save ? L"Save as..." : L"Download"});
    });
}

}  // namespace quorvex::bench::commands
