// Eight device windows and all that happens to them in a day.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "damage/random.h"
#include "fault/device_window.h"
#include "soak/pump_gap.h"
#include "soak/resources.h"
#include "support/host_test.h"

namespace quillon::test {

// A device with its window, and what its operator and the network do to it now.
struct Desk {
    Room* room = nullptr;
    com::Ptr<IDevice> host;  // the host's own object of the device
    HWND window = nullptr;
    const wchar_t* tab = nullptr;
    long silentUntil = 0;  // in tenths of a second; 0: it answers
    long absentUntil = 0;
    bool Answers() const { return silentUntil == 0 && absentUntil == 0; }
};

// Changes of the device, as the host tells the plug-in of them.
struct Told {
    long changes = 0;
    long shown = 0;
};

class SoakTest : public HostTest {
protected:
    static constexpr std::size_t kWindows = 8;

    void SetUp() override;
    void TearDown() override;

    // One tenth of a second: the timers that are due, and now and then something else.
    void Pass(long tenth);
    // Every device answers, every window shows the same tab.
    void CalmAll();
    // The main view of each window shows what its device holds.
    void ExpectCurrent();
    void Print() const;

    PumpGap& Gap() { return *m_gap; }
    const Told& Points() const { return m_points; }
    const Told& Names() const { return m_names; }
    const Told& States() const { return m_states; }
    long Edits() const { return m_edits; }
    // Bytes that the system has left in the heaps for the dialogs opened so far.
    double LeftBySystem() const {
        return static_cast<double>(m_openings) * m_leftByOpening +
               static_cast<double>(m_edits) * m_leftByEdit;
    }

private:
    struct Happening {
        const char* name;
        std::size_t oneIn;  // tenths of a second, on average
        void (SoakTest::*happen)(Desk& desk);
    };
    static const std::array<Happening, 9> kHappenings;

    void OpenWindow(Desk& desk);
    void PostTicks(const Desk& desk, long tenth);
    void Handle(const char* work);
    void ComeBack(Desk& desk, long tenth);

    void TellPoint(Desk& desk);
    void TellName(Desk& desk);
    void FallSilent(Desk& desk);
    void PullPlug(Desk& desk);
    void ChangeTab(Desk& desk);
    void EditValue(Desk& desk);
    void ExportDevice(Desk& desk);
    void ReadAgain(Desk& desk);
    void CloseAndOpen(Desk& desk);

    void TellState(Desk& desk, const wchar_t* state);
    void SelectTabOf(Desk& desk, const wchar_t* tab);
    std::wstring NewSetpoint();
    com::Ptr<IDispatch> SetpointOf(const Desk& desk);

    std::unique_ptr<PumpGap> m_gap;
    std::array<Desk, kWindows> m_desks;
    Random m_random{2026};
    UINT_PTR m_editTimer = 0;
    long m_tenth = 0;
    std::array<long, 6> m_ticks{};  // by Timer
    Told m_points;
    Told m_names;
    Told m_states;
    long m_edits = 0;
    long m_exports = 0;
    long m_silences = 0;
    long m_openings = 0;
    double m_leftByOpening = 0;
    double m_leftByEdit = 0;
};

}  // namespace quillon::test
