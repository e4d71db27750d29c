// Damaged parameter files, chosen from in the dialog of the menu.
#include <algorithm>
#include <set>

#include "damage/damage_test.h"
#include "fault/device_window.h"
#include "fault/stand_ins.h"
#include "model/frmCPDownload_ids.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {
namespace {

enum class Choice { kAsOffered, kAll, kNone, kCancel };

// What the next dialog is answered with, once it is shown.
Choice g_choice = Choice::kAsOffered;
bool g_seen = false;

void SelectAll(HWND form, bool select) {
    const HWND lines = ControlOf(form, IDC_LSTCP_CHOICE);
    SendMessageW(lines, LB_SETSEL, select ? TRUE : FALSE, -1);
    SendMessageW(form, WM_COMMAND, static_cast<WPARAM>(MAKELONG(IDC_LSTCP_CHOICE, LBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(lines));
}

void CALLBACK AnswerForm(HWND, UINT, UINT_PTR, DWORD) {
    const HWND form = ShownWindow(L"Parameter download");
    if (!form || g_seen) return;
    g_seen = true;
    if (g_choice == Choice::kAll || g_choice == Choice::kNone)
        SelectAll(form, g_choice == Choice::kAll);
    PressButton(GetDlgItem(form, g_choice == Choice::kCancel ? IDCANCEL : IDOK));
}

// The values of a parameter file's entries. Those with bytes that are no ASCII are left out, and
// those with "?", which stands for a character that the code page does not have: reading and
// writing may take them for different characters.
std::set<std::string> ValuesIn(const std::string& file) {
    std::set<std::string> values;
    const std::string key = "\nValue=";
    for (std::size_t at = file.find(key); at != std::string::npos; at = file.find(key, at + 1)) {
        const std::size_t begin = at + key.size();
        const std::string value = file.substr(begin, file.find('\r', begin) - begin);
        const auto isAscii = [](char one) { return one >= ' ' && one <= '~' && one != '?'; };
        if (std::ranges::all_of(value, isAscii)) values.insert(value);
    }
    return values;
}

class DamagedParameters : public DamageTest {
protected:
    void SetUp() override {
        DamageTest::SetUp();
        WriteSettings("DisplayHW=1");
        StandInForSystem(Module());
        ChooseFile(InFolder(L"in.cps"));
        const Room& room = FreshRoom();
        long result = -1;
        EXPECT_EQ(room.device->ParameterExport(com::Bstr(InFolder(L"out.cps")).Get(), &result),
                  S_OK);
        EXPECT_EQ(result, 0);
        m_exported = ReadBytes(InFolder(L"out.cps"));
        m_window = OpenWindow(room);
        m_timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, AnswerForm);
    }
    void TearDown() override {
        KillTimer(nullptr, m_timer);
        DropRoom();
        DamageTest::TearDown();
    }

    std::string Take(const std::string& bytes, Random& random) override {
        const Choice kChoices[] = {Choice::kAsOffered, Choice::kAsOffered, Choice::kAll,
                                   Choice::kAll,       Choice::kNone,      Choice::kCancel};
        return Judge(bytes, random.Pick(kChoices));
    }
    void ExpectGoodWorks() override {
        EXPECT_EQ(Judge(m_exported, Choice::kAsOffered), "taken");
        EXPECT_EQ(m_written, 10) << "four variables and six properties";
    }
    const std::string& Exported() const { return m_exported; }

private:
    std::string Judge(const std::string& bytes, Choice choice) {
        WriteBytes(InFolder(L"in.cps"), bytes);
        g_choice = choice;
        g_seen = false;
        Host().Clear();
        ChooseCommand(m_window, IDM_PARAM_DOWNLOAD);
        EXPECT_TRUE(g_seen) << "no dialog came up";
        EXPECT_TRUE(NewBoxes().empty());
        EXPECT_TRUE(IsWindowEnabled(m_window)) << "usable again";
        m_written = Host().WrittenCount();
        const long downloads = Host().Count(L"IDevice.ParameterDownload");
        if (choice == Choice::kCancel) {
            EXPECT_EQ(downloads + m_written, 0) << "cancelled, and still written";
            return "cancelled";
        }
        EXPECT_EQ(downloads, 1);
        const std::string chosen = ReadBytes(InFolder(L"temp.cps"));
        ExpectFromFile(chosen, bytes);
        if (m_written > 0) return "taken";
        return chosen.find("\nValue=") == std::string::npos ? "nothing chosen"
                                                            : "refused by the host";
    }

    static void ExpectFromFile(const std::string& chosen, std::string bytes) {
        std::erase(bytes, '\0');
        for (const std::string& value : ValuesIn(chosen))
            EXPECT_NE(bytes.find(value), std::string::npos) << "not in the file: " << value;
    }

    HWND m_window = nullptr;
    UINT_PTR m_timer = 0;
    std::string m_exported;
    long m_written = 0;
};

TEST_F(DamagedParameters, OfferWhatIsIntactAndNothingElse) {
    RunAll(FileKind::kParameters, {Exported(), Exported(), Example("room-unit.cps")});
}

}  // namespace
}  // namespace quillon::test
