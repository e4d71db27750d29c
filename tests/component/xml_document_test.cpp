#include "com/xml_document.h"

#include <windows.h>

#include <psapi.h>

#include "com/error.h"
#include "com/text.h"
#include "support/component_fixture.h"
#include "support/temp_folder.h"
#include "support/xml_elements.h"

namespace quillon {
namespace {

using com::Ptr;
using com::XmlLoad;

// The most memory that this process has held so far, in bytes.
SIZE_T PeakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
    return counters.PeakWorkingSetSize;
}

class XmlDocumentTest : public test::ComponentTest {
protected:
    XmlLoad Load(const std::wstring& path) const { return com::LoadXmlFile(document.Get(), path); }
    // A refused file gives its reason in words.
    void ExpectRefused(const std::wstring& path) const {
        const XmlLoad outcome = Load(path);
        EXPECT_FALSE(outcome.loaded) << testing::PrintToString(path);
        EXPECT_NE(outcome.reason, L"") << testing::PrintToString(path);
    }
    void ExpectRefused(std::string_view bytes) const { ExpectRefused(folder.Write(L"bad", bytes)); }

    std::wstring TextAt(const wchar_t* path) const {
        const Ptr<IXMLDOMNode> node = com::FindNode(document.Get(), path);
        return node ? com::FirstChildText(node.Get()).value_or(L"(no text)") : L"(no node)";
    }
    static HRESULT SaveResult(const Ptr<IXMLDOMDocument2>& what, const std::wstring& path) {
        try {
            com::SaveXmlFile(what.Get(), path);
            return S_OK;
        } catch (const com::Error& error) {
            return error.Result();
        }
    }
    Ptr<IXMLDOMDocument2> NewContent() const {
        const Ptr<IXMLDOMDocument2> made = com::NewXmlDocument();
        com::AppendText(made.Get(), made.Get(), L"a", L"new");
        return made;
    }

    test::TempFolder folder;
    Ptr<IXMLDOMDocument2> document = com::NewXmlDocument();
};

TEST_F(XmlDocumentTest, WellFormedFileLoads) {
    const XmlLoad outcome = Load(folder.Write(L"a.app", "<?xml version=\"1.0\"?><a><b>x</b></a>"));
    EXPECT_TRUE(outcome.loaded);
    EXPECT_EQ(outcome.reason, L"");
    EXPECT_EQ(TextAt(L"a/b"), L"x");
}

TEST_F(XmlDocumentTest, MissingFilesFoldersAndNamesAreRefused) {
    ExpectRefused(folder / L"none.app");
    ExpectRefused(folder / L"none\\none.app");
    ExpectRefused(folder.Path());
    ExpectRefused(std::wstring());
}

TEST_F(XmlDocumentTest, FileThatIsNotXmlIsRefused) {
    ExpectRefused("");
    ExpectRefused("no markup at all");
    ExpectRefused("<a><b></a>");
    ExpectRefused("<a>");
    ExpectRefused("<a/><b/>");
    ExpectRefused(
        std::string_view("\x7f"
                         "ELF\x02\x01\0\0\xff\xfe\x80",
                         11));
}

TEST_F(XmlDocumentTest, FileInAWrongEncodingIsRefused) {
    ExpectRefused("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xff\xfe\xe9</a>");
    ExpectRefused("<?xml version=\"1.0\" encoding=\"no-such-encoding\"?><a/>");
}

TEST_F(XmlDocumentTest, DocumentTypeIsRefused) {
    ExpectRefused("<!DOCTYPE a><a/>");
    ExpectRefused("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>");
    ExpectRefused("<!DOCTYPE a SYSTEM \"file:///c:/windows/win.ini\"><a/>");
}

TEST_F(XmlDocumentTest, EntityBombIsRefusedUnfolded) {
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
    for (int i = 1; i < 20; ++i) {
        bomb += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) bomb += "&e" + std::to_string(i - 1) + ";";
        bomb += "'>";
    }
    ExpectRefused(bomb + "]><a>&e19;</a>");
}

TEST_F(XmlDocumentTest, ExternalEntityNeverGetsIn) {
    folder.Write(L"secret.txt", "secret");
    ExpectRefused("<!DOCTYPE a [<!ENTITY e SYSTEM \"secret.txt\">]><a>&e;</a>");
}

TEST_F(XmlDocumentTest, AddressesAreNoFiles) {
    const std::wstring path = folder.Write(L"a.app", "<a/>");
    std::wstring slashes = path;
    for (wchar_t& character : slashes)
        if (character == L'\\') character = L'/';
    ExpectRefused(L"file:///" + slashes);
    ExpectRefused(L"file://" + slashes);
    ExpectRefused(std::wstring(L"http://127.0.0.1:9/a.app"));
    ExpectRefused(std::wstring(L"res://shell32.dll/1"));
}

TEST_F(XmlDocumentTest, PathIsTakenAsItStands) {
    for (const wchar_t* name :
         {L"a%20b.app", L"a#b.app", L"a b.app", L"a&b;c.app", L"\x0416.app"}) {
        EXPECT_TRUE(Load(folder.Write(name, "<a>x</a>")).loaded) << testing::PrintToString(name);
        EXPECT_EQ(TextAt(L"a"), L"x");
    }
    ExpectRefused(folder / L"a%20b%20.app");
}

