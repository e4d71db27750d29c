// What the tests of application download share: room kRight of the small network and a file for it.
#pragma once

#include <optional>

#include "support/host_app_file.h"
#include "support/host_test.h"

namespace quillon::test {

inline constexpr DISPID kChangedApplication = 3;

class DownloadTest : public HostTest {
protected:
    // Opens the network with the right device changed, and binds it. Settings are written before.
    template <class F>
    Room& Right(F&& change) {
        Json network = SmallNetwork();
        change(DeviceOf(network, kRight));
        Open(network);
        return AddRoom(kRight);
    }
    Room& Right() {
        return Right([](Json&) {});
    }
    Room& WithIdentity(const std::string& value) {
        return Right([&](Json& device) { SetFile(device, "FFFA", value); });
    }

    std::wstring Write(const AppFile& file) {
        const std::wstring path = InFolder(L"room.app");
        WriteBytes(path, file.Text());
        return path;
    }

    // Downloads and collects what there is to see of the outcome.
    struct Outcome {
        Lines reports;
        int events = 0;
        Lines changes;
        std::wstring state;
    };
    Outcome Run(const Room& room, const std::wstring& path) {
        Host().Clear();
        Subscription subscription(room.device.Get());
        Download(room, path);
        for (const Event& event : subscription.Events())
            EXPECT_EQ(event, (Event{kChangedApplication, L"", VT_EMPTY}));
        return {Host().Reports(), static_cast<int>(subscription.Events().size()),
                Changes(Host().Log()), StateOf(room.neuron)};
    }
    Outcome Run(const Room& room, const AppFile& file) { return Run(room, Write(file)); }

    // One report of the code for the right device, an event exactly for success, and the device
    // soft off line after everything but success.
    static void ExpectOutcome(const Outcome& outcome, std::wstring_view code) {
        const bool success = code == L"00000000";
        EXPECT_EQ(outcome.reports, Lines{std::wstring(code) + L" " + kRight});
        EXPECT_EQ(outcome.events, success ? 1 : 0);
        EXPECT_EQ(outcome.state, success ? L"04" : L"0C");
    }
    static void ExpectSuccess(const Outcome& outcome) { ExpectOutcome(outcome, L"00000000"); }

    // The changes of a download that ends early and wrote nothing.
    static Lines NothingWritten() { return {L"IDevice.GoSoftOffLine()"}; }
};

}  // namespace quillon::test
