// What a device is: firmware texts, application status and code, factory data, settings.
#include "support/host_test.h"

namespace quillon::test {
namespace {

class Identity : public HostTest {
protected:
    // The small network, whose left device is changed.
    template <class F>
    Room& Left(F&& change) {
        Json network = SmallNetwork();
        change(DeviceOf(network, kLeft));
        Open(network);
        return AddRoom(kLeft);
    }
    // The right device is of another model.
    void OpenTwoModels() {
        Json network = SmallNetwork();
        DeviceOf(network, kRight)["programId"] = "9FFFFF0512040522";
        Open(network);
    }
    Room& Left() {
        return Left([](Json&) {});
    }
    Room& WithSisd(const char* text) {
        return Left([&](Json& device) { device["sisd"] = text; });
    }
    static Lines FirmwareTexts(const Room& room) {
        return {TextOf(room.ex, &IDeviceEx::get_VantorFirmwareType),
                TextOf(room.ex, &IDeviceEx::get_VantorFirmwareVersion),
                TextOf(room.ex, &IDeviceEx::get_VantorOSVersion)};
    }
    static std::wstring Code(const Room& room) {
        return TextOf(room.ex, &IDeviceEx::get_ApplicationCode);
    }
    static int Status(const Room& room) {
        unsigned char status = 99;
        EXPECT_EQ(room.ex->get_VantorAppStatus(&status), S_OK);
        return status;
    }
    static bool DownloadAvailable(const Room& room) {
        VARIANT_BOOL available = 7;
        EXPECT_EQ(room.ex->get_ApplDownloadAvailable(&available), S_OK);
        EXPECT_TRUE(available == VARIANT_TRUE || available == VARIANT_FALSE);
        return available != VARIANT_FALSE;
    }
    // Its first step reads the factory data; what the window does is not looked at here.
    void RefreshFactoryData(const Room& room) {
        com::Ptr<IDispatch> owner;
        long pollingRate = 0;
        room.ex->ShowFocus(owner.InOut(), &pollingRate);
        CloseAllWindows();
    }
    struct Factory {
        int high;
        int low;
        int offset;
        std::wstring year;
        std::wstring week;
        bool operator==(const Factory&) const = default;
    };
    static Factory FactoryOf(const Room& room) {
        short high = 0;
        short low = 0;
        short offset = 0;
        EXPECT_EQ(room.own->get_AnalogInput1_High(&high), S_OK);
        EXPECT_EQ(room.own->get_AnalogInput1_Low(&low), S_OK);
        EXPECT_EQ(room.own->get_AnalogInput1_Offset(&offset), S_OK);
        return {high, low, offset, TextOf(room.own, &_CDevice::get_ProductionYear),
                TextOf(room.own, &_CDevice::get_ProductionWeek)};
    }
    Factory FactoryFrom(const char* entry) {
        Room& room = Left([&](Json& device) { SetFile(device, "FFFF", entry); });
        RefreshFactoryData(room);
        return FactoryOf(room);
    }
};

TEST_F(Identity, FirmwareTextsStandBehindTheFirstSemicolon) {
    EXPECT_EQ(FirmwareTexts(WithSisd("ABC;0102030405060708")), (Lines{L"0102", L"0304", L"0506"}));
    EXPECT_EQ(FirmwareTexts(WithSisd("ABC;01")), (Lines{L"01", L"", L""}));
    EXPECT_EQ(FirmwareTexts(WithSisd(";a;bcdefghijklm")), (Lines{L"a;bc", L"defg", L"hijk"}));
}

TEST_F(Identity, SelfIdentificationWithoutSemicolonGivesEmptyTexts) {
    EXPECT_EQ(FirmwareTexts(WithSisd("ABC 0102030405060708")), (Lines{L"", L"", L""}));
    EXPECT_EQ(FirmwareTexts(WithSisd("")), (Lines{L"", L"", L""}));
}

TEST_F(Identity, FailingSelfIdentificationGivesEmptyTextsAndSuccess) {
    Room& room = Left();
    Host().FailAlways(L"IDevice.SISD.get");
    EXPECT_EQ(FirmwareTexts(room), (Lines{L"", L"", L""}));
    com::Ptr<IErrorInfo> record;
    EXPECT_EQ(GetErrorInfo(0, record.Out()), S_FALSE) << "no stale error record";
}

TEST_F(Identity, StatusIsTheFirstByteOfTheImageInDeviceMemory) {
    EXPECT_EQ(Status(Left()), 4);
    EXPECT_EQ(Only(Host().Log(), L"IDevice.ReadMemory"),
              Lines{L"IDevice.ReadMemoryUnicode(16400, 1)"});
}

TEST_F(Identity, StatusAddressOnceFoundIsKept) {
    Room& room = Left();
    EXPECT_EQ(Status(room), 4);
    Host().FailAlways(L"IDevice.Files.get");
    EXPECT_EQ(Status(room), 4);
}

TEST_F(Identity, StatusWithoutEntryIsZeroAndReadsNoMemory) {
    EXPECT_EQ(Status(Left([](Json& device) { RemoveFile(device, "FFFD"); })), 0);
    EXPECT_EQ(Host().Count(L"IDevice.ReadMemoryUnicode"), 0);
}

TEST_F(Identity, StatusWithoutAddressIsZeroAndReadsNoMemory) {
    EXPECT_EQ(Status(Left([](Json& device) { (*FileOf(device, "FFFD"))["address"] = 0; })), 0);
    EXPECT_EQ(Host().Count(L"IDevice.ReadMemoryUnicode"), 0);
}

TEST_F(Identity, StatusIsZeroWhenNothingComesBackOrTheReadFails) {
    Room& room = Left();
    Host().AnswerNothing(L"IDevice.ReadMemoryUnicode");
    EXPECT_EQ(Status(room), 0);
    Host().Restore();
    Host().Fail(L"IDevice.ReadMemoryUnicode");
    EXPECT_EQ(Status(room), 0);
    Host().Silence(kLeft, true);
    EXPECT_EQ(Status(room), 0);
}

TEST_F(Identity, StatusOfAnEmptyArrayIsZero) {
    Room& room = Left();
    com::Variant empty;
    empty.parray = SafeArrayCreateVector(VT_UI1, 0, 0);
    empty.vt = VT_ARRAY | VT_UI1;
    Host().Answer(L"IDevice.ReadMemoryUnicode", empty);
    EXPECT_EQ(Status(room), 0);
}

// ---- application code and the settings path

TEST_F(Identity, ApplicationCodeIsTheValueOfThePropertyThatTheSettingsName) {
    WriteSettings("CP_AppCode=1 / application code");
    EXPECT_EQ(Code(Left()), L"7");
    EXPECT_EQ(Only(Host().Log(), L"Point"), (Lines{L"Points.Item(\"1\")", L"Point.Value.get()"}));
}

TEST_F(Identity, ApplicationCodeIndexIsRounded) {
    WriteSettings("CP_AppCode=0.6");
    EXPECT_EQ(Code(Left()), L"7");
}

TEST_F(Identity, MissingApplicationCodeKeyIsRememberedForTheDevicesLife) {
    Room& room = Left();
    WriteSettings("Other=1");
    EXPECT_EQ(Code(room), L"");
    WriteSettings("CP_AppCode=1");
    EXPECT_EQ(Code(room), L"");
    EXPECT_EQ(Code(AddRoom(kLeft)), L"7") << "another device looks it up itself";
}

TEST_F(Identity, ApplicationCodeIndexZeroIsLookedUpAgainEachTime) {
    Room& room = Left();
    WriteSettings("CP_AppCode=0");
    EXPECT_EQ(Code(room), L"");
    WriteSettings("CP_AppCode=1");
    EXPECT_EQ(Code(room), L"7");
}

TEST_F(Identity, ApplicationCodeIndexBelowZeroNamesNothing) {
    WriteSettings("CP_AppCode=-3");
    EXPECT_EQ(Code(Left()), L"");
    EXPECT_EQ(Host().Count(L"Points.Item"), 0);
}

TEST_F(Identity, MissingPropertyIsAskedForTwiceWithHiddenFocusBetween) {
    WriteSettings("CP_AppCode=77");
    EXPECT_EQ(Code(Left()), L"");
    Lines log = Host().Log();
    std::erase(log, L"IDevice.ProgramId.get()");
    EXPECT_EQ(log, (Lines{L"IDevice.ConfigProperties.get()", L"Points.Item(\"77\")",
                          L"IDevice.FocusHidden.get()", L"IDevice.ConfigProperties.get()",
                          L"Points.Item(\"77\")"}));
}

TEST_F(Identity, PropertiesThatTheHostGivesOnlyWhenAskedForFocusAreFound) {
    WriteSettings("CP_AppCode=1");
    Room& room = Left();
    Host().Fail(L"IDevice.ConfigProperties.get");
    EXPECT_EQ(Code(room), L"7") << "the first question failed";
    Host().Answer(L"IDevice.ConfigProperties.get", com::Variant(static_cast<IDispatch*>(nullptr)));
    Host().Call(L"IDevice.FocusHidden.get", 1, [] { Host().Restore(); });
    EXPECT_EQ(Code(room), L"7") << "the first question gave no object";
}

TEST_F(Identity, FailingSignOfLifeIsPassedOver) {
    WriteSettings("CP_AppCode=1");
    Room& room = Left();
    Host().Fail(L"IDevice.ConfigProperties.get");
    Host().FailAlways(L"IDevice.FocusHidden.get");
    EXPECT_EQ(Code(room), L"7");
}

TEST_F(Identity, ApplicationCodeFailuresGiveAnEmptyText) {
    WriteSettings("CP_AppCode=1");
    Room& room = Left();
    for (const wchar_t* member :
         {L"IDevice.ConfigProperties.get", L"Points.Item", L"Point.Value.get"}) {
        Host().FailAlways(member);
        EXPECT_EQ(Code(room), L"") << Narrow(member);
        Host().Restore();
    }
    EXPECT_EQ(Code(room), L"7");
}

TEST_F(Identity, SecondModelUsesTheFirstsSettingsFile) {
    OpenTwoModels();
    WriteSettings("CP_AppCode=1");
    WriteSettings("CP_AppCode=2", "9FFFFF0512040522");
    EXPECT_EQ(Code(AddRoom(kLeft)), L"7");
    EXPECT_EQ(Code(AddRoom(kRight)), L"8") << "its own file names property 2";
}

TEST_F(Identity, FreshlyLoadedPluginTakesTheSecondModelsFile) {
    OpenTwoModels();
    WriteSettings("CP_AppCode=77");
    WriteSettings("CP_AppCode=1", "9FFFFF0512040522");
    EXPECT_EQ(Code(AddRoom(kLeft)), L"");
    ReloadPlugin();
    EXPECT_EQ(Code(AddRoom(kRight)), L"8");
}

TEST_F(Identity, CreationNeitherSetsThePathNorAsksForTheProgramId) {
    Left();
    Json network = SmallNetwork();
    WriteSettings("HideAppDownload=1");
    const auto device = Plugin().Make<IDeviceEx>(CLSID_CDevice);
    EXPECT_EQ(Host().Count(L"IDevice.ProgramId.get"), 0);
}

TEST_F(Identity, ProgramIdIsAskedForOnceThePathIsSetNoMore) {
    Room& room = Left();
    Code(room);
    Status(room);
    DownloadAvailable(AddRoom(kRight));
    EXPECT_EQ(Host().Count(L"IDevice.ProgramId.get"), 0) << "since the second room was bound";
}

TEST_F(Identity, FailingProgramIdLeavesThePathEmpty) {
    WriteSettings("CP_AppCode=1");
    Room& first = Left();
    Host().Fail(L"IDevice.ProgramId.get");
    EXPECT_EQ(Code(first), L"");
    EXPECT_EQ(Code(AddRoom(kLeft)), L"7") << "the next reader sets it";
}

TEST_F(Identity, PathThatAnotherDeviceSetMeanwhileStays) {
    OpenTwoModels();
    WriteSettings("CP_AppCode=77");
    WriteSettings("CP_AppCode=1", "9FFFFF0512040522");
    Room& left = AddRoom(kLeft);
    Room& right = AddRoom(kRight);
    Host().Call(L"IDevice.ProgramId.get", 1, [&] { Code(right); });
    EXPECT_EQ(Code(left), L"7") << "by the file that was set first, which is the right device's";
}

TEST_F(Identity, ProgramIdThatLeadsElsewhereNamesNoFile) {
    // What a path built blindly would lead to.
    WriteBytes(InFolder(L"..\\quillon-elsewhere.ini"), "[Settings]\r\nCP_AppCode=1\r\n");
    Room& room = Left();
    for (const wchar_t* programId :
         {L"..\\quillon-elsewhere", L"../quillon-elsewhere", L"..", L"C:\\quillon-elsewhere",
          L"\\\\server\\share\\x", L"NUL", L"a*b", L"a:b"}) {
        SCOPED_TRACE(Narrow(programId));
        Host().Answer(L"IDevice.ProgramId.get", std::wstring_view(programId));
        EXPECT_EQ(Code(AddRoom(kLeft)), L"");
        Host().Restore();
    }
    DeleteFileW(InFolder(L"..\\quillon-elsewhere.ini").c_str());
    WriteSettings("CP_AppCode=1");
    EXPECT_EQ(Code(room), L"7") << "the path was never set";
}

// ---- whether the host may offer application download

TEST_F(Identity, ApplicationDownloadIsOfferedUnlessHidden) {
    Room& room = Left();
    EXPECT_TRUE(DownloadAvailable(room)) << "no settings file";
    WriteSettings("Other=1");
    EXPECT_TRUE(DownloadAvailable(room)) << "no key";
    WriteSettings("HideAppDownload=0");
    EXPECT_TRUE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=1");
    EXPECT_FALSE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=1 / hide the download");
    EXPECT_FALSE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=0 / show it");
    EXPECT_TRUE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=-2");
    EXPECT_FALSE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=yes");
    EXPECT_TRUE(DownloadAvailable(room)) << "no number counts as 0";
    WriteSettings("HideAppDownload=&HFFFFFFFFFF");
    EXPECT_TRUE(DownloadAvailable(room)) << "out of range leaves it";
    WriteSettings("HideAppDownload=1");
    EXPECT_FALSE(DownloadAvailable(room));
    WriteSettings("HideAppDownload=&HFFFFFFFFFF");
    EXPECT_FALSE(DownloadAvailable(room)) << "out of range leaves it";
}

// ---- factory data

TEST_F(Identity, FactoryDataAreZeroUntilRead) {
    EXPECT_EQ(FactoryOf(Left()), (Factory{0, 0, 0, L"1998", L"0"}));
}

TEST_F(Identity, FactoryDataAreReadWhenTheWindowIsShown) {
    EXPECT_EQ(FactoryFrom("0102030405061A170C"), (Factory{258, 772, 1286, L"2021", L"12"}));
}

TEST_F(Identity, FactoryWordThatOverflowsLeavesItAndThoseAfterItLowByteFirst) {
    EXPECT_EQ(FactoryFrom("8002030405061A170C"), (Factory{640, 1027, 1541, L"2021", L"12"}));
    EXPECT_EQ(FactoryFrom("0102800405061A170C"), (Factory{258, 1152, 1541, L"2021", L"12"}));
    EXPECT_EQ(FactoryFrom("0102030480061AFF35"), (Factory{258, 772, 1664, L"2253", L"53"}));
}

TEST_F(Identity, ShortOrMissingFactoryEntryChangesNoNumber) {
    Room& room = Left();
    RefreshFactoryData(room);
    const Factory before = FactoryOf(room);
    EXPECT_EQ(before, (Factory{258, 772, 1286, L"2021", L"12"}));
    Host().Answer(L"IFile.ValueText.get", L"0A0B0C");
    RefreshFactoryData(room);
    EXPECT_EQ(FactoryOf(room), before);
    Host().Answer(L"IFile.ValueText.get", L"zz02030405061A170C");
    RefreshFactoryData(room);
    EXPECT_EQ(FactoryOf(room), before);
    Host().Restore();
    Host().FailAlways(L"IDevice.Files.get");
    RefreshFactoryData(room);
    EXPECT_EQ(FactoryOf(room), before);
}

}  // namespace
}  // namespace quillon::test
