// Application download: the checks in their order, the codes that the host is told, what is
// written.
#include "download_fixture.h"

namespace quillon::test {
namespace {

using Checks = DownloadTest;

TEST_F(Checks, RefusedFocusReportsNothingAndLeavesTheDeviceAlone) {
    Room& room = Right();
    Host().Answer(L"IDevice.Focus", com::Variant(false));
    const Outcome outcome = Run(room, AppFile());
    EXPECT_EQ(outcome.reports, Lines());
    EXPECT_EQ(outcome.events, 0);
    EXPECT_EQ(outcome.state, L"04");
    EXPECT_EQ(Host().Log(), Lines{L"IDevice.Focus(nothing)"});
}

TEST_F(Checks, FittingFileIsWrittenAndReportedAsSuccess) {
    const Outcome outcome = Run(Right(), AppFile());
    ExpectSuccess(outcome);
    EXPECT_EQ(outcome.changes,
              (Lines{L"IDevice.GoSoftOffLine()", L"IFile.ValueText.put(\"0A1B2C3D\")",
                     L"IDevice.GoOnLine()"}));
    EXPECT_EQ(FileValue(kRight, "FFFE"), L"0A1B2C3D");
}

TEST_F(Checks, MissingFileShowsTheMessageAndIsReported) {
    Room& room = Right();
    const std::wstring path = InFolder(L"missing.app");
    Boxes().Answer(IDOK);
    const Outcome outcome = Run(room, path);
    ExpectOutcome(outcome, L"80040325");
    EXPECT_EQ(outcome.changes, NothingWritten());
    ASSERT_EQ(Boxes().Seen().size(), 1U);
    const Box& box = Boxes().Seen()[0];
    EXPECT_EQ(box.text, L"Bad Application file: " + path);
    EXPECT_EQ(box.title, L"Quillon");
    EXPECT_EQ(box.icon, Icon::kStop);
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
}

TEST_F(Checks, MalformedFilesAreReportedAndWriteNothing) {
    Room& room = Right();
    const std::string whole = AppFile().Text();
    for (const std::string& text :
         {std::string(), whole.substr(0, whole.size() / 2), std::string("\x00\x01\xFF\xFE", 4),
          std::string("<!DOCTYPE x [<!ENTITY a \"b\">]><Configuration/>")}) {
        SCOPED_TRACE(text.substr(0, 30));
        Boxes().Answer(IDOK);
        const std::wstring path = InFolder(L"bad.app");
        WriteBytes(path, text);
        const Outcome outcome = Run(room, path);
        ExpectOutcome(outcome, L"80040325");
        EXPECT_EQ(outcome.changes, NothingWritten());
        EXPECT_TRUE(DeleteFileW(path.c_str())) << "the file is let go of";
    }
}

TEST_F(Checks, OtherFirmwareIsReported) {
    for (const char* version : {"V0211", "V210", "0210", "V0210 ", "v"}) {
        SCOPED_TRACE(version);
        const Outcome outcome = Run(Right(), AppFile{.firmware = version});
        if (std::string_view(version) == "v") {
            ExpectSuccess(outcome);  // nothing behind the letter: no version
            continue;
        }
        ExpectOutcome(outcome, L"80040320");
        EXPECT_EQ(outcome.changes, NothingWritten());
    }
}

TEST_F(Checks, FirmwareIsComparedAsItsOwnTextSays) {
    Room& room = Right([](Json& device) { device["sisd"] = "x;abcd2.10efgh"; });
    ExpectSuccess(Run(room, AppFile{.firmware = "V2.10"}));
}

TEST_F(Checks, FileWithoutFirmwareVersionSkipsTheCheck) {
    ExpectSuccess(Run(Right(), AppFile{.firmware = {}}));
    EXPECT_EQ(Host().Count(L"IDevice.SISD.get"), 0);
}

TEST_F(Checks, FailingSelfIdentificationIsReportedAsOtherFirmware) {
    Room& room = Right();
    Host().FailAlways(L"IDevice.SISD.get");
    ExpectOutcome(Run(room, AppFile()), L"80040320");
}

TEST_F(Checks, EmptyOrMissingApplicationObjectsAreRefusedBeforeAnythingIsWritten) {
    for (const std::optional<std::string>& objects : {std::optional<std::string>(""), {}}) {
        Room& room = WithIdentity("00020000");
        const Outcome outcome = Run(room, AppFile{.objects = objects});
        ExpectOutcome(outcome, L"80040325");
        EXPECT_EQ(outcome.changes, NothingWritten());
    }
}

TEST_F(Checks, OtherFirmwareIsToldBeforeEmptyApplicationObjects) {
    ExpectOutcome(Run(Right(), AppFile{.firmware = "V9999", .objects = ""}), L"80040320");
}

// ---- identity

TEST_F(Checks, OtherDeviceIsReportedWithoutTheForcingSetting) {
    const Outcome outcome = Run(Right(), AppFile{.header = "000000000002002A"});
    ExpectOutcome(outcome, L"80040323");
    EXPECT_EQ(outcome.changes, NothingWritten());
}

TEST_F(Checks, OtherDeviceIsForcedByAnyTextOfTheSetting) {
    for (const char* force : {"1", "0", "no"}) {
        SCOPED_TRACE(force);
        WriteSettings(std::string("ForceCustomerID=") + force);
        const Outcome outcome = Run(Right(), AppFile{.header = "000000000002002A"});
        ExpectSuccess(outcome);
        EXPECT_EQ(FileValue(kRight, "FFFA"), L"0002002A");
    }
}

TEST_F(Checks, ForcingSettingThatIsEmptyOrAllCommentRefuses) {
    for (const char* force : {"", "/ off"}) {
        SCOPED_TRACE(force);
        WriteSettings(std::string("ForceCustomerID=") + force);
        ExpectOutcome(Run(Right(), AppFile{.header = "000000000002002A"}), L"80040323");
        ExpectOutcome(Run(Right(), AppFile{.header = "0000000000010030"}), L"80040322");
    }
}

TEST_F(Checks, DeviceCodeOfTheFileIsReadAsADecimalNumber) {
    ExpectSuccess(Run(WithIdentity("0068002A"), AppFile{.header = "000000000104002A"}));
    ExpectOutcome(Run(WithIdentity("0104002A"), AppFile{.header = "000000000104002A"}),
                  L"80040323");
}

TEST_F(Checks, ForcingWritesTheDeviceCodeAsAHexadecimalWord) {
    WriteSettings("ForceCustomerID=1");
    ExpectSuccess(Run(WithIdentity("0104002A"), AppFile{.header = "000000000104002A"}));
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"0068002A");
}

TEST_F(Checks, CustomerZeroInTheDeviceIsOverwrittenWithoutTheSetting) {
    const Outcome outcome = Run(WithIdentity("00010000"), AppFile());
    ExpectSuccess(outcome);
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"0001002A");
    EXPECT_EQ(Only(outcome.changes, L"IFile"),
              (Lines{L"IFile.ValueText.put(\"0001002A\")", L"IFile.ValueText.put(\"0A1B2C3D\")"}));
}

