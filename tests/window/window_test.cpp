#include "window/window_test.h"

#include <cstdio>
#include <utility>

#include "com/late.h"
#include "com/module.h"
#include "editors/frmVantorSplash.h"
#include "plugin/process_state.h"

namespace quillon::test {

std::string Section(const char* name, const std::vector<std::string>& values) {
    std::string text = "[" + std::string(name) + "]\r\n";
    for (std::size_t key = 0; key < values.size(); ++key)
        text += std::to_string(key) + "=" + values[key] + "\r\n";
    return text;
}

std::string UsualSettings() {
    return "[Settings]\r\nDisplayHW=1\r\nHtmlHelp=room.chm\r\n" +
           Section("MainView", {"1", "0", "3", "2", "4", "0"}) +
           Section("TestNVIs", {"0", "1", "3"}) + Section("CommissioningNCIs", {"7"}) +
           Section("CommissioningCPs", {"1", "2"}) + Section("AdvancedNCIs", {"5", "7"}) +
           Section("AdvancedCPs", {"0"}) + Section("ChangeOfValueCPs", {"4", "3"});
}

namespace {

// Sixteen hexadecimal digits that no other process and no other test of this one uses.
std::string NewProgramId() {
    static int s_made = 0;
    char digits[17];
    std::snprintf(digits, sizeof digits, "9F%08lX%06X",
                  static_cast<unsigned long>(GetCurrentProcessId()), ++s_made);
    return digits;
}

}  // namespace

void WindowTest::SetUp() {
    m_resting.emplace();
    m_programId = NewProgramId();
    m_json = SmallNetwork();
    for (Json& device : m_json.at("devices")) device["programId"] = m_programId;
    WriteSettings(UsualSettings());
    WarmUp();
    Process() = ProcessState();
    m_boxes = std::make_unique<MessageBoxes>();
    m_poster = std::make_unique<Poster>();
    m_before = CountGuiObjects();
}

// What the system makes with the first windows and keeps for ever is made before it is counted.
void WindowTest::WarmUp() {
    static bool s_done = false;
    if (std::exchange(s_done, true)) return;
    MessageBoxes boxes;
    Poster poster;
    LoadCursorW(nullptr, IDC_WAIT);
    boxes.Answer(IDOK);
    MessageBoxW(nullptr, L"first", L"first", MB_OK | MB_ICONSTOP);
    for (int round = 0; round < 2; ++round) {
        const com::Ptr<CDevice> device = MakeDevice();
        const Window window = ShowFocus(device);
        for (int tab = 0; tab < kTabCount; ++tab) {
            window->SelectTab(tab);
            UpdateWindow(window->Handle());
        }
        window->Update();
        ContextMenu(PageItem(*window, kTabTest, IDC_LVMONITOR));
        boxes.Answer(IDOK);
        Choose(*window, IDM_ABOUT);
        CloseAll();
        Poster::Drain();
    }
    m_network.Reset();
    Host().Clear();
}

void WindowTest::TearDown() {
    CloseAll();
    Host().Restore();
    Poster::Drain();
    EXPECT_TRUE(ui::OpenForms().empty());
    m_network.Reset();
    EXPECT_EQ(m_poster->Waiting(), 0);
    EXPECT_EQ(Host().LiveObjects(), 0) << "objects of the host are still held";
    EXPECT_EQ(com::ModuleLocks(), 0) << "objects or windows of the plug-in are still alive";
    EXPECT_EQ(Host().Misuse(), Lines());
    EXPECT_TRUE(NothingLeftSince(m_before)) << CountGuiObjects() << " after " << m_before;
    m_poster.reset();
    m_boxes.reset();
    m_resting.reset();
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) &&
                 message.message == WM_QUIT)
        << "a message to quit is left";
    Host().Record(true);
    Host().Clear();
    DeleteFileW(InFolder(Wide(m_programId) + L".ini").c_str());
    DeleteFileW(InFolder(Wide(m_programId) + L".json").c_str());
}

std::wstring WindowTest::InFolder(std::wstring_view name) const {
    return com::ModuleFolder() + L"\\" + std::wstring(name);
}

