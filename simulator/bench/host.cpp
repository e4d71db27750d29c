#include "host.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "com/text.h"
#include "script_reader.h"
#include "text.h"

namespace quorvex::bench {
namespace {

template <class T>
com::Ptr<T> CreateObject(REFCLSID clsid, std::wstring_view what) {
    com::Ptr<T> object;
    const HRESULT made =
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(T), object.OutVoid());
    if (FAILED(made)) {
        throw Failure{std::wstring(what) + L" cannot be created: " + CodeText(made) +
                      (made == REGDB_E_CLASSNOTREG ? L" (not registered)" : L"")};
    }
    return object;
}

CLSID ClassOf(const std::wstring& plugin) {
    if (plugin.empty()) return CLSID_CDevice;
    CLSID clsid{};
    if (FAILED(CLSIDFromProgID(plugin.c_str(), &clsid))) {
        throw Failure{L"\"" + plugin + L"\" is not a registered class"};
    }
    return clsid;
}

std::vector<std::wstring> LinesOf(const com::Bstr& text) {
    auto lines = SplitLines(text.View());
    std::erase(lines, L"");
    return lines;
}

// "80040320 0123456789AB"
Report ParseReport(const std::wstring& line) {
    Report report;
    const std::string digits = Utf8FromWide(line.substr(0, 8));
    std::uint32_t code = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    if (read.ec != std::errc() || line.size() < 9) {
        throw Failure{L"the host's report \"" + line + L"\" cannot be read"};
    }
    report.code = static_cast<HRESULT>(code);
    report.neuron = line.substr(9);
    return report;
}

}  // namespace

Host::Host(const std::wstring& networkFile, const std::wstring& plugin)
    : m_simulator(CreateObject<ISimulator>(CLSID_Simulator, L"the simulated host")) {
    com::Check(m_simulator->OpenNetwork(com::Bstr(networkFile).Get(), m_network.Out()));
    const CLSID clsid = ClassOf(plugin);
    com::Bstr neurons;
    com::Check(m_simulator->Neurons(m_network.Get(), neurons.Out()));
    for (const auto& neuron : LinesOf(neurons)) AddRoom(neuron, clsid);
}

Host::~Host() = default;

void Host::AddRoom(const std::wstring& neuron, REFCLSID plugin) {
    Room room{.neuron = neuron,
              .name = {},
              .device = CreateObject<IDevice>(plugin, L"the plug-in's device"),
              .events = {}};
    com::Check(room.device->putref_Network(m_network.Get()));
    com::Check(room.device->put_NeuronID(com::Bstr(neuron).Get()));
    com::Bstr name;
    com::Check(room.device->get_Name(name.Out()));
    room.name = name.Text();
    room.events =
        EventSubscription(room.device.Get(), [this, neuron](auto event, const auto& argument) {
            m_events.push_back({std::wstring(event), neuron, argument, false});
            const std::wstring line = L"Event " + std::wstring(event) +
                                      (argument.empty() ? L"" : L" \"" + argument + L"\"") +
                                      L" from " + NameOf(neuron);
            Print(line);
            if (m_listener) m_listener(line);
        });
    m_rooms.push_back(std::move(room));
}

Room& Host::Find(std::wstring_view text) {
    const auto wanted = Upper(text);
    const auto found = std::find_if(m_rooms.begin(), m_rooms.end(), [&](const Room& room) {
        return Upper(room.neuron) == wanted || Upper(room.name) == wanted;
    });
    if (found == m_rooms.end()) {
        throw Failure{L"there is no device \"" + std::wstring(text) + L"\""};
    }
    return *found;
}

std::wstring Host::NameOf(std::wstring_view neuron) const {
    for (const Room& room : m_rooms) {
        if (room.neuron == neuron) return room.name + L" [" + room.neuron + L"]";
    }
    return L"[" + std::wstring(neuron) + L"]";
}

void Host::Save(const std::wstring& file) {
    com::Check(m_simulator->SaveNetwork(m_network.Get(), com::Bstr(file).Get()));
}

std::wstring Host::PluginFolder() const {
    if (m_rooms.empty()) throw Failure{L"the network has no devices, so no plug-in is loaded"};
    // The device lives in this apartment, so its table of members lies in the plug-in's own module.
    const auto* const table = *reinterpret_cast<wchar_t* const*>(m_rooms.front().device.Get());
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            table, &module)) {
        throw Failure{L"the plug-in's module cannot be found"};
    }
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\'));
}

std::vector<Report>& Host::Reports() {
    com::Bstr text;
    com::Check(m_simulator->get_Reports(text.Out()));
    const auto lines = LinesOf(text);
    for (std::size_t i = m_reports.size(); i < lines.size(); ++i) {
        m_reports.push_back(ParseReport(lines[i]));
        Print(ReportText(*this, m_reports.back()));
    }
    return m_reports;
}

std::vector<std::wstring> Host::Misuse() {
    com::Bstr text;
    com::Check(m_simulator->get_Misuse(text.Out()));
    return LinesOf(text);
}

long Host::Close() {
    m_rooms.clear();
    m_network.Reset();
    PumpMessages();
    long alive = 0;
    com::Check(m_simulator->get_LiveObjects(&alive));
    return alive;
}

std::wstring ReportText(const Host& host, const Report& report) {
    const auto meaning = ReportMeaning(report.code);
    return L"Told the host: " + CodeText(report.code) +
           (meaning.empty() ? L"" : L" (" + std::wstring(meaning) + L")") + L" for " +
           host.NameOf(report.neuron);
}

std::wstring FullPath(const std::wstring& file) {
    const DWORD needed = GetFullPathNameW(file.c_str(), 0, nullptr, nullptr);
    std::wstring path(needed, L'\0');
    path.resize(GetFullPathNameW(file.c_str(), needed, path.data(), nullptr));
    if (path.empty()) throw Failure{L"\"" + file + L"\" is no file name"};
    return path;
}

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace quorvex::bench
