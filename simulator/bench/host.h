// The bench as a host: a network of the simulated host, and one plug-in device object for each of
// its room controllers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/ptr.h"
#include "event_sink.h"
#include "output.h"
#include "quillon_h.h"
#include "quorvex_h.h"
#include "quorvexsim_h.h"

namespace quorvex::bench {

struct Room {
    std::wstring neuron;
    std::wstring name;
    com::Ptr<IDevice> device;
    EventSubscription events;
};

// How a room unit and its room are now.
struct RoomNow {
    std::wstring state;  // two digits; empty: absent
    long status = 0;
    long inputs = 0;  // a bit each, the lowest is the first
    long counts = 0;
    bool countsFixed = false;
    bool switchHigh = false;
    double volts = 0;
    double celsius = 0;
};

struct Event {
    std::wstring name;
    std::wstring neuron;
    std::wstring argument;
    bool seen = false;
};

struct Report {
    HRESULT code = S_OK;
    std::wstring neuron;
    bool seen = false;
};

// Every failing call is a com::Error, everything else that fails a Failure.
class Host {
public:
    // `plugin` is the ProgID of the device class to load; empty: Quillon's.
    Host(const std::wstring& networkFile, const std::wstring& plugin);
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    std::vector<Room>& Rooms() { return m_rooms; }
    // By Neuron ID or name, letter case apart. Throws Failure when there is none.
    Room& Find(std::wstring_view text);
    std::wstring NameOf(std::wstring_view neuron) const;

    ISimulator& Simulator() { return *m_simulator; }
    void Save(const std::wstring& file);
    std::wstring NetworkName() const;

    // What an operator does in a room, and what time does in all of them.
    void Advance(long milliseconds);
    // The device is told that its status changed.
    void Plug(const Room& room, bool in);
    void SetInput(const Room& room, long index, bool on);
    void SetApplicationStatus(const Room& room, unsigned char status);
    void SetAnalog(const Room& room, std::optional<std::int16_t> counts);
    void SetCalibrationSwitch(const Room& room, bool high);
    void SetTemperature(const Room& room, double celsius);
    RoomNow Now(const Room& room) const;

    // The folder of the module that serves the rooms' devices.
    std::wstring PluginFolder() const;

    std::vector<Event>& Events() { return m_events; }
    // Also shows every event to the listener, as the line that is printed.
    void SetListener(std::function<void(const std::wstring& line)> listener) {
        m_listener = std::move(listener);
    }
    // All reports so far; those that came since the last call are printed.
    std::vector<Report>& Reports();
    // Misuse that the host has recorded so far, one a line; empty: none.
    std::vector<std::wstring> Misuse();

    // Lets go of everything but the simulator's control; the number of its objects still alive.
    long Close();

private:
    void AddRoom(const std::wstring& neuron, REFCLSID plugin);

    com::Ptr<ISimulator> m_simulator;
    com::Ptr<INetwork> m_network;
    std::vector<Room> m_rooms;
    std::vector<Event> m_events;
    std::vector<Report> m_reports;
    std::function<void(const std::wstring&)> m_listener;
};

// What is printed of a report.
std::wstring ReportText(const Host& host, const Report& report);

// The full path of a file named on the command line or in a script.
std::wstring FullPath(const std::wstring& file);
// Lets pending window messages of this thread run.
void PumpMessages();

}  // namespace quorvex::bench