TEST_F(XmlDocumentTest, FileTooLargeToBeHeldIsRefusedUnread) {
    const std::wstring path = folder.Write(L"large.app", "<a/>");
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    LARGE_INTEGER size;
    size.QuadPart = 300LL << 20;
    EXPECT_TRUE(SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && SetEndOfFile(file));
    CloseHandle(file);
    const SIZE_T before = PeakMemory();
    ExpectRefused(path);
    EXPECT_LT(PeakMemory() - before, 100u << 20);
}

TEST_F(XmlDocumentTest, FileThatAnotherHoldsIsRefused) {
    const std::wstring path = folder.Write(L"held.app", "<a/>");
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ExpectRefused(path);
    CloseHandle(file);
    EXPECT_TRUE(Load(path).loaded);
}

TEST_F(XmlDocumentTest, LoadedFileIsNotHeld) {
    const std::wstring path = folder.Write(L"a.app", "<a/>");
    EXPECT_TRUE(Load(path).loaded);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    ExpectRefused("<a>");
    EXPECT_TRUE(DeleteFileW((folder / L"bad").c_str()));
}

TEST_F(XmlDocumentTest, UnicodeFilesWithAMarkLoad) {
    const std::wstring text = L"\xFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\x00E9</a>";
    const std::string bytes(reinterpret_cast<const char*>(text.data()),
                            text.size() * sizeof(wchar_t));
    EXPECT_TRUE(Load(folder.Write(L"16.app", bytes)).loaded);
    EXPECT_EQ(TextAt(L"a"), L"\x00E9");
    EXPECT_TRUE(Load(folder.Write(L"8.app", "\xEF\xBB\xBF<a>\xC3\xA9</a>")).loaded);
    EXPECT_EQ(TextAt(L"a"), L"\x00E9");
}

TEST_F(XmlDocumentTest, SavedDocumentLoadsAgain) {
    for (const wchar_t* name : {L"s.app", L"s%20s.app", L"s#s.app", L"\x0416.app"}) {
        com::SaveXmlFile(NewContent().Get(), folder / name);
        EXPECT_TRUE(Load(folder / name).loaded) << testing::PrintToString(name);
        EXPECT_EQ(TextAt(L"a"), L"new");
    }
}

TEST_F(XmlDocumentTest, SavingReplacesTheOldFileAndLeavesNoOther) {
    const std::wstring path = folder.Write(L"a.app", std::string(10'000, 'x'));
    com::SaveXmlFile(NewContent().Get(), path);
    EXPECT_TRUE(Load(path).loaded);
    EXPECT_FALSE(test::FileExists(path + L".new"));
}

TEST_F(XmlDocumentTest, OldFileStaysWholeWhenItCannotBeReplaced) {
    const std::wstring path = folder.Write(L"a.app", "<old/>");
    const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(FAILED(SaveResult(NewContent(), path)));
    CloseHandle(held);
    EXPECT_EQ(test::ReadBytes(path), "<old/>");
    EXPECT_FALSE(test::FileExists(path + L".new"));
}

TEST_F(XmlDocumentTest, SavingWhereNoFileCanBeFails) {
    EXPECT_TRUE(FAILED(SaveResult(NewContent(), folder / L"none\\a.app")));
    EXPECT_TRUE(FAILED(SaveResult(NewContent(), L"")));
    EXPECT_TRUE(FAILED(SaveResult(NewContent(), folder.Path())));
    EXPECT_FALSE(test::FileExists(folder.Path() + L".new"));
}

TEST_F(XmlDocumentTest, FileBesideThatBelongsToAnotherStays) {
    const std::wstring other = folder.Write(L"a.app.new", "precious");
    com::SaveXmlFile(NewContent().Get(), folder / L"a.app");
    ASSERT_TRUE(test::FileExists(other));
    EXPECT_EQ(test::ReadBytes(other), "precious");
}

TEST_F(XmlDocumentTest, FirstNodeInDocumentOrderIsFound) {
    ASSERT_TRUE(Load(folder.Write(L"a", "<r><a><b>1</b></a><b>2</b></r>")).loaded);
    EXPECT_EQ(TextAt(L"descendant::b"), L"1");
    EXPECT_EQ(TextAt(L"r/b"), L"2");
    EXPECT_EQ(TextAt(L"r/c"), L"(no node)");
    EXPECT_EQ(TextAt(L"R/b"), L"(no node)");
}

TEST_F(XmlDocumentTest, FirstChildTextIsTheFirstChildsValueOfWhateverKind) {
    const auto textOf = [](const wchar_t* xml) {
        return com::FirstChildText(test::Element(xml).Get());
    };
    EXPECT_EQ(textOf(L"<a>x<b/>y</a>"), L"x");
    EXPECT_EQ(textOf(L"<a><!--c-->x</a>"), L"c");
    EXPECT_EQ(textOf(L"<a><![CDATA[<d>]]>x</a>"), L"<d>");
    EXPECT_EQ(textOf(L"<a><?p q?>x</a>"), L"q");
    EXPECT_EQ(textOf(L"<a><b>x</b></a>"), std::nullopt);
    EXPECT_EQ(textOf(L"<a/>"), std::nullopt);
}

TEST_F(XmlDocumentTest, LocalNameHasNoPrefix) {
    EXPECT_EQ(com::LocalName(test::Element(L"<p:a xmlns:p='urn:p'/>").Get()), L"a");
    EXPECT_EQ(com::LocalName(document.Get()), L"");
}

}  // namespace
}  // namespace quillon
