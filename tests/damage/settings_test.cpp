// Damaged settings files, met by the device window.
#include "com/platform.h"
//
#include <commctrl.h>

#include "damage/damage_test.h"
#include "fault/device_window.h"
#include "fault/stand_ins.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {
namespace {

const wchar_t* const kTabs[] = {L"Hw",           L"Test",   L"Setup",       L"Tune",
                                L"General Data", L"Nimbra", L"Label Print", L"Calibration"};
constexpr int kShownTexts[] = {IDC_LABELCOMSETTINGS, IDC_LABELFILENAME, IDC_LBLCOUNTS,
                               IDC_LBLPROGRAMID, IDC_LBLFWID};

class DamagedSettings : public DamageTest {
protected:
    void SetUp() override {
        DamageTest::SetUp();
        StandInForSystem(Module());
        WriteBytes(InFolder(L"room-unit.zpl"), Example("room-unit.zpl"));
    }

    std::string Take(const std::string& bytes, Random&) override {
        Shown(bytes);
        if (m_told) return "window shown; told that a setting is no good";
        return m_shown == m_good ? "window shown as ever" : "window shown with what is left";
    }
    void ExpectGoodWorks() override {
        const std::wstring shown = Shown(Good());
        EXPECT_FALSE(m_told);
        if (m_good.empty()) m_good = shown;
        EXPECT_EQ(shown, m_good);
    }
    static std::string Good() { return Example("9FFFFF0512040410.ini"); }

private:
    // Opens the window with the settings, goes through all that reads them, and gives what it
    // shows.
    std::wstring Shown(const std::string& bytes) {
        WriteBytes(InFolder(Wide(kSmallProgramId) + L".ini"), bytes);
        Boxes().AnswerBy([](const Box& box) {
            return box.text == L"Etichetta stampata" || box.icon == Icon::kExclamation ? IDOK : 0;
        });
        const Room& room = FreshRoom();
        VARIANT_BOOL available = VARIANT_FALSE;
        com::Bstr code;
        EXPECT_EQ(room.ex->get_ApplDownloadAvailable(&available), S_OK);
        EXPECT_EQ(room.ex->get_ApplicationCode(code.Out()), S_OK);
        const HWND window = OpenWindow(room);
        m_shown = std::to_wstring(available) + L" " + code.Text();
        for (const wchar_t* tab : kTabs) {
            SelectTab(window, tab);
            for (int timer = 1; timer <= 5; ++timer) TickTimer(window, static_cast<Timer>(timer));
        }
        PressKey(window, VK_F5);
        PrintFirstLabel(window);
        Note(window);
        EXPECT_EQ(Changes(Host().Log()), Lines()) << "settings write nothing to the device";
        DropRoom();
        m_told = false;
        for (const Box& box : NewBoxes()) m_told = m_told || box.icon == Icon::kExclamation;
        ForgetPrinted();
        return m_shown;
    }

    void Note(HWND window) {
        m_shown += L" tabs " + std::to_wstring(TabCtrl_GetItemCount(ControlOf(window, IDC_SSTAB1)));
        for (const int list : {IDC_LVMONITOR, IDC_LVADVANCEDCPS, IDC_LVCPS, IDC_LVCOV})
            m_shown += L" rows " + std::to_wstring(ListView_GetItemCount(ControlOf(window, list)));
        for (int label = IDC_LBLNV_FIRST; label <= IDC_LBLNV_LAST; ++label)
            m_shown += L" | " + WindowText(ControlOf(window, label));
        for (const int label : kShownTexts)
            m_shown += L" | " + WindowText(ControlOf(window, label));
    }

    std::wstring m_shown;
    std::wstring m_good;
    bool m_told = false;
};

TEST_F(DamagedSettings, LeaveAWindowThatWorks) {
    RunAll(FileKind::kSettings, {Good(), Good(), Example("9FFFFF0512040522.ini")});
}

}  // namespace
}  // namespace quillon::test
