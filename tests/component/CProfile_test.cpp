#include "model/CProfile.h"

#include "com/module.h"
#include "component/profile_support.h"

namespace quillon {
namespace {

using com::Ptr;
using test::FileText;

constexpr const char* kTwoLists = "<NVs><a/></NVs><CPs><b/></CPs>";

class CProfileTest : public test::ProfileTest {};

// As this system writes it.
const char* const kExample =
    "<?xml version=\"1.0\"?>\n<Configuration><FWVersion>V2.10</FWVersion>"
    "<Export><Header>000000000104002A</Header><AppObjects>0A1B2C3D</AppObjects></Export>"
    "<Profile><ProgramID>9FFFFF0512040410</ProgramID><UserCPFile></UserCPFile>"
    "<SDString>&amp;3.2@8</SDString>"
    "<NVs>"
    "<nviSpaceTemp><Direction>Input</Direction><SISD>@0|1</SISD><SNVTType>SNVT_temp_p</SNVTType>"
    "<Length>2</Length><ConnectionIndex>0</ConnectionIndex></nviSpaceTemp>"
    "<nciSetpoint IsNC=\"1\"><Direction>Input</Direction><SISD>&amp;0</SISD>"
    "<SNVTType>SNVT_temp_p</SNVTType><Length>2</Length><ConnectionIndex>5</ConnectionIndex>"
    "<RawValue>0A28</RawValue><Value>26.00</Value></nciSetpoint>"
    "</NVs><CPs>"
    "<cpOffset><SISD>&amp;1</SISD><SNVTType>SNVT_temp_p</SNVTType><Length>2</Length>"
    "<ConnectionIndex>12</ConnectionIndex><RawValue>0A28</RawValue><Value>26.00</Value></cpOffset>"
    "</CPs></Profile></Configuration>\n";

TEST_F(CProfileTest, NewProfileIsEmpty) {
    EXPECT_EQ(Text(&_CProfile::get_ProgramID) + Text(&_CProfile::get_Name) +
                  Text(&_CProfile::get_DeviceID) + Text(&_CProfile::get_CustomerID) +
                  Text(&_CProfile::get_FWVersion) + Text(&_CProfile::get_UserCPFile) +
                  Text(&_CProfile::get_FileTypeIIVersion) + Text(&_CProfile::get_CompleteCDB) +
                  Text(&_CProfile::get_CPValues),
              L"");
    EXPECT_EQ(NVs() + CPs(), L"nonenone");
    EXPECT_EQ(profile->ErrorRecord().number, S_OK);
}

TEST_F(CProfileTest, TextsOfAFileAsWrittenAreRead) {
    Load(kExample);
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"9FFFFF0512040410");
    EXPECT_EQ(Text(&_CProfile::get_FWVersion), L"2.10");
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"0104");
    EXPECT_EQ(Text(&_CProfile::get_CustomerID), L"002A");
    EXPECT_EQ(Text(&_CProfile::get_CompleteCDB), L"0A1B2C3D");
    EXPECT_EQ(Text(&_CProfile::get_UserCPFile), L"");
    EXPECT_EQ(Text(&_CProfile::get_Name), L"");
    EXPECT_EQ(Text(&_CProfile::get_FileTypeIIVersion), L"");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"0A28");
}

TEST_F(CProfileTest, RecordsOfAFileAsWrittenAreRead) {
    Load(kExample);
    ASSERT_EQ(NVs(), L"nviSpaceTemp nciSetpoint ");
    const RecordText& input = profile->NVs()->All()[0]->Record();
    EXPECT_EQ(input.direction, 0);
    EXPECT_EQ(input.connectionIndex, 0);
    EXPECT_FALSE(input.isNC);
    EXPECT_EQ(input.rawValue, L"");
    const RecordText& setpoint = profile->NVs()->All()[1]->Record();
    EXPECT_TRUE(setpoint.isNC);
    EXPECT_EQ(setpoint.connectionIndex, 5);
    EXPECT_EQ(setpoint.rawValue, L"0A28");
    EXPECT_EQ(setpoint.snvtType, L"SNVT_temp_p");
    ASSERT_EQ(CPs(), L"cpOffset ");
    EXPECT_EQ(profile->CPs()->All()[0]->Record().connectionIndex, 12);
}

