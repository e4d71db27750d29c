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

}  // namespace

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

// Each step's own messages are handled before the next one runs.
void OptionDialogTest::Next(std::size_t step) {
    if (step < m_steps.size()) {
        m_steps[step]();
        Posted().Post([this, step] { Next(step + 1); });
        return;
    }
    m_steps.clear();
    if (const HWND left = Dialog()) {
        ADD_FAILURE() << "the dialog is still up";
        PostMessageW(left, WM_COMMAND, IDCANCEL, 0);
    }
}

void OptionDialogTest::Run(HWND owner, const std::function<void()>& shows,
                           const std::vector<Step>& steps) {
    m_dialog = [owner] {
        const HWND popup = IsWindow(owner) ? GetWindow(owner, GW_ENABLEDPOPUP) : nullptr;
        return popup == owner ? HWND{} : popup;
    };
    m_steps = steps;
    m_steps.insert(m_steps.begin(), [this] { EXPECT_NE(Dialog(), nullptr) << "no dialog"; });
    Posted().Post([this] { Next(0); });
    shows();
    Poster::Drain();
    EXPECT_EQ(Posted().Waiting(), 0);
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
        const HWND popup = GetWindow(window, GW_ENABLEDPOPUP);
        if (!popup || popup == window) return;
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

int OptionDialogTest::ButtonCount() const {
    int count = 0;
    while (Button(count) && (GetWindowLongW(Button(count), GWL_STYLE) & WS_VISIBLE)) ++count;
    return count;
}

Lines OptionDialogTest::Labels() const {
    Lines labels;
    for (int position = 0; position < ButtonCount(); ++position)
        labels.push_back(WindowText(Button(position)));
    return labels;
}

std::wstring OptionDialogTest::Checked() const {
    std::wstring checked;
    for (int position = 0; position < ButtonCount(); ++position)
        if (SendMessageW(Button(position), BM_GETCHECK, 0, 0) == BST_CHECKED)
            checked += WindowText(Button(position));
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
