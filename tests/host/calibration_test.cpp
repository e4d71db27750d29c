// Saving a unit's factory data to a calibration file, and loading it from one.
#include "support/host_test.h"

namespace quillon::test {
namespace {

constexpr const wchar_t* kHeld = L"0102030405061A170C";
constexpr const wchar_t* kNew = L"27103EA80028011C2F";

class CalibrationFile : public HostTest {
protected:
    Room& Left() {
        OpenSmall();
        return AddRoom(kLeft);
    }
    std::wstring File() const { return InFolder(L"unit.tca"); }
    std::string Text() const {
        return FileExists(File()) ? ReadBytes(File()) : std::string("(no file)");
    }
    void Write(const std::string& text) const { WriteBytes(File(), text); }
    void Save(const Room& room) {
        EXPECT_EQ(room.ex->SaveCalibration(com::Bstr(File()).Get()), S_OK);
    }
    void Load(const Room& room) {
        EXPECT_EQ(room.ex->LoadCalibration(com::Bstr(File()).Get()), S_OK);
    }
    static Lines Factory(const Room& room) {
        short high = 0, low = 0, offset = 0;
        com::Check(room.own->get_AnalogInput1_High(&high));
        com::Check(room.own->get_AnalogInput1_Low(&low));
        com::Check(room.own->get_AnalogInput1_Offset(&offset));
        return {std::to_wstring(high), std::to_wstring(low), std::to_wstring(offset),
                TextOf(room.own, &_CDevice::get_ProductionYear),
                TextOf(room.own, &_CDevice::get_ProductionWeek)};
    }
    Lines SeenBoxes() {
        Lines boxes;
        for (const Box& box : Boxes().Seen()) boxes.push_back(box.title + L": " + box.text);
        return boxes;
    }
};

constexpr const wchar_t* kMissing =
    L"Missing calibrations: No calibration values are present in the file for the device";
constexpr const wchar_t* kRetry = L"Warining: The operation was not successfull.";
const char* const kSaved = "[0000000000A1]\r\nCalibration=0102030405061A170C\r\n";

TEST_F(CalibrationFile, SavingWritesTheEntryUnderTheNeuronId) {
    Room& room = Left();
    Save(room);
    EXPECT_EQ(Text(), kSaved);
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

TEST_F(CalibrationFile, SavingKeepsTheSectionsOfOtherUnits) {
    Write("[0000000000A2]\r\nCalibration=111122223333010101\r\n");
    Save(Left());
    EXPECT_EQ(Text(), "[0000000000A2]\r\nCalibration=111122223333010101\r\n" + std::string(kSaved));
}

TEST_F(CalibrationFile, SavingNeedsTheFocus) {
    Room& room = Left();
    Host().Answer(L"IDevice.Focus", com::Variant(false));
    Save(room);
    EXPECT_EQ(Text(), "(no file)");
    EXPECT_EQ(Host().Count(L"IFile.ValueText.get"), 0);
    Host().Restore();
    Host().FailAlways(L"IDevice.Focus");
    Save(room);
    EXPECT_EQ(Text(), "(no file)");
}

TEST_F(CalibrationFile, EntryThatCannotBeReadIsOfferedAgain) {
    Room& room = Left();
    Host().AnswerNothing(L"IFile.ValueText.get");
    Boxes().Answer(IDRETRY);
    Boxes().Answer(IDRETRY, [] { Host().Restore(); });
    Save(room);
    EXPECT_EQ(SeenBoxes(), Lines(2, kRetry));
    EXPECT_EQ(Boxes().Seen()[0].icon, Icon::kInformation);
    EXPECT_EQ(Boxes().Seen()[0].buttons, (std::vector<int>{IDCANCEL, IDRETRY}));
    EXPECT_EQ(Text(), kSaved);
}

TEST_F(CalibrationFile, FailingReadIsOfferedAgainAndWhatWasReadBeforeIsNotSaved) {
    Room& room = Left();
    Save(room);
    DeleteFileW(File().c_str());
    for (const wchar_t* member : {L"IFile.ValueText.get", L"IDevice.Files.get"}) {
        Host().FailAlways(member);
        Boxes().Answer(IDCANCEL);
        Save(room);
        Host().Restore();
        EXPECT_EQ(Text(), "(no file)");
    }
    EXPECT_EQ(SeenBoxes(), Lines(2, kRetry));
}

TEST_F(CalibrationFile, CancelAbandonsTheSave) {
    Json network = SmallNetwork();
    RemoveFile(DeviceOf(network, kLeft), "FFFF");
    Open(network);
    Room& room = AddRoom(kLeft);
    Boxes().Answer(IDCANCEL);
    Save(room);
    EXPECT_EQ(Text(), "(no file)");
}

TEST_F(CalibrationFile, TextThatIsNoFactoryDataIsOfferedAgainAndTheGoodFileStays) {
    Room& room = Left();
    Save(room);
    const wchar_t* const kTexts[] = {L"0102030405061A17", L"0102030405061A17G0", L"none"};
    for (const wchar_t* text : kTexts) {
        Host().Answer(L"IFile.ValueText.get", text);
        Boxes().Answer(IDRETRY);
        Boxes().Answer(IDCANCEL);
        Save(room);
        EXPECT_EQ(Text(), kSaved) << Narrow(text);
    }
    EXPECT_EQ(SeenBoxes(), Lines(2 * std::size(kTexts), kRetry));
}

TEST_F(CalibrationFile, EntryLongerThanTheFactoryDataLoadsBackFromItsFile) {
    Json network = SmallNetwork();
    SetFile(DeviceOf(network, kLeft), "FFFF", "0102030405061A170CAABB");
    Open(network);
    Room& room = AddRoom(kLeft);
    Save(room);
    EXPECT_EQ(Text(), kSaved);
    Load(room);
    EXPECT_EQ(SeenBoxes(), Lines());
    EXPECT_EQ(Changes(Host().Log()), Lines{L"IFile.ValueText.put(\"0102030405061A170C\")"});
}

TEST_F(CalibrationFile, RetryLetsWaitingMessagesRun) {
    Room& room = Left();
    Host().AnswerNothing(L"IFile.ValueText.get");
    bool ran = false;
    Boxes().Answer(IDRETRY, [&] {
        Posted().Post([&] {
            ran = true;
            Host().Restore();
        });
    });
    Save(room);
    EXPECT_TRUE(ran);
    EXPECT_EQ(Text(), kSaved);
}

TEST_F(CalibrationFile, UnitWithoutANeuronIdSavesNothing) {
    Room& room = Left();
    Host().FailAlways(L"IDevice.NeuronID.get");
    Save(room);
    EXPECT_EQ(Text(), "(no file)");
}

TEST_F(CalibrationFile, LoadingWritesTheEntryAndReadsItAgain) {
    Write("[0000000000A1]\r\nCalibration=27103EA80028011C2F / from the test bench\r\n");
    Room& room = Left();
    Load(room);
    EXPECT_EQ(Changes(Host().Log()), Lines{L"IFile.ValueText.put(\"27103EA80028011C2F\")"});
    EXPECT_EQ(FileValue(kLeft, "FFFF"), kNew);
    EXPECT_EQ(Factory(room), (Lines{L"10000", L"16040", L"40", L"2026", L"47"}));
}

TEST_F(CalibrationFile, WhatWasSavedLoadsBack) {
    Room& room = Left();
    Save(room);
    Load(room);
    EXPECT_EQ(FileValue(kLeft, "FFFF"), kHeld);
    EXPECT_EQ(Factory(room), (Lines{L"258", L"772", L"1286", L"2021", L"12"}));
}

TEST_F(CalibrationFile, FileWithoutValuesForTheUnitIsToldAndNothingIsWritten) {
    Room& room = Left();
    const char* const kTexts[] = {"",
                                  "[0000000000A2]\r\nCalibration=27103EA80028011C2F\r\n",
                                  "[0000000000A1]\r\nCalibration=\r\n",
                                  "[0000000000A1]\r\nCalibration=27103EA80028011C2\r\n",
                                  "[0000000000A1]\r\nCalibration=27103EA80028011C2F0\r\n",
                                  "[0000000000A1]\r\nCalibration=27103EA80028011C2G\r\n",
                                  "[0000000000A1]\r\nCalibration=27103EA8/0028011C2F\r\n"};
    for (const char* text : kTexts) {
        Write(text);
        Boxes().Answer(IDOK);
        Load(room);
    }
    DeleteFileW(File().c_str());
    Boxes().Answer(IDOK);
    Load(room);
    EXPECT_EQ(SeenBoxes(), Lines(std::size(kTexts) + 1, kMissing));
    EXPECT_EQ(Boxes().Seen()[0].icon, Icon::kStop);
    EXPECT_EQ(Changes(Host().Log()), Lines());
    EXPECT_EQ(FileValue(kLeft, "FFFF"), kHeld);
}

TEST_F(CalibrationFile, FailuresOfLoadingAreSilent) {
    Write("[0000000000A1]\r\nCalibration=27103EA80028011C2F\r\n");
    Room& room = Left();
    for (const wchar_t* member :
         {L"IDevice.Files.get", L"IFiles.Item", L"IFile.Identifier.get", L"IFile.ValueText.put"}) {
        Host().FailAlways(member);
        Load(room);
        Host().Restore();
        EXPECT_EQ(FileValue(kLeft, "FFFF"), kHeld) << Narrow(member);
    }
    Load(room);
    EXPECT_EQ(FileValue(kLeft, "FFFF"), kNew);
}

TEST_F(CalibrationFile, UnitThatHoldsSomethingElseAfterwardsShowsThat) {
    Write("[0000000000A1]\r\nCalibration=27103EA80028011C2F\r\n");
    Room& room = Left();
    Host().FailAlways(L"IFile.ValueText.put");
    Load(room);
    EXPECT_EQ(Factory(room), (Lines{L"258", L"772", L"1286", L"2021", L"12"}));
}

TEST_F(CalibrationFile, ObjectLetGoOfMeanwhileFinishesItsWork) {
    Write("[0000000000A1]\r\nCalibration=27103EA80028011C2F\r\n");
    Room& room = Left();
    IDeviceEx* const bare = room.ex.Get();
    Host().Call(L"IDevice.Files.get", 1, [&] { room.Drop(); });
    EXPECT_EQ(bare->LoadCalibration(com::Bstr(File()).Get()), S_OK);
    EXPECT_EQ(FileValue(kLeft, "FFFF"), kNew);
}

TEST_F(CalibrationFile, NoFileNameIsNoCrash) {
    Room& room = Left();
    EXPECT_EQ(room.ex->SaveCalibration(nullptr), S_OK);
    Boxes().Answer(IDOK);
    EXPECT_EQ(room.ex->LoadCalibration(nullptr), S_OK);
    EXPECT_EQ(SeenBoxes(), Lines{kMissing});
}

}  // namespace
}  // namespace quillon::test
