#include "support/host_test.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "support/plugin_window.h"

namespace quillon::test {

namespace {

// A new folder for each plug-in copy, so that a copy that cannot be unloaded troubles no later
// test.
std::wstring MakeFolder() {
    static int s_made = 0;
    wchar_t temp[MAX_PATH + 1];
    GetTempPathW(MAX_PATH + 1, temp);
    const std::wstring folder = std::wstring(temp) + L"quillon-" +
                                std::to_wstring(GetCurrentProcessId()) + L"-" +
                                std::to_wstring(++s_made);
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

// The classes of the windows.
std::vector<std::wstring> Windows() {
    std::vector<std::wstring> windows;
    for (const HWND window : ThreadWindows())
        if (!IsSystemWindow(window)) windows.push_back(ClassOf(window));
    return windows;
}

std::wstring RawOf(const Json& points, int index) {
    for (const Json& point : points)
        if (point.at("index") == index) return Wide(point.at("raw").get<std::string>());
    throw std::runtime_error("no such point");
}

}  // namespace

void HostTest::SetUp() {
    m_windows = Windows();
    m_folder = MakeFolder();
    m_boxes = std::make_unique<MessageBoxes>();
    m_poster = std::make_unique<Poster>();
    LoadPlugin();
}

void HostTest::LoadPlugin() {
    const std::wstring copy = m_folder + L"\\Quillon.dll";
    std::filesystem::copy_file(BuiltPlugin(), copy,
                               std::filesystem::copy_options::overwrite_existing);
    m_plugin = std::make_unique<Library>(copy);
}

void HostTest::UnloadPlugin() {
    m_rooms.clear();
    Host().Restore();
    EXPECT_EQ(m_poster->Waiting(), 0) << "posted work has not run";
    m_poster->Discard();
    if (!m_plugin) return;
    const bool free = m_plugin->CanUnload();
    EXPECT_TRUE(free) << "the plug-in still holds something";
    if (free) {
        EXPECT_TRUE(m_plugin->Unload()) << "the plug-in stays in the process";
    }
    m_plugin.reset();
}

void HostTest::TearDown() {
    UnloadPlugin();
    m_network.Reset();
    EXPECT_EQ(Host().LiveObjects(), 0) << "objects of the host are still held";
    if (!m_misuseAllowed) {
        EXPECT_EQ(Host().Misuse(), Lines());
    }
    m_poster.reset();
    m_boxes.reset();
    EXPECT_EQ(Windows(), m_windows);
    Host().Record(true);
    Host().Clear();
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::wstring HostTest::InFolder(std::wstring_view name) const {
    return m_folder + L"\\" + std::wstring(name);
}

void HostTest::WriteSettings(const std::string& lines, std::string_view programId) {
    WriteBytes(InFolder(Wide(programId) + L".ini"), "[Settings]\r\n" + lines + "\r\n");
}

void HostTest::ReloadPlugin() {
    UnloadPlugin();
    LoadPlugin();
}

void HostTest::Open(const Json& network) {
    const std::wstring path = InFolder(L"network.json");
    WriteBytes(path, network.dump());
    m_network = Host().OpenNetwork(path);
}

Room& HostTest::AddRoom(std::wstring_view neuron) {
    Room room;
    room.neuron = neuron;
    room.device = m_plugin->Make<IDevice>(CLSID_CDevice);
    room.ex = room.device.As<IDeviceEx>();
    room.own = room.device.As<_CDevice>();
    com::Check(room.device->putref_Network(m_network.Get()));
    com::Check(room.device->put_NeuronID(com::Bstr(neuron).Get()));
    Host().Clear();
    return m_rooms.emplace_back(std::move(room));
}

com::Ptr<IDevice> HostTest::HostDevice(std::wstring_view neuron) {
    Host().Record(false);
    com::Ptr<IDevice> device = MakeHostDevice();
    com::Check(device->putref_Network(m_network.Get()));
    com::Check(device->put_NeuronID(com::Bstr(neuron).Get()));
    Host().Record(true);
    return device;
}

Json HostTest::Saved() {
    const std::wstring path = InFolder(L"saved.json");
    Host().SaveNetwork(m_network.Get(), path);
    return Json::parse(ReadBytes(path));
}

std::wstring HostTest::StateOf(std::wstring_view neuron) {
    Json saved = Saved();
    return Wide(DeviceOf(saved, neuron).at("state").get<std::string>());
}

std::wstring HostTest::FileValue(std::wstring_view neuron, std::string_view id) {
    Json saved = Saved();
    const Json* entry = FileOf(DeviceOf(saved, neuron), id);
    return entry ? Wide(entry->at("value").get<std::string>()) : L"(no entry)";
}

std::wstring HostTest::VariableRaw(std::wstring_view neuron, int index) {
    Json saved = Saved();
    return RawOf(DeviceOf(saved, neuron).at("nvs"), index);
}

std::wstring HostTest::PropertyRaw(std::wstring_view neuron, int index) {
    Json saved = Saved();
    return RawOf(DeviceOf(saved, neuron).at("cps"), index);
}

void CloseAllWindows() {
    for (const HWND dialog : Dialogs())
        if (IsWindow(dialog)) SendMessageW(dialog, WM_CLOSE, 0, 0);
    Poster::Drain();
}

void Download(const Room& room, const std::wstring& path) {
    long result = -1;
    EXPECT_EQ(room.ex->AppDownload(com::Bstr(path).Get(), &result), S_OK);
    EXPECT_EQ(result, 0);
}

void Export(const Room& room, const std::wstring& path) {
    com::Bstr file(path);
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(room.ex->AppExport(file.InOut(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE) << "the result is false in every case";
    EXPECT_EQ(file.Text(), path);
}

}  // namespace quillon::test
