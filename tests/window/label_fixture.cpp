#include "window/label_fixture.h"

#include "plugin/clock.h"

namespace quillon::test {

void LabelTest::TearDown() {
    SetToday(std::nullopt);
    WindowTest::TearDown();
    DeleteFileW(InFolder(Wide(TemplateName())).c_str());
}

void LabelTest::WriteLabelSettings(const std::string& sections) {
    WriteSettings(UsualSettings() + sections);
}

LabelTest::Window LabelTest::OpenWith(const std::string& sections) {
    WriteLabelSettings(sections);
    return Open();
}

std::string LabelTest::OneModel(const std::string& port, const std::string& line) const {
    return "[Nimbra Codes]\r\n0Model=KX-1\r\n[Label Printer]\r\n0Model=" + TemplateName() +
           "\r\nCOMPort=" + port + "\r\nCOMSettings=" + line + "\r\n";
}

void LabelTest::WriteTemplate(const std::string& bytes) {
    WriteBytes(InFolder(Wide(TemplateName())), bytes);
}

Lines LabelTest::Models(const frmVantor& window) {
    return ListBoxEntries(PageItem(window, kTabLabelPrint, IDC_NIMBRA_MODEL_LIST));
}

std::wstring LabelTest::FileCaption(const frmVantor& window) {
    return PageText(window, kTabLabelPrint, IDC_LABELFILENAME);
}

std::wstring LabelTest::PortCaption(const frmVantor& window) {
    return PageText(window, kTabLabelPrint, IDC_LABELCOMSETTINGS);
}

bool LabelTest::CanPrint(const frmVantor& window) {
    return IsWindowEnabled(PageItem(window, kTabLabelPrint, IDC_NIMBRA_PRINTBUTTON)) != FALSE;
}

void LabelTest::ChooseModel(const frmVantor& window, int model) {
    const HWND list = PageItem(window, kTabLabelPrint, IDC_NIMBRA_MODEL_LIST);
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(model), 0);
    SendMessageW(window.PageWindow(kTabLabelPrint), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(IDC_NIMBRA_MODEL_LIST, LBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(list));
}

void LabelTest::PressPrint(const frmVantor& window) {
    SendMessageW(PageItem(window, kTabLabelPrint, IDC_NIMBRA_PRINTBUTTON), BM_CLICK, 0, 0);
}

void LabelTest::ExpectFailureShown() {
    ASSERT_FALSE(Boxes().Seen().empty());
    const Box& box = Boxes().Seen().back();
    EXPECT_EQ(box.icon, Icon::kExclamation);
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    EXPECT_FALSE(box.text.empty());
    EXPECT_EQ(box.title, L"Quillon");
}

}  // namespace quillon::test
