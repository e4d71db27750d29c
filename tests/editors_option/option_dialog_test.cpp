#include "editors_option/option_dialog_test.h"

#include "com/late.h"

namespace quillon::test {

namespace {

Json Variable(int index, const char* name, const char* type, const char* raw) {
    return {{"index", index}, {"name", name}, {"type", type}, {"raw", raw}};
}

void Hold(int key) {
    BYTE state[256] = {};
    if (key) state[key] = 0x80;
    SetKeyboardState(state);
}

constexpr DWORD kLimit = 20000;

OptionDialogTest* g_running = nullptr;

}  // namespace

HWND PopupOf(HWND owner) {
    return FirstThreadWindow([owner](HWND window) {
        return GetWindow(window, GW_OWNER) == owner && IsWindowVisible(window);
    });
}

void OptionDialogTest::SetUp() {
    WindowTest::SetUp();
    Json& variables = Left()["nvs"];
    variables.push_back(Variable(kAppModePoint, "nviApplicMode", "SNVT_hvac_mode", "03"));
    variables.push_back(Variable(kHoldOffPoint, "nviEnergyHldOff", "SNVT_switch", "0001"));
    variables.push_back(Variable(kLightingPoint, "nviLighting & more", "SNVT_switch", "00FF"));
    variables.push_back(
        Variable(kOccupancyFieldsPoint, "nviTodEvent", "SNVT_tod_event", "010301F3"));
}

void OptionDialogTest::TearDown() {
    Hold(0);
    m_window.reset();
    WindowTest::TearDown();
}

void OptionDialogTest::OpenFor(int point, const std::string& entry) {
    WriteSettings(Section("MainView", {std::to_string(point), "1", "4", "0", "2", "0"}) +
                  "[OptionEditors]\r\n" + std::to_string(point) + "=" + entry + "\r\n");
    m_window = Open();
    ASSERT_TRUE(m_window);
    Host().Clear();
}

// A timer waits for all that a step has posted. Steps rest before the dialog is up, and while a
// message box stands over it.
bool OptionDialogTest::Ready() {
    if (m_dialog) return !IsWindow(m_dialog) || IsWindowEnabled(m_dialog);
    m_dialog = PopupOf(m_owner);
    if (m_dialog) return true;
    if (GetTickCount() - m_start < kLimit) return false;
    ADD_FAILURE() << "no dialog came up";
    m_steps.clear();
    return true;
}

void OptionDialogTest::Tick() {
    if (!Ready()) return;
    if (!m_steps.empty()) {
        const Step step = std::move(m_steps.front());
        m_steps.pop_front();
        step();
        return;
    }
    KillTimer(nullptr, std::exchange(m_timer, 0));
    if (!Dialog()) return;
    ADD_FAILURE() << "the dialog is still up";
    PostMessageW(m_dialog, WM_COMMAND, IDCANCEL, 0);
}

void CALLBACK OptionDialogTest::OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    try {
        g_running->Tick();
    } catch (...) {
        ADD_FAILURE() << "a step threw";
    }
}

void OptionDialogTest::Run(HWND owner, const std::function<void()>& shows,
                           const std::vector<Step>& steps) {
    g_running = this;
    m_owner = owner;
    m_dialog = nullptr;
    m_start = GetTickCount();
    m_steps.assign(steps.begin(), steps.end());
    m_timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
    ASSERT_NE(m_timer, 0u);
    shows();
    EXPECT_TRUE(PumpUntil([&] { return m_timer == 0 && !Dialog(); }, 2 * kLimit));
    g_running = nullptr;
}

void OptionDialogTest::Edit(const std::vector<Step>& steps, int label) {
    const HWND window = m_window->Handle();
    const auto command = static_cast<WPARAM>(IDC_LBLNV_FIRST + label);
    Run(
        window, [&] { SendMessageW(window, WM_COMMAND, command, 0); }, steps);
}

void OptionDialogTest::ExpectNoDialog(int label) {
    const HWND window = m_window->Handle();
    Posted().Post([window] {
        const HWND popup = PopupOf(window);
        if (!popup) return;
        ADD_FAILURE() << "a dialog came up";
        PostMessageW(popup, WM_COMMAND, IDCANCEL, 0);
    });
    SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(IDC_LBLNV_FIRST + label), 0);
    Poster::Drain();
}

// ---- what the dialog shows

HWND OptionDialogTest::Button(int position) const {
    const HWND column = FindWindowExW(Dialog(), nullptr, L"#32770", nullptr);
    return GetDlgItem(column, IDC_OPTBUTTON_FIRST + position);
}

std::vector<HWND> OptionDialogTest::Buttons() const {
    std::vector<HWND> buttons;
    HWND button = Button(0);
    for (; button; button = GetWindow(button, GW_HWNDNEXT))
        if (GetWindowLongW(button, GWL_STYLE) & WS_VISIBLE) buttons.push_back(button);
    return buttons;
}

Lines OptionDialogTest::Labels() const {
    Lines labels;
    for (const HWND button : Buttons()) labels.push_back(WindowText(button));
    return labels;
}

std::wstring OptionDialogTest::Checked() const {
    std::wstring checked;
    for (const HWND button : Buttons())
        if (SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED) checked += WindowText(button);
    return checked;
}

// ---- steps

OptionDialogTest::Step OptionDialogTest::Key(WPARAM key) const {
    return [key] {
        Hold(0);
        const HWND focus = GetFocus();
        ASSERT_NE(focus, nullptr);
        PostMessageW(focus, WM_KEYDOWN, key, 1);
        PostMessageW(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    };
}

OptionDialogTest::Step OptionDialogTest::HeldKey(WPARAM key) const {
    return [key] {
        Hold(0);
        ASSERT_NE(GetFocus(), nullptr);
        PostMessageW(GetFocus(), WM_KEYDOWN, key, static_cast<LPARAM>(KF_REPEAT) << 16 | 1);
    };
}

OptionDialogTest::Step OptionDialogTest::ShiftTab() const {
    return [] {
        Hold(VK_SHIFT);
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_TAB, 1);
    };
}

OptionDialogTest::Step OptionDialogTest::AccessKey(wchar_t letter) const {
    return [letter] { PostMessageW(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29); };
}

OptionDialogTest::Step OptionDialogTest::Click(int position) const {
    return [this, position] {
        const HWND button = Button(position);
        ASSERT_NE(button, nullptr) << position;
        PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
        PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
    };
}

OptionDialogTest::Step OptionDialogTest::ClickOk() const {
    return [this] { PostMessageW(GetDlgItem(Dialog(), IDOK), BM_CLICK, 0, 0); };
}

std::wstring OptionDialogTest::Raw(int point) {
    Host().Record(false);
    const com::Ptr<IDevice> device = MakeHostDevice();
    com::Check(device->putref_Network(OpenNetwork()));
    com::Check(device->put_NeuronID(com::Bstr(kLeft).Get()));
    com::Ptr<IDispatch> points;
    com::Check(device->get_NetworkVariables(points.Out()));
    const auto found = com::Get(points.Get(), L"Item", {com::Variant(point)}).AsObject();
    const std::wstring raw = com::Get(found.Get(), L"RawValue").AsText();
    Host().Record(true);
    return raw;
}

}  // namespace quillon::test
