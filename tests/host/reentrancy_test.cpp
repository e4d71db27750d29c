// What the host may do from inside a loop of the plug-in that handles window messages: let go of
// the device, call a member again, start the same command again.
#include <memory>

#include "download_fixture.h"

namespace quillon::test {
namespace {

class Reentrancy : public DownloadTest {
protected:
    void SetUp() override {
        DownloadTest::SetUp();
        WriteSettings("DownLoadCPs=1\r\nCP_AppCode=1");
    }

    // Runs the function when the plug-in next handles messages after the nth call of the member; an
    // empty member: the first time it does at all.
    void InsidePump(std::wstring_view member, long nth, std::function<void()> function) {
        auto shared = std::make_shared<std::function<void()>>([this, function] {
            ++m_ran;
            function();
        });
        if (member.empty())
            Posted().Post(*shared);
        else
            Host().Call(member, nth, [this, shared] { Posted().Post(*shared); });
    }
    // Runs the function inside the host's member itself.
    void InsideCall(std::wstring_view member, long nth, std::function<void()> function) {
        Host().Call(member, nth, [this, function] {
            ++m_ran;
            function();
        });
    }
    int Ran() const { return m_ran; }

    void ExpectOnlyTheNetworkAlive() {
        Host().Restore();
        Posted().Discard();
        EXPECT_EQ(Host().LiveObjects(), 1) << "the network alone";
    }

private:
    int m_ran = 0;
};

// Calls that handle messages in loops, with the device given by a bare pointer.
struct LoopingCall {
    const char* name;
    void (*run)(IDeviceEx* device, BSTR path);
    std::vector<std::pair<const wchar_t*, long>> places;
};

const LoopingCall kLoopingCalls[] = {
    {"look-up of an entry",
     [](IDeviceEx* device, BSTR) {
         unsigned char status = 0;
         EXPECT_EQ(device->get_VantorAppStatus(&status), S_OK);
     },
     {{L"", 0}, {L"IFiles.Item", 1}, {L"IFile.Identifier.get", 1}}},
    {"firmware version",
     [](IDeviceEx* device, BSTR) {
         com::Bstr text;
         EXPECT_EQ(device->get_VantorFirmwareVersion(text.Out()), S_OK);
     },
     {{L"", 0}, {L"IDevice.SISD.get", 1}}},
    {"inputs",
     [](IDeviceEx* device, BSTR) {
         short analog = 0;
         unsigned char byte = 0;
         long status = 0;
         EXPECT_EQ(device->ReadInputs(&analog, &analog, &analog, &analog, &byte, &byte, &status),
                   S_OK);
     },
     {{L"", 0}, {L"IFiles.Item", 1}}},
    {"outputs written",
     [](IDeviceEx* device, BSTR) {
         short analog = 0;
         unsigned char byte = 0;
         long status = 0;
         EXPECT_EQ(device->WriteOutputs(&analog, &analog, &analog, &analog, &byte, &byte, &status),
                   S_OK);
     },
     {{L"", 0}, {L"IFiles.Item", 1}}},
    {"export",
     [](IDeviceEx* device, BSTR path) {
         VARIANT_BOOL done = VARIANT_FALSE;
         EXPECT_EQ(device->AppExport(&path, &done), S_OK);
     },
     {{L"", 0}, {L"IDevice.SISD.get", 1}, {L"Point.Name.get", 1}, {L"Point.Name.get", 12}}},
    {"download",
     [](IDeviceEx* device, BSTR path) {
         long result = 0;
         EXPECT_EQ(device->AppDownload(path, &result), S_OK);
     },
     {{L"", 0},
      {L"IDevice.GoSoftOffLine", 1},
      {L"IDevice.XMLSNVTs.get", 1},
      {L"IDevice.XMLSNVTs.get", 2},
      {L"IDevice.SISD.get", 1},
      {L"IFile.ValueText.put", 2}}},
};

TEST_F(Reentrancy, LastReferenceMayGoWhileMessagesAreHandled) {
    for (const LoopingCall& call : kLoopingCalls)
        for (const auto& [member, nth] : call.places) {
            SCOPED_TRACE(std::string(call.name) + " " + Narrow(member));
            const int before = Ran();
            Room& room = Right();
            com::Bstr path(Write(AppFile()));
            InsidePump(member, nth, [&] { room.Drop(); });
            call.run(room.ex.Get(), path.Get());
            EXPECT_EQ(Ran(), before + 1);
            ExpectOnlyTheNetworkAlive();
        }
}

TEST_F(Reentrancy, LastReferenceMayGoInsideAHostCall) {
    for (const LoopingCall& call : kLoopingCalls)
        for (const auto& [member, nth] : call.places) {
            if (nth == 0) continue;
            SCOPED_TRACE(std::string(call.name) + " " + Narrow(member));
            const int before = Ran();
            Room& room = Right();
            com::Bstr path(Write(AppFile()));
            InsideCall(member, nth, [&] { room.Drop(); });
            call.run(room.ex.Get(), path.Get());
            EXPECT_EQ(Ran(), before + 1);
            ExpectOnlyTheNetworkAlive();
        }
}

TEST_F(Reentrancy, SameCallMayBeMadeAgainFromInside) {
    for (const LoopingCall& call : kLoopingCalls)
        for (const auto& [member, nth] : call.places) {
            SCOPED_TRACE(std::string(call.name) + " " + Narrow(member));
            const int before = Ran();
            Room& room = Right();
            com::Bstr path(Write(AppFile()));
            InsidePump(member, nth, [&] { call.run(room.ex.Get(), path.Get()); });
            call.run(room.ex.Get(), path.Get());
            EXPECT_EQ(Ran(), before + 1);
            room.Drop();
            ExpectOnlyTheNetworkAlive();
        }
}

TEST_F(Reentrancy, LastReferenceMayGoWhileAForwardedCallRuns) {
    for (const wchar_t* member : {L"IDevice.Name.get", L"IDevice.Name.put"}) {
        Room& room = Right();
        InsideCall(member, 1, [&] { room.Drop(); });
        com::Bstr name(L"new");
        IDevice* const device = room.device.Get();
        const bool put = std::wstring_view(member).ends_with(L"put");
        EXPECT_EQ(put ? device->put_Name(name.Get()) : device->get_Name(name.Out()), S_OK);
        ExpectOnlyTheNetworkAlive();
    }
    EXPECT_EQ(Ran(), 2);
}

TEST_F(Reentrancy, LastReferenceMayGoWhileTheApplicationCodeIsRead) {
    for (const wchar_t* member : {L"IDevice.ProgramId.get", L"Points.Item", L"Point.Value.get"}) {
        SCOPED_TRACE(Narrow(member));
        ReloadPlugin();
        Room& room = Right();
        AllowMisuse();  // a point may outlive its device here
        InsideCall(member, 1, [&] { room.Drop(); });
        com::Bstr code;
        EXPECT_EQ(room.ex->get_ApplicationCode(code.Out()), S_OK);
        ExpectOnlyTheNetworkAlive();
    }
    EXPECT_EQ(Ran(), 3);
}

TEST_F(Reentrancy, LastReferenceMayGoWhileTheHostDownloads) {
    for (const wchar_t* member :
         {L"IDevice.Focus", L"IFiles.Item", L"IDevice.ApplicationDownload"}) {
        SCOPED_TRACE(Narrow(member));
        Room& room = Right();
        InsideCall(member, 1, [&] { room.Drop(); });
        com::Bstr path(Write(AppFile()));
        long result = 0;
        EXPECT_EQ(room.device->ApplicationDownload(path.Get(), VARIANT_TRUE, 0, &result), S_OK);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(FileValue(kRight, "FFFA"), L"0001002A") << "still restored";
        ExpectOnlyTheNetworkAlive();
    }
}

TEST_F(Reentrancy, DownloadInsideADownloadReportsBoth) {
    Room& room = Right();
    const std::wstring path = Write(AppFile());
    InsidePump(L"Point.RawValue.put", 1, [&] { Download(room, path); });
    Write(
        AppFile{.variables = std::vector<AppPoint>{{"nciFlowFactor", 7, true, "40200000"},
                                                   {"nciFanCurve", 8, true, "0000000000000000"}}});
    const Outcome outcome = Run(room, path);
    EXPECT_EQ(Ran(), 1);
    EXPECT_EQ(outcome.reports, Lines(2, std::wstring(L"00000000 ") + kRight));
    EXPECT_EQ(outcome.events, 2);
    EXPECT_EQ(outcome.state, L"04");
}

TEST_F(Reentrancy, DeviceDroppedWhileTheQuestionIsUpStillReports) {
    Room& room = Right();
    Boxes().Answer(IDYES, [&] { room.Drop(); });
    com::Bstr path(Write(AppFile{.programId = "9FFFFF0512040522"}));
    long result = 9;
    EXPECT_EQ(room.ex->AppDownload(path.Get(), &result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Host().Reports(), Lines{std::wstring(L"00000000 ") + kRight});
    EXPECT_EQ(FileValue(kRight, "FFFE"), L"0A1B2C3D");
    ExpectOnlyTheNetworkAlive();
}

TEST_F(Reentrancy, DownloadIntoADeviceThatGoesAbsentMeanwhileIsReportedOnce) {
    Room& room = Right();
    InsideCall(L"IDevice.XMLSNVTs.get", 1, [&] { Host().Silence(kRight, true); });
    EXPECT_EQ(Run(room, AppFile()).reports, Lines{std::wstring(L"8004032B ") + kRight});
}

TEST_F(Reentrancy, QuitSeenInALoopIsLeftForTheHost) {
    Room& room = Right();
    PostQuitMessage(17);
    unsigned char status = 0;
    EXPECT_EQ(room.ex->get_VantorAppStatus(&status), S_OK);
    MSG message{};
    bool quit = false;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (message.message == WM_QUIT) quit = message.wParam == 17;
    EXPECT_TRUE(quit);
}

}  // namespace
}  // namespace quillon::test
