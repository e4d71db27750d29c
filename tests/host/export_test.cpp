// Application export: the whole file against what the host holds, and what cannot be read or saved.
#include <set>

#include "com/late.h"
#include "support/host_app_file.h"
#include "support/host_test.h"

namespace quillon::test {
namespace {

class ExportTest : public HostTest {
protected:
    template <class F>
    Room& Left(F&& change) {
        Json network = SmallNetwork();
        change(DeviceOf(network, kLeft));
        Open(network);
        return AddRoom(kLeft);
    }
    Room& Left() {
        return Left([](Json&) {});
    }
    std::wstring Path() const { return InFolder(L"room.app"); }
    Lines Exported(const Room& room) {
        Export(room, Path());
        return DocumentLines(Path());
    }
    static std::wstring WideOf(const Json& text) { return Wide(text.get<std::string>()); }

    // What the file must say of the points of one kind.
    Lines PointLines(const Json& device, bool properties) {
        const auto host = HostDevice(kLeft);
        Host().Record(false);
        com::Ptr<IDispatch> points;
        com::Check(properties ? host->get_ConfigProperties(points.Out())
                              : host->get_NetworkVariables(points.Out()));
        Lines lines;
        for (const Json& point : device.at(properties ? "cps" : "nvs")) {
            const bool values = properties || point["config"] == true;
            const std::wstring path = std::wstring(L"Configuration/Profile/") +
                                      (properties ? L"CPs/" : L"NVs/") + WideOf(point["name"]);
            const std::wstring index = std::to_wstring(point["index"].get<int>());
            const auto own = com::Get(points.Get(), L"Item", {com::Variant(index)}).AsObject();
            if (values && !properties) lines.push_back(path + L"@IsNC=1");
            if (!properties)
                lines.push_back(path + L"/Direction=" +
                                (point["output"] == true ? L"Output" : L"Input"));
            lines.push_back(path + L"/SISD=" + WideOf(point["selfDoc"]));
            lines.push_back(path + L"/SNVTType=" + WideOf(point["type"]));
            const auto length = point["raw"].get<std::string>().size() / 2;
            lines.push_back(path + L"/Length=" + std::to_wstring(length));
            lines.push_back(path + L"/ConnectionIndex=" + index);
            if (!values) continue;
            lines.push_back(path + L"/RawValue=" + WideOf(point["raw"]));
            lines.push_back(path + L"/Value=" + com::Get(own.Get(), L"FormattedValue").AsText());
        }
        Host().Record(true);
        return lines;
    }
};

Lines HeadLines(const wchar_t* header, const wchar_t* objects) {
    return {L"Configuration/FWVersion=V0210",
            std::wstring(L"Configuration/Export/Header=") + header,
            std::wstring(L"Configuration/Export/AppObjects=") + objects,
            L"Configuration/Profile/ProgramID=9FFFFF0512040410",
            L"Configuration/Profile/UserCPFile=units.cps",
            L"Configuration/Profile/SDString=&3.2@0NodeObject,8500FanCoil;0102021003001000"};
}

TEST_F(ExportTest, WholeFileIsWhatTheHostHolds) {
    Room& room = Left([](Json& device) { device["userCpFile"] = "units.cps"; });
    Json saved = Saved();
    const Json device = DeviceOf(saved, kLeft);
    Lines expected = HeadLines(L"000000000001002A", L"0A1B2C3D");
    for (const bool properties : {false, true})
        for (const std::wstring& line : PointLines(device, properties)) expected.push_back(line);
    EXPECT_EQ(Exported(room), expected);
    EXPECT_EQ(Changes(Host().Log()), Lines()) << "the device is only read";
    EXPECT_EQ(Only(Host().Log(), L"IDevice.Focus"), Lines());
}

TEST_F(ExportTest, FileBeginsWithTheDeclaration) {
    Export(Left(), Path());
    EXPECT_TRUE(ReadBytes(Path()).starts_with("<?xml version=\"1.0\"?>"));
    EXPECT_FALSE(FileExists(Path() + L".new"));
}

TEST_F(ExportTest, OldFileIsReplaced) {
    WriteBytes(Path(), std::string(100'000, 'x'));
    EXPECT_EQ(Exported(Left()).front(), L"Configuration/FWVersion=V0210");
}

TEST_F(ExportTest, DeviceWithoutPointsHasNeitherContainer) {
    Room& room = Left([](Json& device) {
        device["nvs"] = Json::array();
        device["cps"] = Json::array();
    });
    EXPECT_EQ(Exported(room).size(), 6U);
    const std::string text = ReadBytes(Path());
    EXPECT_EQ(text.find("<NVs"), std::string::npos);
    EXPECT_EQ(text.find("<CPs"), std::string::npos);
}

TEST_F(ExportTest, DeviceWithoutEntriesHasAHeaderOfZerosAndNoObjects) {
    Room& room = Left([](Json& device) {
        RemoveFile(device, "FFFA");
        RemoveFile(device, "FFFE");
    });
    const Lines lines = Exported(room);
    EXPECT_EQ(lines[1], L"Configuration/Export/Header=0000000000000000");
    EXPECT_EQ(lines[2], L"Configuration/Export/AppObjects=");
}

TEST_F(ExportTest, OnlyConfigurationVariablesCarryValues) {
    Json saved;
    Room& room = Left();
    saved = Saved();
    std::set<std::wstring> configuration;
    for (const Json& point : DeviceOf(saved, kLeft)["nvs"])
        if (point["config"] == true) configuration.insert(WideOf(point["name"]));
    EXPECT_EQ(configuration.size(), 4U);
    for (const std::wstring& line : Only(Exported(room), L"Configuration/Profile/NVs/")) {
        const std::size_t start = std::wstring(L"Configuration/Profile/NVs/").size();
        const std::size_t end = line.find_first_of(L"/@", start);
        const bool value = line[end] == L'@' || line.substr(end).starts_with(L"/RawValue") ||
                           line.substr(end).starts_with(L"/Value");
        if (value) {
            EXPECT_TRUE(configuration.contains(line.substr(start, end - start))) << Narrow(line);
        }
    }
}

TEST_F(ExportTest, PointWhoseNameIsNoXmlNameIsLeftOutWhole) {
    Room& room = Left([](Json& device) {
        device["nvs"][5]["name"] = "nci Location";
        device["cps"][0]["name"] = "1Unit";
        device["cps"][1]["name"] = "a:b";
    });
    const Lines lines = Exported(room);
    EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs/nciSetpoints@IsNC"),
              Lines{L"Configuration/Profile/NVs/nciSetpoints@IsNC=1"});
    std::set<std::wstring> names;
    for (const std::wstring& line : Only(lines, L"Configuration/Profile/NVs/"))
        names.insert(line.substr(26, line.find_first_of(L"/@", 26) - 26));
    EXPECT_EQ(names.size(), 8U);
    EXPECT_EQ(Only(lines, L"Configuration/Profile/CPs/").size(), 4U * 6U);
}

TEST_F(ExportTest, CharactersThatADocumentCannotHoldAreLeftOut) {
    Room& room = Left([](Json& device) {
        device["nvs"][0]["selfDoc"] =
            "a\x01<&>\"b\x0B\x1F"
            "c";
        device["sisd"] = "x]]>y;0102021003001000";
    });
    const Lines lines = Exported(room);
    EXPECT_EQ(lines[5], L"Configuration/Profile/SDString=x]]>y;0102021003001000");
    EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs/nviSetpoint/SISD")[0],
              L"Configuration/Profile/NVs/nviSetpoint/SISD=a<&>\"bc");
}

TEST_F(ExportTest, MessagesAreHandledAfterEachPoint) {
    Room& room = Left();
    int handled = 0;
    for (long point = 1; point <= 15; ++point)
        Host().Call(L"Point.Name.get", point, [&] { Posted().Post([&] { ++handled; }); });
    Export(room, Path());
    EXPECT_EQ(handled, 15) << "9 network variables and 6 properties";
}

TEST_F(ExportTest, SilentDevicesValuesAreWrittenAsShown) {
    Room& room = Left();
    Host().Silence(kLeft, true);
    const Lines lines = Exported(room);
    EXPECT_EQ(Only(lines, L"Configuration/Profile/CPs/cpApplCode/RawValue")[0],
              L"Configuration/Profile/CPs/cpApplCode/RawValue=?");
    EXPECT_EQ(lines[1], L"Configuration/Export/Header=00000000") << "the entry is there, unread";
}

TEST_F(ExportTest, UnreadableFirmwareVersionLeavesItsLetter) {
    Room& room = Left();
    Host().FailAlways(L"IDevice.SISD.get");
    const Lines lines = Exported(room);
    EXPECT_EQ(lines[0], L"Configuration/FWVersion=V");
    EXPECT_EQ(lines[5], L"Configuration/Profile/SDString=");
}

TEST_F(ExportTest, RawValuesKeepTheHostsLetterCase) {
    Room& room = Left();
    Host().Answer(L"Point.RawValue.get", L"0a2F");
    const Lines lines = Exported(room);
    EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs/nciLocation/RawValue"),
              Lines{L"Configuration/Profile/NVs/nciLocation/RawValue=0a2F"});
    EXPECT_EQ(Only(lines, L"Configuration/Profile/CPs/cpApplCode/RawValue"),
              Lines{L"Configuration/Profile/CPs/cpApplCode/RawValue=0a2F"});
}

// ---- saving

TEST_F(ExportTest, SaveFailureShowsTheWarningAndTheResultIsFalse) {
    Room& room = Left();
    const std::wstring path = InFolder(L"no such folder\\room.app");
    Boxes().Answer(IDOK);
    Export(room, path);
    ASSERT_EQ(Boxes().Seen().size(), 1U);
    const Box& box = Boxes().Seen()[0];
    EXPECT_EQ(box.title, L"Warning");
    EXPECT_EQ(box.text, L"Error when saving the file: " + path +
                            L"\r\nCheck the available space on the driver.");
    EXPECT_EQ(box.icon, Icon::kStop);
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    com::Ptr<IErrorInfo> record;
    EXPECT_EQ(GetErrorInfo(0, record.Out()), S_FALSE) << "no error state is left behind";
}

TEST_F(ExportTest, FileInUseStaysWhole) {
    Room& room = Left();
    WriteBytes(Path(), "the old file");
    const HANDLE held = CreateFileW(Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    Boxes().Answer(IDOK);
    Export(room, Path());
    CloseHandle(held);
    EXPECT_EQ(ReadBytes(Path()), "the old file");
    EXPECT_FALSE(FileExists(Path() + L".new"));
}

// True when the system puts a file in the place of one that may not be written.
bool ReplacesReadOnlyFiles(const std::wstring& folder) {
    const std::wstring fixed = folder + L"\\fixed.txt";
    const std::wstring other = folder + L"\\other.txt";
    for (const std::wstring& path : {fixed, other}) WriteBytes(path, "x");
    SetFileAttributesW(fixed.c_str(), FILE_ATTRIBUTE_READONLY);
    const bool replaces =
        MoveFileExW(other.c_str(), fixed.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
    SetFileAttributesW(fixed.c_str(), FILE_ATTRIBUTE_NORMAL);
    return replaces;
}

TEST_F(ExportTest, ReadOnlyFileIsTheOldOneAndToldOrTheWholeNewOne) {
    Room& room = Left();
    WriteBytes(Path(), "the old file");
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    const bool replaced = ReplacesReadOnlyFiles(Folder());
    if (!replaced) Boxes().Answer(IDOK);
    Export(room, Path());
    SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(FileExists(Path() + L".new"));
    if (replaced)
        EXPECT_EQ(DocumentLines(Path()).front(), L"Configuration/FWVersion=V0210");
    else
        EXPECT_EQ(ReadBytes(Path()), "the old file");
}

TEST_F(ExportTest, EmptyPathIsASaveFailure) {
    Boxes().Answer(IDOK);
    Export(Left(), L"");
    EXPECT_EQ(Boxes().Seen().size(), 1U);
}

// ---- a host that fails at each step

TEST_F(ExportTest, EveryHostCallMayFail) {
    Room& room = Left();
    Export(room, Path());
    std::set<std::wstring> members;
    for (const std::wstring& line : Host().Log()) members.insert(line.substr(0, line.find(L'(')));
    EXPECT_GT(members.size(), 20U);
    for (const std::wstring& member : members)
        for (const long nth : {1L, 2L, 0L}) {
            SCOPED_TRACE(Narrow(member) + " " + std::to_string(nth));
            if (nth == 0)
                Host().FailAlways(member);
            else
                Host().Fail(member, nth);
            DeleteFileW(Path().c_str());
            Host().Clear();
            const Lines lines = Exported(room);
            EXPECT_GE(lines.size(), 6U);
            EXPECT_EQ(lines[4], L"Configuration/Profile/UserCPFile=");
            EXPECT_EQ(Changes(Host().Log()), Lines());
            Host().Restore();
        }
}

TEST_F(ExportTest, UnreadableCollectionLeavesItsContainerOut) {
    Room& room = Left();
    for (const wchar_t* member : {L"IDevice.NetworkVariables.get", L"Points.Count.get"}) {
        SCOPED_TRACE(Narrow(member));
        Host().Fail(member);
        const Lines lines = Exported(room);
        EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs"), Lines());
        EXPECT_EQ(Only(lines, L"Configuration/Profile/CPs").size(), 36U);
        Host().Restore();
    }
}

TEST_F(ExportTest, UnreadableValueIsAnEmptyText) {
    Room& room = Left();
    Host().Fail(L"Point.SelfDoc.get");
    Host().Fail(L"Point.RawValue.get");
    const Lines lines = Exported(room);
    EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs/nviSetpoint/SISD"),
              Lines{L"Configuration/Profile/NVs/nviSetpoint/SISD="});
    EXPECT_EQ(Only(lines, L"Configuration/Profile/NVs/nciLocation/RawValue"),
              Lines{L"Configuration/Profile/NVs/nciLocation/RawValue="});
    EXPECT_EQ(lines.size(), 6U + 9U * 5U + 4U * 3U + 36U) << "nothing else is missing";
}

// ---- a hostile host

TEST_F(ExportTest, AnswersOfWrongTypesDoNoHarm) {
    Room& room = Left();
    const com::Variant answers[] = {com::Variant(), com::Variant(L"nonsense"),
                                    com::Variant(std::int32_t{-1}),
                                    com::Variant(static_cast<IDispatch*>(nullptr))};
    for (const wchar_t* member : {L"Points.Count.get",
                                  L"Points._NewEnum.get",
                                  L"Point.Name.get",
                                  L"Point.NVDirection.get",
                                  L"Point.NVIsConfig.get",
                                  L"Point.SelfDoc.get",
                                  L"Point.SNVType.get",
                                  L"Point.Index.get",
                                  L"Point.RawValue.get",
                                  L"Point.FormattedValue.get",
                                  L"Type.Name.get",
                                  L"Type.Length.get",
                                  L"IDevice.NetworkVariables.get",
                                  L"IDevice.ConfigProperties.get",
                                  L"IDevice.Files.get",
                                  L"IFiles.Count.get",
                                  L"IFiles.Item",
                                  L"IFile.Identifier.get",
                                  L"IFile.ValueText.get",
                                  L"IDevice.SISD.get",
                                  L"IDevice.ProgramId.get",
                                  L"Enumerator.Next"})
        for (const com::Variant& answer : answers) {
            SCOPED_TRACE(Narrow(member));
            Host().Answer(member, answer);
            DeleteFileW(Path().c_str());
            EXPECT_GE(Exported(room).size(), 6U);
            Host().Restore();
        }
    EXPECT_EQ(Changes(Host().Log()), Lines());
}

}  // namespace
}  // namespace quillon::test
