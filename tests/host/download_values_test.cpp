// Application download: the configuration values, the order of all calls, and a round trip.
#include "com/late.h"
#include "download_fixture.h"

namespace quillon::test {
namespace {

class Values : public DownloadTest {
protected:
    void SetUp() override {
        DownloadTest::SetUp();
        WriteSettings("DownLoadCPs=1");
    }
};

TEST_F(Values, AreWrittenWhenTheSettingIsOne) {
    const Outcome outcome = Run(Right(), AppFile());
    ExpectSuccess(outcome);
    EXPECT_EQ(outcome.changes,
              (Lines{L"IDevice.GoSoftOffLine()", L"IFile.ValueText.put(\"0A1B2C3D\")",
                     L"IFile.ValueText.put(\"000964\")", L"Point.RawValue.put(\"40200000\")",
                     L"IDevice.GoOnLine()"}));
    EXPECT_EQ(VariableRaw(kRight, 7), L"40200000");
    EXPECT_EQ(VariableRaw(kRight, 0), L"076C") << "an input of the file is ignored";
}

TEST_F(Values, SettingIsANumberThatMustBeOne) {
    const struct {
        const char* setting;
        bool written;
    } cases[] = {{"1", true},  {"1.0", true}, {"1 / yes", true}, {"0", false},
                 {"2", false}, {"", false},   {"/ 1", false},    {"-1", false}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.setting);
        WriteSettings(std::string("DownLoadCPs=") + one.setting);
        const Outcome outcome = Run(Right(), AppFile());
        ExpectSuccess(outcome);
        EXPECT_EQ(Only(outcome.changes, L"Point").size(), one.written ? 1U : 0U);
        EXPECT_EQ(Only(outcome.changes, L"IFile").size(), one.written ? 2U : 1U);
    }
}

TEST_F(Values, MissingSettingWritesNone) {
    WriteSettings("Other=1");
    const Outcome outcome = Run(Right(), AppFile());
    ExpectSuccess(outcome);
    EXPECT_EQ(Only(outcome.changes, L"Point"), Lines());
}

TEST_F(Values, SettingThatIsNoNumberFailsAfterTheObjectsAreWritten) {
    for (const char* setting : {"x", "1x", "yes"}) {
        SCOPED_TRACE(setting);
        WriteSettings(std::string("DownLoadCPs=") + setting);
        const Outcome outcome = Run(Right(), AppFile());
        ExpectOutcome(outcome, L"8004032F");
        EXPECT_EQ(outcome.changes,
                  (Lines{L"IDevice.GoSoftOffLine()", L"IFile.ValueText.put(\"0A1B2C3D\")"}));
    }
}

TEST_F(Values, FileWithoutVariablesWritesThePropertiesAlone) {
    const Outcome outcome = Run(Right(), AppFile{.variables = {}});
    ExpectSuccess(outcome);
    EXPECT_EQ(Only(outcome.changes, L"Point"), Lines());
    EXPECT_EQ(Only(outcome.changes, L"IFile").back(), L"IFile.ValueText.put(\"000964\")");
    EXPECT_EQ(Host().Count(L"IDevice.NetworkVariables.get"), 0);
}

TEST_F(Values, FileWithoutPropertiesWritesAnEmptyText) {
    const Outcome outcome = Run(Right(), AppFile{.properties = {}});
    ExpectSuccess(outcome);
    EXPECT_EQ(Only(outcome.changes, L"IFile").back(), L"IFile.ValueText.put(\"\")");
}

TEST_F(Values, VariableThatTheDeviceLacksFails) {
    const Outcome outcome =
        Run(Right(), AppFile{.variables = std::vector<AppPoint>{{"nciGone", 77, true, "00"},
                                                                {"nciNext", 7, true, "40200000"}}});
    ExpectOutcome(outcome, L"8004032F");
    EXPECT_EQ(Only(outcome.changes, L"Point"), Lines()) << "the ones behind it are not written";
}

TEST_F(Values, MissingPropertyEntryFails) {
    Room& room = Right([](Json& device) { RemoveFile(device, "1"); });
    const Outcome outcome = Run(room, AppFile());
    ExpectOutcome(outcome, L"8004032F");
    EXPECT_EQ(FileValue(kRight, "FFFE"), L"0A1B2C3D");
}

TEST_F(Values, LengthsAreTheHostsBusiness) {
    AllowMisuse();
    const Outcome outcome = Run(
        Right(), AppFile{.variables = std::vector<AppPoint>{{"nciFlowFactor", 7, true, "4020"}}});
    ExpectOutcome(outcome, L"8004032F");
    EXPECT_EQ(Only(Host().Log(), L"Point."), Lines{L"Point.RawValue.put(\"4020\")"});
}

TEST_F(Values, AllCallsComeInTheirOrder) {
    Room& room = WithIdentity("00010000");
    ExpectSuccess(Run(room, AppFile()));
    const Lines expected{
        L"IDevice.Focus(nothing)", L"IDevice.GoSoftOffLine()",
        // the objects entry is looked up first
        L"IDevice.Files.get()", L"IFiles.Count.get()", L"IFiles.Item(1)", L"IFile.Identifier.get()",
        L"IFiles.Item(2)", L"IFile.Identifier.get()", L"IFiles.Item(3)", L"IFile.Identifier.get()",
        // the file: a catalogue for each list
        L"IDevice.XMLSNVTs.get()", L"IDevice.XMLSNVTs.get()",
        // firmware
        L"IDevice.SISD.get()",
        // identity
        L"IDevice.Files.get()", L"IFiles.Count.get()", L"IFiles.Item(1)", L"IFile.Identifier.get()",
        L"IFile.ValueText.get()", L"IFile.ValueText.put(\"0001002A\")",
        // program ID, then the objects
        L"IDevice.ProgramId.get()", L"IFile.ValueText.put(\"0A1B2C3D\")",
        // the settings file is named after the program ID
        L"IDevice.ProgramId.get()",
        // values
        L"IDevice.Files.get()", L"IFiles.Count.get()", L"IFiles.Item(1)", L"IFile.Identifier.get()",
        L"IFiles.Item(2)", L"IFile.Identifier.get()", L"IFiles.Item(3)", L"IFile.Identifier.get()",
        L"IFiles.Item(4)", L"IFile.Identifier.get()", L"IFiles.Item(5)", L"IFile.Identifier.get()",
        L"IFile.ValueText.put(\"000964\")", L"IDevice.NetworkVariables.get()",
        L"Points.Item(\"7\")", L"Point.RawValue.put(\"40200000\")",
        // back, and the report
        L"IDevice.GoOnLine()", L"IDevice.Network.get()", L"INetwork.Report(0, object)"};
    EXPECT_EQ(Host().Log(), expected);
}

TEST_F(Values, EventComesAfterTheReport) {
    Room& room = Right();
    Lines reportsAtEvent;
    Subscription subscription(room.device.Get(), [&](DISPID, DISPPARAMS&) {
        reportsAtEvent = Host().Reports();
        return S_OK;
    });
    Download(room, Write(AppFile()));
    EXPECT_EQ(reportsAtEvent, Lines{std::wstring(L"00000000 ") + kRight});
}

TEST_F(Values, SuccessThatCannotBeReportedIsReportedAsAFailureAndRaisesNoEvent) {
    for (const wchar_t* member : {L"INetwork.Report", L"IDevice.Network.get"}) {
        SCOPED_TRACE(Narrow(member));
        Room& room = Right();
        Host().Fail(member);
        const Outcome outcome = Run(room, AppFile());
        EXPECT_EQ(outcome.reports, Lines{std::wstring(L"8004032F ") + kRight});
        EXPECT_EQ(outcome.events, 0);
        EXPECT_EQ(outcome.state, L"04");
        EXPECT_EQ(Host().Count(member), 2);
    }
}

TEST_F(Values, NetworkThatTakesNoReportIsToldTwiceAtMost) {
    for (const wchar_t* member : {L"INetwork.Report", L"IDevice.Network.get"}) {
        SCOPED_TRACE(Narrow(member));
        Room& room = Right();
        Host().FailAlways(member);
        const Outcome outcome = Run(room, AppFile());
        EXPECT_EQ(outcome.reports, Lines());
        EXPECT_EQ(outcome.events, 0);
        EXPECT_EQ(outcome.state, L"04");
        EXPECT_EQ(Host().Count(member), 2);
        Host().Restore();
    }
}

TEST_F(Values, DeviceWithoutANetworkIsReportedNowhere) {
    Room& room = Right();
    Host().AnswerNothing(L"IDevice.Network.get");
    const Outcome outcome = Run(room, AppFile());
    EXPECT_EQ(outcome.reports, Lines());
    EXPECT_EQ(outcome.events, 1);
}

TEST_F(Values, BooleanAnswersOfTheStateChangesAreNotLookedAt) {
    Room& room = Right();
    Host().Answer(L"IDevice.GoSoftOffLine", com::Variant(false));
    Host().Answer(L"IDevice.GoOnLine", com::Variant(false));
    EXPECT_EQ(Run(room, AppFile()).reports, Lines{std::wstring(L"00000000 ") + kRight});
}

TEST_F(Values, ExportOfOneRoomDownloadedIntoAnotherMakesItsValuesEqual) {
    for (const char* file : {"small.json", "room.json"}) {
        SCOPED_TRACE(file);
        Json network = NetworkFile(file);
        const std::wstring from = Wide(network["devices"][0]["neuron"].get<std::string>());
        const std::wstring to = Wide(network["devices"][1]["neuron"].get<std::string>());
        // Values of the second room's own, where a download must bring others.
        for (Json& point : DeviceOf(network, to)["nvs"])
            if (point["config"] == true)
                point["raw"] = std::string(point["raw"].get<std::string>().size(), '0');
        SetFile(DeviceOf(network, to), "FFFA", (*FileOf(DeviceOf(network, from), "FFFA"))["value"]);
        Open(network);
        const std::wstring path = InFolder(L"exported.app");
        Export(AddRoom(from), path);
        Download(AddRoom(to), path);
        EXPECT_EQ(Host().Reports(), Lines{L"00000000 " + to});
        Json saved = Saved();
        const Json source = DeviceOf(saved, from);
        const Json target = DeviceOf(saved, to);
        for (std::size_t i = 0; i < source["nvs"].size(); ++i)
            if (source["nvs"][i]["config"] == true) {
                EXPECT_EQ(target["nvs"][i]["raw"], source["nvs"][i]["raw"]);
            }
        for (std::size_t i = 0; i < source["cps"].size(); ++i)
            EXPECT_EQ(target["cps"][i]["raw"], source["cps"][i]["raw"]);
        EXPECT_EQ(FileValue(to, "FFFE"), FileValue(from, "FFFE"));
        DropRooms();
    }
}

}  // namespace
}  // namespace quillon::test
