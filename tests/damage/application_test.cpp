// Damaged application files, downloaded by the member that a host calls.
#include <algorithm>
#include <map>
#include <set>

#include "com/xml_document.h"
#include "damage/damage_test.h"
#include "support/host_app_file.h"

namespace quillon::test {
namespace {

constexpr long kIdentity = -6;
constexpr long kObjects = -2;

const std::map<std::wstring, const char*> kReports{
    {L"00000000", "taken"},
    {L"80040320", "refused: other firmware"},
    {L"80040321", "refused: other program"},
    {L"80040322", "refused: other customer"},
    {L"80040323", "refused: other device"},
    {L"80040325", "refused: not readable, or no objects"},
    {L"8004032B", "stopped: the device refuses the objects"},
    {L"8004032F", "stopped: the device refuses a value, or the setting is none"},
};

// The texts of a document that can be read; nothing of one that cannot. Not by recursion: a
// document can be as deep as it likes.
std::set<std::wstring> TextsOf(const std::wstring& path) {
    std::set<std::wstring> texts;
    const auto document = com::NewXmlDocument();
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    if (!com::LoadXmlFile(document.Get(), path).loaded) return texts;
    com::Ptr<IXMLDOMNode> node = document.As<IXMLDOMNode>();
    while (node) {
        com::Variant value;
        if (node->get_nodeValue(value.Out()) == S_OK && value.vt == VT_BSTR)
            texts.insert(com::Text(value.bstrVal));
        com::Ptr<IXMLDOMNode> next;
        node->get_firstChild(next.Out());
        while (!next && node) {
            node->get_nextSibling(next.Out());
            if (next) break;
            com::Ptr<IXMLDOMNode> parent;
            node->get_parentNode(parent.Out());
            node = std::move(parent);
        }
        node = std::move(next);
    }
    return texts;
}

// Whether a text is one of the pieces after the other; the value of a point that the file leaves
// empty is all ones.
bool IsMadeOf(const std::wstring& text, std::set<std::wstring> pieces) {
    pieces.insert(L"FF");
    pieces.erase(L"");
    std::vector<bool> reached(text.size() + 1, false);
    reached[0] = true;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!reached[at]) continue;
        for (const std::wstring& piece : pieces)
            if (text.compare(at, piece.size(), piece) == 0) reached[at + piece.size()] = true;
    }
    return reached[text.size()];
}

// What stands between the quotation marks of a call's last argument, as the log gives it.
std::wstring ArgumentOf(const std::wstring& line) {
    const std::size_t begin = line.find(L'"') + 1;
    const std::size_t end = line.rfind(L'"');
    std::wstring text;
    for (std::size_t i = begin; i < end && begin != 0; ++i) {
        if (line[i] != L'\\') {
            text += line[i];
            continue;
        }
        ++i;
        text += line[i] == L'n' ? L'\n' : line[i] == L'r' ? L'\r' : line[i];
    }
    return text;
}

class DamagedApplications : public DamageTest {
protected:
    std::string Take(const std::string& bytes, Random& random) override {
        const char* const kValues[] = {"1", "1", "1", "0", "", "one"};
        m_answer = random.OneIn(3) ? IDNO : IDYES;
        return Judge(bytes, std::string("DownLoadCPs=") + random.Pick(kValues) +
                                "\r\nForceCustomerID=" + (random.OneIn(2) ? "yes" : ""));
    }

    void ExpectGoodWorks() override {
        EXPECT_EQ(Judge(AppFile().Text(), "DownLoadCPs=1"), "taken");
        EXPECT_EQ(m_written.size(), 3u) << "objects, properties and one variable";
    }

    std::string Exported() {
        const Room& room = FreshRoom();
        Export(room, InFolder(L"out.app"));
        DropRoom();
        return ReadBytes(InFolder(L"out.app"));
    }

private:
    std::string Judge(const std::string& bytes, const std::string& settings) {
        const std::wstring path = InFolder(L"in.app");
        WriteBytes(path, bytes);
        WriteSettings(settings);
        Boxes().AnswerBy([this](const Box& box) { return ButtonFor(box); });
        {
            const Room& room = FreshRoom();
            m_identityBefore = EntryText(kIdentity);
            m_objectsBefore = EntryText(kObjects);
            Host().Clear();
            Download(room, path);
        }
        const Lines changes = Changes(Host().Log());
        const Lines reports = Host().Reports();
        EXPECT_EQ(reports.size(), 1u) << "one report, whatever comes";
        const std::wstring code = reports.empty() ? L"" : reports[0].substr(0, 8);
        JudgeWritten(code, changes, path);
        DropRoom();
        EXPECT_EQ(NewBoxes().size(), m_boxes) << "only boxes that a download has";
        m_boxes = 0;
        const auto known = kReports.find(code);
        EXPECT_NE(known, kReports.end()) << Narrow(code);
        return known == kReports.end() ? "unknown report" : known->second;
    }

    int ButtonFor(const Box& box) {
        ++m_boxes;
        if (box.text.starts_with(L"Bad Application file: ")) return IDOK;
        if (box.text == L"Error: multiple connection index!") return IDOK;
        if (box.buttons == std::vector<int>{IDYES, IDNO}) return m_answer;
        --m_boxes;
        return 0;
    }

    void JudgeWritten(const std::wstring& code, const Lines& changes, const std::wstring& path) {
        const std::set<std::wstring> texts = TextsOf(path);
        m_written.clear();
        for (const std::wstring& line : changes)
            if (line.find(L".put(") != std::wstring::npos) m_written.push_back(ArgumentOf(line));
        for (const std::wstring& text : m_written)
            EXPECT_TRUE(IsMadeOf(text, texts) || IsIdentity(text, texts))
                << "written and not in the file: " << Narrow(text.substr(0, 200));
        const bool taken = code == L"00000000";
        const bool begun = taken || code == L"8004032F";
        if (code == L"80040320" || code == L"80040323" || code == L"80040325") {
            EXPECT_EQ(m_written, Lines()) << "a refused file writes nothing";
        }
        if (!begun) {
            EXPECT_EQ(EntryText(kObjects), m_objectsBefore) << "refused, and still written";
            EXPECT_LE(m_written.size(), 3u) << "the identity twice, the objects that are refused";
        }
        EXPECT_EQ(std::ranges::count(changes, L"IDevice.GoOnLine()"), taken ? 1 : 0);
    }

    // Device code and customer code, of the file's header or the device's own.
    bool IsIdentity(const std::wstring& text, const std::set<std::wstring>& texts) const {
        if (text.size() > 8 || text.size() < 4) return false;
        const std::wstring customer = text.substr(4);
        if (customer == m_identityBefore.substr(4)) return true;
        return std::ranges::any_of(texts, [&](const std::wstring& header) {
            return header.size() >= 12 && header.substr(12, 4) == customer;
        });
    }

    int m_answer = IDYES;
    std::size_t m_boxes = 0;
    Lines m_written;
    std::wstring m_identityBefore;
    std::wstring m_objectsBefore;
};

TEST_F(DamagedApplications, AreRefusedOrTakenAsFarAsTheyAreIntact) {
    RunAll(FileKind::kApplication, {AppFile().Text(), Exported(), Example("room101.app")});
}

}  // namespace
}  // namespace quillon::test
