#include "com/late.h"
#include "com/module.h"
#include "component/profile_support.h"
#include "model/CProfile.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using test::FileText;

class BadFileTest : public test::ProfileTest {
protected:
    // Nothing of a file that was refused may be kept.
    void ExpectNothingRead() {
        EXPECT_EQ(Text(&_CProfile::get_ProgramID) + Text(&_CProfile::get_FWVersion) +
                      Text(&_CProfile::get_DeviceID) + Text(&_CProfile::get_CompleteCDB),
                  L"");
        EXPECT_EQ(NVs() + CPs(), L"nonenone");
        EXPECT_EQ(device->asked, 0);
    }
    void ExpectAllRefused(std::string_view bytes) {
        ExpectRefused(bytes);
        ExpectNothingRead();
    }
};

TEST_F(BadFileTest, MessageNamesTheFileAndShowsTheStopIcon) {
    const std::wstring path = folder / L"no such.app";
    ExpectRefused(path);
    ASSERT_EQ(boxes().Seen().size(), 1u);
    const test::Box& box = boxes().Seen().front();
    EXPECT_EQ(box.text, L"Bad Application file: " + path);
    EXPECT_EQ(box.title, L"Quillon");
    EXPECT_EQ(box.icon, test::Icon::kStop);
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
}

TEST_F(BadFileTest, RecordHoldsNumberSourceExcerptAndReason) {
    ExpectRefused("<Configuration><a></Configuration>");
    const CProfile::LastError& error = profile->ErrorRecord();
    EXPECT_EQ(error.number, static_cast<HRESULT>(0x80040215));
    EXPECT_EQ(error.source, com::ModuleName());
    const std::size_t mark = error.description.find(L'\r');
    ASSERT_NE(mark, std::wstring::npos);
    EXPECT_GT(error.description.size(), mark + 1) << "a reason in words";
    Ptr<IErrorInfo> record;
    ASSERT_EQ(GetErrorInfo(0, record.Out()), S_OK);
    Bstr source;
    Bstr description;
    record->GetSource(source.Out());
    record->GetDescription(description.Out());
    EXPECT_EQ(source.View(), error.source);
    EXPECT_EQ(description.View(), error.description);
}

TEST_F(BadFileTest, ReasonForAMissingFileIsTheSystemsOwn) {
    ExpectRefused(folder / L"none.app");
    EXPECT_EQ(profile->ErrorRecord().description.find(L'\r'), 0u) << "there is no excerpt";
    EXPECT_GT(profile->ErrorRecord().description.size(), 1u);
}

TEST_F(BadFileTest, ScriptGetsFalseAndNoException) {
    boxes().Answer(IDOK);
    const com::Variant loaded =
        com::Get(profile.As<IDispatch>().Get(), L"FriendSet",
                 {com::Variant(folder / L"none.app"), com::Variant(device.As<IDispatch>().Get())});
    EXPECT_EQ(loaded.vt, VT_BOOL);
    EXPECT_FALSE(loaded.AsBool());
}

TEST_F(BadFileTest, SuccessLeavesNoRecordBehind) {
    ExpectRefused(folder / L"none.app");
    Load(test::FileParts{});
    Ptr<IErrorInfo> record;
    EXPECT_EQ(GetErrorInfo(0, record.Out()), S_FALSE);
    EXPECT_EQ(profile->ErrorRecord().number, static_cast<HRESULT>(0x80040215))
        << "the last failure stays readable";
}

TEST_F(BadFileTest, RefusedFileLeavesFieldsAndListsOfTheFormerOne) {
    Load(test::FileParts{.lists = "<NVs><a/></NVs>"});
    ExpectRefused("<Configuration>");
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"9FFFFF0512040410");
    EXPECT_EQ(NVs(), L"a ");
}

TEST_F(BadFileTest, NamesThatAreNoFileAreRefused) {
    ExpectRefused(std::wstring());
    ExpectRefused(folder.Path());
    ExpectRefused(std::wstring(L"http://127.0.0.1:9/a.app"));
    ExpectNothingRead();
}

TEST_F(BadFileTest, TruncatedFileIsRefusedWhereverItEnds) {
    const std::string whole = FileText({.lists = "<NVs><a>x</a></NVs>"});
    for (std::size_t size = 0; size < whole.size(); size += 23) {
        SCOPED_TRACE(size);
        ExpectAllRefused(whole.substr(0, size));
    }
}

TEST_F(BadFileTest, EmptyAndBinaryFilesAreRefused) {
    ExpectAllRefused("");
    ExpectAllRefused(std::string(1000, '\0'));
    std::string bytes;
    for (int i = 0; i < 4096; ++i) bytes += static_cast<char>(i * 7);
    ExpectAllRefused(bytes);
}

TEST_F(BadFileTest, WronglyEncodedFileIsRefused) {
    ExpectAllRefused(FileText({.profile = "<ProgramID>\xE9\xFF</ProgramID>"}));
    std::string declared = FileText({});
    declared.replace(0, declared.find("?>"), "<?xml version=\"1.0\" encoding=\"UTF-16\"");
    ExpectAllRefused(declared);
}

TEST_F(BadFileTest, DocumentTypeAndEntityBombAreRefused) {
    ExpectAllRefused("<!DOCTYPE Configuration><Configuration/>");
    ExpectAllRefused(
        "<!DOCTYPE Configuration [<!ENTITY a 'xxxxxxxxxx'><!ENTITY b "
        "'&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'>"
        "<!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;'><!ENTITY e '&d;&d;&d;&d;&d;&d;&d;'>"
        "<!ENTITY f '&e;&e;&e;&e;&e;&e;&e;&e;'>]><Configuration><Profile><ProgramID>"
        "&f;&f;&f;&f;&f;&f;</ProgramID></Profile></Configuration>");
}

TEST_F(BadFileTest, DeeplyNestedFileIsRefused) {
    constexpr int kLevels = 100'000;
    std::string text;
    for (int i = 0; i < kLevels; ++i) text += "<a>";
    for (int i = 0; i < kLevels; ++i) text += "</a>";
    ExpectAllRefused(text);
}

TEST_F(BadFileTest, FiftyMegabytesOfNoiseAreRefused) {
    std::string bytes(50 << 20, '\x81');
    bytes.replace(0, 15, "<Configuration>");
    ExpectAllRefused(bytes);
}

TEST_F(BadFileTest, FiftyMegabytesOfElementsLoad) {
    std::string filler;
    for (int i = 0; i < 500; ++i) filler += "<x>" + std::string(100'000, 'y') + "</x>";
    Load(test::FileParts{.profile = filler + "<ProgramID>last</ProgramID>"});
    EXPECT_EQ(Text(&_CProfile::get_ProgramID), L"last");
}

TEST_F(BadFileTest, FileTooLargeForTheAddressSpaceIsRefused) {
    const std::wstring path = folder.Write(L"large.app", FileText({}));
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    LARGE_INTEGER size;
    size.QuadPart = 5LL << 30;
    EXPECT_TRUE(SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && SetEndOfFile(file));
    CloseHandle(file);
    ExpectRefused(path);
    ExpectNothingRead();
}

TEST_F(BadFileTest, FileThatAnotherHoldsIsRefusedAndLoadsLater) {
    const std::wstring path = folder.Write(L"held.app", FileText({}));
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ExpectRefused(path);
    CloseHandle(file);
    EXPECT_TRUE(LoadFile(path));
}

}  // namespace
}  // namespace quillon
