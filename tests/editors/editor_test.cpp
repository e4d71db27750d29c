#include "editors/editor_test.h"

#include <oleauto.h>

#include "com/error.h"
#include "com/module.h"

namespace quillon::test {

namespace {

// Wine keeps the number signs of the last region that a number was read by.
void ForgetNumberSigns() {
    wchar_t zero[] = L"0";
    float number = 0;
    for (const int language : {LANG_ITALIAN, LANG_FRENCH})
        VarR4FromStr(
            zero,
            MAKELCID(MAKELANGID(static_cast<USHORT>(language), SUBLANG_DEFAULT), SORT_DEFAULT), 0,
            &number);
}

void SetSigns(const wchar_t* decimal, const wchar_t* thousand) {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, decimal);
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, thousand);
    ForgetNumberSigns();
}

}  // namespace

CommaRegion::CommaRegion() {
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_decimal, 8);
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, m_thousand, 8);
    SetSigns(L",", L".");
}

CommaRegion::~CommaRegion() {
    SetSigns(m_decimal, m_thousand);
}

void EditorTest::SetUp() {
    m_owner = std::make_unique<TestWindow>();
    m_boxes = std::make_unique<MessageBoxes>();
    m_driver = std::make_unique<EditorDriver>();
    WarmUp();
    m_boxes.reset();
    m_boxes = std::make_unique<MessageBoxes>();
    m_before = CountGuiObjects();
}

// What the system makes with the first windows and keeps for ever is made before it is counted.
void EditorTest::WarmUp() {
    static bool s_done = false;
    if (std::exchange(s_done, true)) return;
    for (int round = 0; round < 2; ++round) {
        m_boxes->Answer(IDOK);
        MessageBoxW(Owner(), L"first", L"first", MB_OK | MB_ICONEXCLAMATION);
        for (const wchar_t* type : {L"Float", L"Textual", L"Enum", L"Struct"}) {
            FakePoint point(type, L"1");
            point.Set(L"EnumDesc", L"1,One;2,Two;");
            point.AddField(L"a", L"Float", L"1");
            point.Set(L"InvalidValue", L"9");
            Edit(point, [](const Editor& editor) {
                UpdateWindow(editor.Window());
                if (editor.Item(IDC_CHKINVALID)) {
                    editor.Key(VK_TAB);
                    editor.Click(IDC_CHKINVALID);
                    editor.Click(IDC_CHKINVALID);
                }
                if (const HWND box = editor.Item(IDC_CBOENUM)) {
                    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
                    UpdateWindow(editor.Window());
                    SendMessageW(box, CB_SHOWDROPDOWN, FALSE, 0);
                }
            });
        }
    }
}

void EditorTest::TearDown() {
    m_driver.reset();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    EXPECT_EQ(com::ModuleLocks(), 0) << "an editor or a point is still alive";
    if (IsWindow(Owner())) {
        EXPECT_TRUE(IsWindowEnabled(Owner())) << "the owner can be used again";
        EXPECT_TRUE(NothingLeftSince(m_before)) << CountGuiObjects() << " after " << m_before;
    }
    m_boxes.reset();
    m_owner.reset();
}

bool EditorTest::Edit(FakePoint& point, Steps steps) {
    m_driver->Expect(std::move(steps));
    const bool shown = EditPoint(point.Point(), Owner());
    if (!shown) m_driver->Forget();
    return shown;
}

bool EditorTest::OpensNothing(FakePoint& point) {
    const int before = m_driver->Shown();
    try {
        return !EditPoint(point.Point(), Owner()) && m_driver->Shown() == before;
    } catch (const com::Error&) {
        return m_driver->Shown() == before;
    }
}

}  // namespace quillon::test
