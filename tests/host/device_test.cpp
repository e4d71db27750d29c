// Members of the device that have logic of their own: application download through the host, the
// look-up of file entries, and the answers that are always the same.
#include <filesystem>

#include "support/host_test.h"

namespace quillon::test {
namespace {

class OwnMembers : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        Open(Initial());
        m_room = &AddRoom(kLeft);
    }

    virtual Json Initial() { return SmallNetwork(); }

    IDevice* Device() { return m_room->device.Get(); }
    IDeviceEx* Ex() { return m_room->ex.Get(); }

    // A file that the host takes for an application.
    std::wstring Application() {
        const std::wstring path = InFolder(L"room.apb");
        WriteBytes(path, "application");
        return path;
    }
    HRESULT DownloadThroughHost(long* result) {
        return Device()->ApplicationDownload(com::Bstr(Application()).Get(), VARIANT_TRUE, 4711,
                                             result);
    }

    Room* m_room = nullptr;
};

TEST_F(OwnMembers, ApplicationDownloadRestoresTheIdentityEntry) {
    long result = 99;
    EXPECT_EQ(DownloadThroughHost(&result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(FileValue(kLeft, "FFFA"), L"0001002A");
    const Lines log = Host().Log();
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log.front(), L"IDevice.Focus(nothing)");
    EXPECT_EQ(log.back(), L"IFile.ValueText.put(\"0001002A\")");
    ASSERT_GE(log.size(), 3U);
    const std::wstring& download = log[log.size() - 2];
    EXPECT_TRUE(download.starts_with(L"IDevice.ApplicationDownload(")) << Narrow(download);
    EXPECT_TRUE(download.ends_with(L"room.apb\", True, 4711)")) << Narrow(download);
    EXPECT_EQ(Changes(log), Lines{log.back()});
}

TEST_F(OwnMembers, ApplicationDownloadWithRefusedFocusDoesNothing) {
    Host().Answer(L"IDevice.Focus", com::Variant(false));
    long result = 99;
    EXPECT_EQ(DownloadThroughHost(&result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Host().Log(), Lines{L"IDevice.Focus(nothing)"});
}

TEST_F(OwnMembers, ApplicationDownloadThatEndsNonZeroLeavesTheIdentityEntryAsItIs) {
    const auto host = HostDevice(kLeft);
    Host().Answer(L"IDevice.ApplicationDownload", com::Variant(std::int32_t{7}));
    Host().Call(L"IDevice.ApplicationDownload", 1, [&] {
        com::Ptr<IFiles> files;
        com::Ptr<IFile> entry;
        com::Check(host->get_Files(files.Out()));
        com::Check(files->get_Item(1, entry.Out()));
        com::Check(entry->put_ValueText(com::Bstr(L"DEADBEEF").Get()));
    });
    long result = 0;
    EXPECT_EQ(DownloadThroughHost(&result), S_OK);
    EXPECT_EQ(result, 7);
    EXPECT_EQ(FileValue(kLeft, "FFFA"), L"DEADBEEF");
    EXPECT_EQ(Host().Count(L"IFile.ValueText.put"), 1) << "the handler's own";
}

TEST_F(OwnMembers, ApplicationDownloadFailuresComeOutUnchanged) {
    for (const wchar_t* member : {L"IDevice.Focus", L"IFile.ValueText.get",
                                  L"IDevice.ApplicationDownload", L"IFile.ValueText.put"}) {
        SCOPED_TRACE(Narrow(member));
        Host().Fail(member);
        long result = 99;
        EXPECT_EQ(DownloadThroughHost(&result), kFault);
        EXPECT_EQ(result, 0) << "a result is cleared";
        com::Ptr<IErrorInfo> record;
        EXPECT_EQ(GetErrorInfo(0, record.Out()), S_OK);
        Host().Restore();
    }
}

TEST_F(OwnMembers, ApplicationDownloadGoesOnWhenTheEntryCannotBeLookedUp) {
    Host().Fail(L"IDevice.Files.get");
    long result = 99;
    EXPECT_EQ(DownloadThroughHost(&result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(FileValue(kLeft, "FFFA"), L"00000000") << "as the host's download leaves it";
}

TEST_F(OwnMembers, ApplicationDownloadWithoutAResultPointerIsRefused) {
    EXPECT_EQ(DownloadThroughHost(nullptr), E_POINTER);
    EXPECT_EQ(Host().Log(), Lines());
}

class WithoutIdentity : public OwnMembers {
protected:
    Json Initial() override {
        Json network = SmallNetwork();
        RemoveFile(DeviceOf(network, kLeft), "FFFA");
        return network;
    }
};

TEST_F(WithoutIdentity, ApplicationDownloadRestoresNothing) {
    long result = 99;
    EXPECT_EQ(DownloadThroughHost(&result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Host().Count(L"IDevice.ApplicationDownload"), 1);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(OwnMembers, SetProgramIdSucceedsAndChangesNothing) {
    EXPECT_EQ(Device()->SetProgramID(com::Bstr(L"0000000000000000").Get(), VARIANT_TRUE), S_OK);
    EXPECT_EQ(Device()->SetProgramID(nullptr, VARIANT_FALSE), S_OK);
    EXPECT_EQ(Host().Log(), Lines());
    EXPECT_EQ(TextOf(m_room->device, &IDevice::get_ProgramId), L"9FFFFF0512040410");
}

TEST_F(OwnMembers, DllNameIsTheFileWithoutFolderAndExtension) {
    com::Variant name;
    EXPECT_EQ(Device()->get_DllName(name.Out()), S_OK);
    EXPECT_EQ(name.vt, VT_BSTR);
    EXPECT_EQ(name.AsText(), L"Quillon");
}

TEST_F(OwnMembers, DllNameFollowsTheFilesName) {
    const std::wstring copy = InFolder(L"Other.Name.dll");
    std::filesystem::copy_file(Plugin().Path(), copy);
    Library renamed(copy);
    {
        com::Variant name;
        EXPECT_EQ(renamed.Make<IDevice>(CLSID_CDevice)->get_DllName(name.Out()), S_OK);
        EXPECT_EQ(name.AsText(), L"Other.Name");
    }
    EXPECT_TRUE(renamed.CanUnload());
    EXPECT_TRUE(renamed.Unload());
}

TEST_F(OwnMembers, IsCPsLoadedIsKeptHere) {
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(Device()->get_IsCPsLoaded(&loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_FALSE);
    EXPECT_EQ(Device()->put_IsCPsLoaded(VARIANT_TRUE), S_OK);
    EXPECT_EQ(Device()->get_IsCPsLoaded(&loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_TRUE);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(OwnMembers, HardwareModelIsKeptHere) {
    EXPECT_EQ(TextOf(m_room->device, &IDevice::get_GetHardwareModel), L"");
    EXPECT_EQ(Device()->put_SetHardwareModel(com::Bstr(L"NR-4 \x20AC").Get()), S_OK);
    EXPECT_EQ(TextOf(m_room->device, &IDevice::get_GetHardwareModel), L"NR-4 \x20AC");
    EXPECT_EQ(Device()->put_SetHardwareModel(nullptr), S_OK);
    EXPECT_EQ(TextOf(m_room->device, &IDevice::get_GetHardwareModel), L"");
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(OwnMembers, EmptyTextMembersAreEmpty) {
    for (const auto member :
         {&IDeviceEx::get_ApplFileExtension, &IDeviceEx::get_DisplayHWCode,
          &IDeviceEx::get_DisplayAppCode, &IDeviceEx::get_DeviceIDCode,
          &IDeviceEx::get_DeviceHWCode, &IDeviceEx::get_ApplicationHeaderFileNAme,
          &IDeviceEx::get_CommissioningArea}) {
        EXPECT_EQ(TextOf(m_room->ex, member), L"");
        EXPECT_EQ((Ex()->*member)(nullptr), E_POINTER);
    }
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(OwnMembers, DisplayMembersDoNothing) {
    VARIANT_BOOL truth = VARIANT_TRUE;
    EXPECT_EQ(Ex()->get_DisplayDownloadAvailable(&truth), S_OK);
    EXPECT_EQ(truth, VARIANT_FALSE);
    long number = 9;
    EXPECT_EQ(Ex()->DisplayDownload(com::Bstr(L"x").Get(), &number), S_OK);
    EXPECT_EQ(number, 0);
    truth = VARIANT_TRUE;
    EXPECT_EQ(Ex()->DisplayExport(com::Bstr(L"x").Get(), &truth), S_OK);
    EXPECT_EQ(truth, VARIANT_FALSE);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(OwnMembers, CloseFocusWithoutWindowsEndsQuietly) {
    EXPECT_EQ(Ex()->CloseFocus(), S_OK);
    EXPECT_EQ(Host().Log(), Lines());
}

// ---- looking up a file entry, seen through the member that does little else

TEST_F(OwnMembers, EntryIsLookedUpInOrderUntilItMatches) {
    unsigned char status = 0;
    EXPECT_EQ(Ex()->get_VantorAppStatus(&status), S_OK);
    const Lines expected{L"IDevice.ProgramId.get()",
                         L"IDevice.Files.get()",
                         L"IFiles.Count.get()",
                         L"IFiles.Item(1)",
                         L"IFile.Identifier.get()",
                         L"IFiles.Item(2)",
                         L"IFile.Identifier.get()",
                         L"IFile.Address.get()",
                         L"IDevice.ReadMemoryUnicode(16400, 1)"};
    EXPECT_EQ(Host().Log(), expected);
}

TEST_F(OwnMembers, MissingFilesObjectMakesTheHostBeAskedForHiddenFocus) {
    Host().AnswerNothing(L"IDevice.Files.get");
    unsigned char status = 9;
    EXPECT_EQ(Ex()->get_VantorAppStatus(&status), S_OK);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Only(Host().Log(), L"IDevice.F"),
              (Lines{L"IDevice.Files.get()", L"IDevice.FocusHidden.get()"}));
}

TEST_F(OwnMembers, FailingHiddenFocusOfAMissingFilesObjectIsIgnored) {
    Host().AnswerNothing(L"IDevice.Files.get");
    Host().Fail(L"IDevice.FocusHidden.get");
    unsigned char status = 9;
    EXPECT_EQ(Ex()->get_VantorAppStatus(&status), S_OK);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Host().Count(L"IDevice.FocusHidden.get"), 1);
}

TEST_F(OwnMembers, MessagesAreHandledBeforeEachEntry) {
    std::vector<long> itemsBefore;
    const auto note = [&] { itemsBefore.push_back(Host().Count(L"IFiles.Item")); };
    Posted().Post(note);
    for (long item = 1; item <= 3; ++item)
        Host().Call(L"IFiles.Item", item, [&] { Posted().Post(note); });
    VARIANT_BOOL done = VARIANT_FALSE;
    com::Bstr file(InFolder(L"x.app"));
    EXPECT_EQ(Ex()->AppExport(file.InOut(), &done), S_OK);
    // Entry FFFA is the first of the first look-up, FFFE the third of the second.
    EXPECT_EQ(itemsBefore, (std::vector<long>{0, 1, 2, 3}));
}

TEST_F(OwnMembers, CountOfEntriesIsReadOnce) {
    Host().Answer(L"IFile.Identifier.get", com::Variant(std::int32_t{5}));
    short analog = 0;
    unsigned char inputs = 0;
    long status = 0;
    EXPECT_EQ(Ex()->ReadInputs(&analog, &analog, &analog, &analog, &inputs, &inputs, &status),
              S_OK);
    EXPECT_EQ(Host().Count(L"IFiles.Count.get"), 1);
    EXPECT_EQ(Host().Count(L"IFiles.Item"), 5) << "all entries, none of which matches";
    EXPECT_LT(status, 0);
}

}  // namespace
}  // namespace quillon::test