TEST_F(Checks, OtherCustomerIsReportedAndLeavesTheIdentityAlone) {
    const Outcome outcome = Run(WithIdentity("00010001"), AppFile());
    ExpectOutcome(outcome, L"80040322");
    EXPECT_EQ(outcome.changes, NothingWritten());
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"00010001");
}

TEST_F(Checks, OtherCustomerIsForced) {
    WriteSettings("ForceCustomerID=0");
    ExpectSuccess(Run(WithIdentity("00010001"), AppFile()));
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"0001002A");
}

TEST_F(Checks, DeviceAndCustomerAreForcedOneAfterTheOther) {
    WriteSettings("ForceCustomerID=1");
    const Outcome outcome = Run(WithIdentity("00020001"), AppFile());
    ExpectSuccess(outcome);
    EXPECT_EQ(Only(outcome.changes, L"IFile"),
              (Lines{L"IFile.ValueText.put(\"00010001\")", L"IFile.ValueText.put(\"0001002A\")",
                     L"IFile.ValueText.put(\"0A1B2C3D\")"}));
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"0001002A");
}

TEST_F(Checks, CustomersAreComparedAsTexts) {
    ExpectOutcome(Run(WithIdentity("0001002A"), AppFile{.header = "000000000001002a"}),
                  L"80040322");
}