TEST_F(CProfileTest, ListsAreHandedOutAsTheOnesKept) {
    Load(kExample);
    Ptr<_CNVs> nvs;
    Ptr<_CCPs> cps;
    EXPECT_EQ(profile->get_NVs(nvs.Out()), S_OK);
    EXPECT_EQ(profile->get_CPs(cps.Out()), S_OK);
    EXPECT_EQ(nvs.Get(), profile->NVs().Get());
    EXPECT_EQ(cps.Get(), profile->CPs().Get());
    EXPECT_EQ(profile->get_NVs(nullptr), E_POINTER);
    EXPECT_EQ(profile->get_CPs(nullptr), E_POINTER);
}

TEST_F(CProfileTest, FileOfAnotherToolBringsNameAndFileType) {
    Load(test::FileParts{.profile = "<Name>Room</Name><FileTypeIIVersion>2</FileTypeIIVersion>"
                                    "<UserCPFile>x.cps</UserCPFile>"});
    EXPECT_EQ(Text(&_CProfile::get_Name), L"Room");
    EXPECT_EQ(Text(&_CProfile::get_FileTypeIIVersion), L"2");
    EXPECT_EQ(Text(&_CProfile::get_UserCPFile), L"x.cps");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"");
}

TEST_F(CProfileTest, ShorterHeaderGivesShorterCodes) {
    Load(test::FileParts{.exported = "<Header>00000000</Header>"});
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"");
    EXPECT_EQ(Text(&_CProfile::get_CustomerID), L"");
    Load(test::FileParts{.exported = "<Header>0000000001</Header>"});
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"01");
    EXPECT_EQ(Text(&_CProfile::get_CustomerID), L"");
    Load(test::FileParts{.exported = "<Header>00000000010400</Header>"});
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"0104");
    EXPECT_EQ(Text(&_CProfile::get_CustomerID), L"00");
    Load(test::FileParts{.exported = "<Header>000000000104002AFFFF</Header>"});
    EXPECT_EQ(Text(&_CProfile::get_CustomerID), L"002A");
}

TEST_F(CProfileTest, FirmwareVersionLosesItsFirstCharacterWhateverItIs) {
    Load(test::FileParts{.firmwareVersion = "<FWVersion>2.10</FWVersion>"});
    EXPECT_EQ(Text(&_CProfile::get_FWVersion), L".10");
    Load(test::FileParts{.firmwareVersion = "<FWVersion>V</FWVersion>"});
    EXPECT_EQ(Text(&_CProfile::get_FWVersion), L"");
}

TEST_F(CProfileTest, MissingElementsLeaveTheirFieldsEmpty) {
    Load("<Configuration/>");
    EXPECT_EQ(Text(&_CProfile::get_FWVersion), L"");
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"");
    Ptr<_CNVs> nvs;
    EXPECT_EQ(profile->get_NVs(nvs.Out()), S_OK);
    EXPECT_FALSE(nvs);
    EXPECT_EQ(NVs() + CPs(), L"nonenone");
}