void WindowTest::WriteSettings(const std::string& text) {
    WriteBytes(InFolder(Wide(m_programId) + L".ini"), text);
}

INetwork* WindowTest::OpenNetwork() {
    if (!m_network) {
        const std::wstring path = InFolder(Wide(m_programId) + L".json");
        WriteBytes(path, m_json.dump());
        m_network = Host().OpenNetwork(path);
    }
    return m_network.Get();
}

com::Ptr<CDevice> WindowTest::MakeDevice(std::wstring_view neuron) {
    com::Ptr<CDevice> device = com::Make<CDevice>();
    const auto face = device.As<IDevice>();
    com::Check(face->putref_Network(OpenNetwork()));
    com::Check(face->put_NeuronID(com::Bstr(neuron).Get()));
    Host().Clear();
    return device;
}

namespace {

bool IsDeviceWindow(HWND window) {
    for (const auto& form : ui::OpenForms())
        if (const auto device = std::dynamic_pointer_cast<frmVantor>(form))
            if (device->Handle() == window) return true;
    return false;
}

}  // namespace

RestingTimers::RestingTimers()
    : m_hook(SetWindowsHookExW(WH_GETMESSAGE, OnMessage, nullptr, GetCurrentThreadId())) {}

LRESULT CALLBACK RestingTimers::OnMessage(int code, WPARAM removed, LPARAM place) {
    auto& message = *reinterpret_cast<MSG*>(place);
    if (code == HC_ACTION && message.message == WM_TIMER && message.lParam == 0 &&
        IsDeviceWindow(message.hwnd))
        message.message = WM_NULL;
    return CallNextHookEx(nullptr, code, removed, place);
}

WindowTest::Window WindowTest::ShowFocus(const com::Ptr<CDevice>& device,
                                         std::int32_t pollingRate) {
    IDispatch* none = nullptr;
    long rate = pollingRate;
    EXPECT_EQ(device.As<IDeviceEx>()->ShowFocus(&none, &rate), S_OK);
    com::Bstr neuron;
    com::Check(device.As<IDevice>()->get_NeuronID(neuron.Out()));
    if (const HWND splash = SplashOf(neuron.View())) SendMessageW(splash, WM_TIMER, 1, 0);
    Window window = WindowOf(neuron.View());
    if (window) StopTimers(*window);
    return window;
}

WindowTest::Window WindowTest::Open(std::wstring_view neuron) {
    Window window = ShowFocus(MakeDevice(neuron));
    Host().Clear();
    return window;
}

WindowTest::Window WindowTest::WindowOf(std::wstring_view neuron) {
    for (const auto& form : ui::OpenForms())
        if (form->Tag() == L"frmVantor" + std::wstring(neuron))
            return std::dynamic_pointer_cast<frmVantor>(form);
    return nullptr;
}

HWND WindowTest::SplashOf(std::wstring_view neuron) {
    for (const auto& form : ui::OpenForms())
        if (form->Tag() == neuron)
            if (const auto splash = std::dynamic_pointer_cast<frmVantorSplash>(form))
                return splash->Handle();
    return nullptr;
}

void WindowTest::StopTimers(const frmVantor& window) {
    for (UINT_PTR timer = 1; timer <= frmVantor::kTimers; ++timer)
        KillTimer(window.Handle(), timer);
}

void WindowTest::CloseAll() {
    for (const auto& form : ui::OpenForms()) form->Unload();
}

void WindowTest::PutValue(std::wstring_view neuron, int index, std::wstring_view value) {
    Host().Record(false);
    const com::Ptr<IDevice> device = MakeHostDevice();
    com::Check(device->putref_Network(OpenNetwork()));
    com::Check(device->put_NeuronID(com::Bstr(neuron).Get()));
    com::Ptr<IDispatch> points;
    com::Check(device->get_NetworkVariables(points.Out()));
    const auto point = com::Get(points.Get(), L"Item", {com::Variant(index)}).AsObject();
    com::Put(point.Get(), L"Value", com::Variant(value));
    Host().Record(true);
}

}  // namespace quillon::test