TEST_F(Checks, DeviceCodeAlreadyRewrittenStaysWhenTheCustomerIsRefused) {
    WriteSettings("ForceCustomerID=1");
    Room& room = WithIdentity("00020001");
    // The setting is taken away once the first of its two readers has seen it.
    Host().Call(L"IFile.ValueText.put", 1, [&] { WriteSettings("Other=1"); });
    const Outcome outcome = Run(room, AppFile());
    ExpectOutcome(outcome, L"80040322");
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"00010001");
    EXPECT_EQ(outcome.changes,
              (Lines{L"IDevice.GoSoftOffLine()", L"IFile.ValueText.put(\"00010001\")"}));
}

TEST_F(Checks, DeviceWithoutIdentityEntrySkipsTheCheck) {
    Room& room = Right([](Json& device) { RemoveFile(device, "FFFA"); });
    ExpectSuccess(Run(room, AppFile{.header = "0000000099990001"}));
}

TEST_F(Checks, MissingObjectsEntryFailsAfterTheIdentityWasWritten) {
    Room& room = Right([](Json& device) {
        SetFile(device, "FFFA", "00010000");
        RemoveFile(device, "FFFE");
    });
    const Outcome outcome = Run(room, AppFile());
    ExpectOutcome(outcome, L"8004032B");
    EXPECT_EQ(FileValue(kRight, "FFFA"), L"0001002A");
}

// ---- program ID

constexpr const char* kOtherProgram = "9FFFFF0512040522";

TEST_F(Checks, OtherProgramIdIsAskedAboutAndNoIsReported) {
    Room& room = Right();
    bool defaultsToNo = false;
    Boxes().Answer(IDNO, [&] {
        const HWND box = FindWindowW(L"#32770", L"Warning");
        const LONG style = GetWindowLongW(GetDlgItem(box, IDNO), GWL_STYLE);
        defaultsToNo = (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    });
    const Outcome outcome = Run(room, AppFile{.programId = kOtherProgram});
    ExpectOutcome(outcome, L"80040321");
    EXPECT_EQ(outcome.changes, NothingWritten());
    ASSERT_EQ(Boxes().Seen().size(), 1U);
    const Box& box = Boxes().Seen()[0];
    EXPECT_EQ(box.text,
              L"The ProgramID into the Application File is different to the one in the device. "
              L"Do you want to continue?");
    EXPECT_EQ(box.title, L"Warning");
    EXPECT_EQ(box.buttons, (std::vector<int>{IDYES, IDNO}));
    EXPECT_TRUE(defaultsToNo) << "Enter must not go on";
}

TEST_F(Checks, OtherProgramIdIsWrittenWhenTheAnswerIsYes) {
    Room& room = Right();
    Boxes().Answer(IDYES);
    ExpectSuccess(Run(room, AppFile{.programId = kOtherProgram}));
    EXPECT_EQ(FileValue(kRight, "FFFE"), L"0A1B2C3D");
}

TEST_F(Checks, EmptyOrMissingProgramIdIsNotAskedAbout) {
    ExpectSuccess(Run(Right(), AppFile{.programId = ""}));
    ExpectSuccess(Run(Right(), AppFile{.programId = {}}));
}

}  // namespace
}  // namespace quillon::test