TEST_F(CProfileTest, AnyOtherDocumentLoadsAndHoldsNothing) {
    Load("<html><body>hello</body></html>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"");
}

TEST_F(CProfileTest, EmptyListElementsMakeNoLists) {
    Load(test::FileParts{.lists = "<NVs/><CPs><!-- none --></CPs>"});
    EXPECT_EQ(NVs() + CPs(), L"nonenone");
}

TEST_F(CProfileTest, PathElementsMatchTheirLetterCaseExactly) {
    Load("<configuration><Profile><ProgramID>1</ProgramID></Profile></configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"");
    Load(
        "<Configuration><Profile><programid>1</programid><nvs><a/></nvs></Profile>"
        "</Configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"");
    EXPECT_EQ(NVs(), L"none");
}

TEST_F(CProfileTest, ElementsAreFoundAtAnyDepthByTheirPath) {
    Load(
        "<Root><Configuration><Profile/></Configuration><x><Configuration><Profile>"
        "<ProgramID>deep</ProgramID><NVs><a/></NVs></Profile></Configuration></x></Root>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"deep");
    EXPECT_EQ(NVs(), L"a ");
}

TEST_F(CProfileTest, FirstMatchInDocumentOrderCounts) {
    Load(
        "<Configuration><Profile><ProgramID>1</ProgramID><ProgramID>2</ProgramID></Profile>"
        "<Profile><ProgramID>3</ProgramID></Profile></Configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"1");
    Load(
        "<Configuration><Configuration><Profile><ProgramID>inner</ProgramID></Profile>"
        "</Configuration><Profile><ProgramID>outer</ProgramID></Profile></Configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"inner");
}

TEST_F(CProfileTest, PathWithAStepInBetweenIsNoMatch) {
    Load("<Configuration><x><Profile><ProgramID>1</ProgramID></Profile></x></Configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"");
}

TEST_F(CProfileTest, TextIsTheFirstChildsValueWhateverFollows) {
    Load(test::FileParts{.profile = "<ProgramID><!--c-->9F</ProgramID>"
                                    "<Name><![CDATA[a<b]]>c</Name>"
                                    "<UserCPFile><b/>x</UserCPFile>"});
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"c");
    EXPECT_EQ(Text(&_CProfile::get_Name), L"a<b");
    EXPECT_EQ(Text(&_CProfile::get_UserCPFile), L"");
}

TEST_F(CProfileTest, CommentsAmongTheRecordsAreSkippedAndInstructionsAreNot) {
    Load(test::FileParts{.lists = "<NVs><!--x--><a/><?pi data?><!--y--><b/></NVs>"
                                  "<CPs><?pi data?></CPs>"});
    EXPECT_EQ(NVs(), L"a pi b ");
    const RecordText& empty = profile->NVs()->All()[1]->Record();
    EXPECT_EQ(empty.rawValue, L"");
    EXPECT_EQ(empty.connectionIndex, 0);
    EXPECT_EQ(CPs(), L"pi ");
}

TEST_F(CProfileTest, RecordNamesLoseTheirPrefix) {
    Load(test::FileParts{.lists = "<NVs xmlns:p=\"urn:p\"><p:a/></NVs>"});
    EXPECT_EQ(NVs(), L"a ");
}

TEST_F(CProfileTest, ValuesOfAllPropertiesAreJoinedInOrder) {
    Load(test::FileParts{.lists = "<CPs><a><RawValue>01</RawValue></a>"
                                  "<b><RawValue>0203</RawValue></b>"
                                  "<c><Length>1</Length><RawValue></RawValue></c></CPs>"});
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"010203FF");
}

TEST_F(CProfileTest, CharactersOfEveryLanguageComeThrough) {
    Load(test::FileParts{.profile = "<ProgramID>\xC3\xA9\xD0\x96</ProgramID>",
                         .lists = "<NVs><t\xC3\xA9mp/></NVs>"});
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"\x00E9\x0416");
    EXPECT_EQ(NVs(), L"t\x00E9mp ");
}

TEST_F(CProfileTest, WideFileLoads) {
    const std::string narrow = FileText({});
    std::wstring wide = L"\xFEFF";
    wide.append(narrow.begin(), narrow.end());
    Load(std::string_view(reinterpret_cast<const char*>(wide.data()),
                          wide.size() * sizeof(wchar_t)));
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"0104");
}

TEST_F(CProfileTest, SecondLoadReadsTheTextsAgainAndKeepsTheFirstLists) {
    Load(kExample);
    Load(test::FileParts{.firmwareVersion = "<FWVersion>V3.00</FWVersion>",
                         .profile = "<Name>second</Name>",
                         .lists = "<NVs><other/></NVs><CPs><other/></CPs>"});
    EXPECT_EQ(Text(&_CProfile::get_FWVersion), L"3.00");
    EXPECT_EQ(Text(&_CProfile::get_Name), L"second");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"9FFFFF0512040410") << "a missing one stays";
    EXPECT_EQ(NVs(), L"nviSpaceTemp nciSetpoint ");
    EXPECT_EQ(CPs(), L"cpOffset ");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"0A28");
}

TEST_F(CProfileTest, SecondLoadReadsAListThatTheFirstFileDidNotHave) {
    Load(test::FileParts{.lists = "<NVs><a/></NVs>"});
    Load(test::FileParts{.lists = "<NVs><x/></NVs><CPs><b/></CPs>"});
    EXPECT_EQ(NVs() + CPs(), L"a b ");
}

TEST_F(CProfileTest, CatalogueIsAskedForEachListAndGivenToEachRecord) {
    device = com::Make<test::StandInDevice>(test::NewProbeDispatch());
    Load(kExample);
    EXPECT_EQ(device->asked, 2);
    device.Reset();
    EXPECT_EQ(test::g_probes, 2) << "the profile keeps the device, the records their catalogue";
    profile.Reset();
    EXPECT_EQ(test::g_probes, 0);
}

TEST_F(CProfileTest, FailingCatalogueEndsItsListSilentlyAndTheLoadSucceeds) {
    device->failsAt = 1;
    Load(kExample);
    EXPECT_EQ(NVs(), L"none");
    EXPECT_EQ(CPs(), L"cpOffset ");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"0A28");
    profile = com::Make<CProfile>();
    device->failsAt = 4;
    Load(kExample);
    EXPECT_EQ(NVs(), L"nviSpaceTemp nciSetpoint ");
    EXPECT_EQ(CPs(), L"none");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"");
}

