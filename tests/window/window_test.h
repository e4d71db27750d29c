// The fixture of the window tests: the plug-in's own code in this program, the simulated host
// behind it, and at the end the proof that nothing is left alive.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/host_network.h"
#include "support/host_objects.h"
#include "support/host_session.h"
#include "support/message_boxes.h"
#include "window/frmVantor.h"
#include "window/gui_objects.h"
#include "window/window_reading.h"

namespace quillon::test {

// A section of a settings file with values under the keys "0", "1", ...
std::string Section(const char* name, const std::vector<std::string>& values);
// Every list has something, and every tab is shown.
std::string UsualSettings();

// While it lives no timer of a device window ticks on its own: on a slow machine one would be due
// in between, wherever messages are handled.
class RestingTimers {
public:
    RestingTimers();
    RestingTimers(const RestingTimers&) = delete;
    RestingTimers& operator=(const RestingTimers&) = delete;
    ~RestingTimers() { UnhookWindowsHookEx(m_hook); }

private:
    static LRESULT CALLBACK OnMessage(int code, WPARAM removed, LPARAM place);

    HHOOK m_hook;
};

class WindowTest : public ::testing::Test {
protected:
    using Timer = frmVantor::Timer;
    using Window = std::shared_ptr<frmVantor>;

    void SetUp() override;
    void TearDown() override;

    // The network that the first device object opens; to be changed before.
    Json& Network() { return m_json; }
    Json& Left() { return DeviceOf(m_json, kLeft); }
    // Settings of the network's program ID, which no other test shares.
    void WriteSettings(const std::string& text);
    const std::string& ProgramId() const { return m_programId; }
    std::wstring InFolder(std::wstring_view name) const;

    // A device object bound to a room controller. The log is empty afterwards.
    com::Ptr<CDevice> MakeDevice(std::wstring_view neuron = kLeft);
    // What the host calls. Gives the device's window, whose splash is closed and whose timers stand
    // still: only Tick moves them, and Interval still tells what was asked for.
    Window ShowFocus(const com::Ptr<CDevice>& device, std::int32_t pollingRate = 25);
    // A loaded window with MakeDevice's object behind it, and the log empty.
    Window Open(std::wstring_view neuron = kLeft);

    // Null when there is none.
    static Window WindowOf(std::wstring_view neuron);
    static HWND SplashOf(std::wstring_view neuron);
    static void StopTimers(const frmVantor& window);
    // From now on timers that run tick.
    void LetTimersTick() { m_resting.reset(); }
    static void CloseAll();
    void CloseNetwork() { m_network.Reset(); }
    // Writes a value text into a network variable, past the host's interfaces.
    void PutValue(std::wstring_view neuron, int index, std::wstring_view value);
    INetwork* OpenNetwork();
    // What the test has made so far belongs to the system.
    void CountAgain() { m_before = CountGuiObjects(); }

    MessageBoxes& Boxes() { return *m_boxes; }
    Poster& Posted() { return *m_poster; }

private:
    void WarmUp();

    std::string m_programId;
    Json m_json;
    com::Ptr<INetwork> m_network;
    std::unique_ptr<MessageBoxes> m_boxes;
    std::unique_ptr<Poster> m_poster;
    std::optional<RestingTimers> m_resting;
    GuiObjects m_before;
};

}  // namespace quillon::test
