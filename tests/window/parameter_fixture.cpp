#include "window/parameter_fixture.h"

#include <utility>

namespace quillon::test {
namespace {

ParameterForm* g_expected = nullptr;

}  // namespace

HWND ShownParameterForm() {
    return ShownWindow(L"Parameter download");
}

ParameterForm::ParameterForm(std::function<void(HWND)> act) : m_act(std::move(act)) {
    g_expected = this;
    m_timer = SetTimer(nullptr, 0, 10, OnTimer);
}

ParameterForm::~ParameterForm() {
    KillTimer(nullptr, m_timer);
    g_expected = nullptr;
    EXPECT_TRUE(m_seen) << "no parameter dialog came up";
}

void CALLBACK ParameterForm::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND form = ShownParameterForm();
    if (!form || !g_expected) return;
    KillTimer(nullptr, timer);
    g_expected->m_seen = true;
    g_expected->m_act(form);
}

std::vector<int> Selected(HWND list) {
    std::vector<int> lines;
    const auto count = static_cast<int>(SendMessageW(list, LB_GETCOUNT, 0, 0));
    for (int line = 0; line < count; ++line)
        if (SendMessageW(list, LB_GETSEL, static_cast<WPARAM>(line), 0) > 0) lines.push_back(line);
    return lines;
}

void Click(HWND list, int line) {
    RECT place{};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 3, place.top + 3);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(list, WM_LBUTTONUP, 0, point);
}

void PressOk(HWND form) {
    SendMessageW(GetDlgItem(form, IDOK), BM_CLICK, 0, 0);
}

void PressCancel(HWND form) {
    SendMessageW(GetDlgItem(form, IDCANCEL), BM_CLICK, 0, 0);
}

void ParameterTest::SetUp() {
    WindowTest::SetUp();
    m_source = InFolder(Wide(ProgramId()) + L".cps");
    WarmUpFileDialogs(InFolder(L"warm-up.app"));
    static bool s_shown = false;
    if (!std::exchange(s_shown, true)) ShowForm(PressCancel);
    CountAgain();
}

void ParameterTest::TearDown() {
    DeleteFileW(m_source.c_str());
    DeleteFileW(Temporary().c_str());
    WindowTest::TearDown();
}

std::wstring ParameterTest::ShowForm(std::function<void(HWND)> act) {
    const ParameterForm expected(std::move(act));
    frmCPDownload form;
    form.SetSourceFile(m_source);
    form.ShowModal(nullptr);
    EXPECT_EQ(form.Handle(), nullptr);
    return form.ResultFile();
}

std::wstring ParameterTest::ShowForm(const std::string& source, std::function<void(HWND)> act) {
    WriteSource(source);
    return ShowForm(std::move(act));
}

std::string Entry(const std::string& section, const std::string& value, const std::string& name,
                  const std::string& mark) {
    const std::string number = section.substr(section.find('_') + 1);
    const std::string key = section.starts_with("CP") ? "Address" : "Index";
    return "[" + section + "]\r\n" + key + "=" + number + "\r\nValue=" + value +
           "\r\nName=" + name + "\r\n" + (mark.empty() ? "" : "Mark=" + mark + "\r\n");
}

std::string FileOfVariables(const std::vector<std::string>& entries) {
    std::string text =
        "[GEN_INFO]\r\nProgramId=9F\r\n[NCIs]\r\nTotalNumber=" + std::to_string(entries.size()) +
        "\r\n";
    for (const std::string& entry : entries) text += entry;
    return text;
}

}  // namespace quillon::test