TEST_F(CProfileTest, ListsOfALoadThatLackedMemoryAreReadAgain) {
    const std::wstring file = folder.Write(L"a.app", test::FileText({.lists = kTwoLists}));
    device->shortAt = 2;
    EXPECT_THROW(profile->FriendSet(file, device.Get()), std::bad_alloc);
    EXPECT_EQ(NVs() + CPs(), L"nonenone") << "they may lack something";
    EXPECT_TRUE(profile->FriendSet(file, device.Get()));
    EXPECT_EQ(NVs() + CPs(), L"a b ");
}

TEST_F(CProfileTest, ListsOfAnEarlierLoadStayWhenALaterOneLacksMemory) {
    const std::wstring file = folder.Write(L"a.app", test::FileText({.lists = kTwoLists}));
    EXPECT_TRUE(profile->FriendSet(file, device.Get()));
    device->shortAt = 3;
    EXPECT_THROW(profile->FriendSet(file, device.Get()), std::bad_alloc);
    EXPECT_EQ(NVs() + CPs(), L"a b ");
}

TEST_F(CProfileTest, WhiteSpaceBetweenPointsMakesNoRecords) {
    Load(test::FileParts{.lists = "<NVs>\r\n  <a/>\r\n  <b/>\r\n</NVs>\n<CPs>\n<c>\n"
                                  "<RawValue>01</RawValue>\n</c>\n</CPs>"});
    EXPECT_EQ(NVs() + CPs(), L"a b c ");
    EXPECT_EQ(Text(&_CProfile::get_CPValues), L"01");
}

TEST_F(CProfileTest, WithoutADeviceTheTextsAreReadAndTheListsAreNot) {
    device.Reset();
    Load(kExample);
    EXPECT_EQ(Text(&_CProfile::get_DeviceID), L"0104");
    EXPECT_EQ(NVs() + CPs(), L"nonenone");
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(profile->FriendSet(com::Bstr(folder / L"a.app").Get(), nullptr, &loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_TRUE);
}

TEST_F(CProfileTest, NullTargetIsRefused) {
    EXPECT_EQ(profile->FriendSet(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(profile->get_FWVersion(nullptr), E_POINTER);
}

}  // namespace
}  // namespace quillon
