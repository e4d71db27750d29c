#include <array>
#include <functional>

#include "com/text.h"
#include "commands.h"
#include "text.h"
#include "values.h"

namespace quorvex::bench::commands {
namespace {

template <class Interface>
std::wstring TextFrom(Interface& device, HRESULT (STDMETHODCALLTYPE Interface::*get)(BSTR*)) {
    com::Bstr text;
    com::Check((device.*get)(text.Out()));
    return text.Text();
}

std::wstring Padded(std::wstring text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), L' ');
    return text;
}

std::wstring InLine(const std::wstring& label, const std::wstring& text) {
    return L"  " + Padded(label, 22) + text;
}

void PrintFactoryData(const Room& room) {
    const auto own = room.device.As<_CDevice>();
    if (!own) return;
    std::array<short, 3> words{};
    com::Check(own->get_AnalogInput1_High(&words[0]));
    com::Check(own->get_AnalogInput1_Low(&words[1]));
    com::Check(own->get_AnalogInput1_Offset(&words[2]));
    Print(InLine(L"Calibration last read", std::to_wstring(words[0]) + L" " +
                                               std::to_wstring(words[1]) + L" " +
                                               std::to_wstring(words[2])));
    Print(InLine(L"Production last read", L"year " + TextFrom(*own, &_CDevice::get_ProductionYear) +
                                              L", week " +
                                              TextFrom(*own, &_CDevice::get_ProductionWeek)));
}

void PrintFirmware(const Room& room) {
    const auto extended = room.device.As<IDeviceEx>();
    if (!extended) return;
    Print(InLine(L"Firmware",
                 L"type " + TextFrom(*extended, &IDeviceEx::get_VantorFirmwareType) +
                     L", version " + TextFrom(*extended, &IDeviceEx::get_VantorFirmwareVersion) +
                     L", system " + TextFrom(*extended, &IDeviceEx::get_VantorOSVersion)));
    unsigned char status = 0;
    com::Check(extended->get_VantorAppStatus(&status));
    Print(InLine(L"Application status", std::to_wstring(status)));
    Print(InLine(L"Application code", TextFrom(*extended, &IDeviceEx::get_ApplicationCode)));
}

com::Ptr<IDeviceEx> Extended(const Room& room) {
    auto extended = room.device.As<IDeviceEx>();
    if (!extended) throw Failure{L"the plug-in has no IDeviceEx"};
    return extended;
}

bool Exists(const std::wstring& file) {
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// An action that answers whether it was done.
using Action = HRESULT (STDMETHODCALLTYPE IDevice::*)(VARIANT_BOOL*);

constexpr std::pair<std::wstring_view, Action> kActions[] = {
    {L"online", &IDevice::GoOnLine},
    {L"softoffline", &IDevice::GoSoftOffLine},
    {L"hardoffline", &IDevice::GoHardOffLine},
    {L"configured", &IDevice::GoConfigured},
    {L"unconfigured", &IDevice::GoUnConfigured},
    {L"applicationless", &IDevice::GoAppless},
    {L"reset", &IDevice::Reset},
};

}  // namespace

void List(Session& session, const Words&) {
    for (const Room& room : session.GetHost().Rooms()) {
        Print(room.neuron + L"  " + Padded(room.name, 16) + L"  " +
              TextFrom(*room.device.Get(), &IDevice::get_ProgramId) + L"  " +
              StateText(TextFrom(*room.device.Get(), &IDevice::get_State)));
    }
}

void Info(Session& session, const Words& words) {
    const Room& room = session.GetHost().Find(words[0]);
    IDevice& device = *room.device;
    Print(room.name + L" [" + room.neuron + L"]");
    Print(InLine(L"Shown as", TextFrom(device, &IDevice::get_DisplayName)));
    Print(InLine(L"Manufacturer", TextFrom(device, &IDevice::get_DeviceManufacturer)));
    Print(InLine(L"Class", TextFrom(device, &IDevice::get_DeviceClass)));
    Print(InLine(L"Program ID", TextFrom(device, &IDevice::get_ProgramId)));
    Print(InLine(L"Self-identification", TextFrom(device, &IDevice::get_SISD)));
    Print(InLine(L"State", StateText(TextFrom(device, &IDevice::get_State))));
    PrintFirmware(room);
    PrintFactoryData(room);
    for (const Entry& entry : ReadEntries(room)) {
        Print(InLine(L"Entry " + EntryName(entry.identifier), entry.text));
    }
}

void Export(Session& session, const Words& words) {
    const Room& room = session.GetHost().Find(words[0]);
    const std::wstring file = FullPath(words[1]);
    com::Bstr path(file);
    VARIANT_BOOL ignored = VARIANT_FALSE;
    com::Check(Extended(room)->AppExport(path.InOut(), &ignored));
    if (!Exists(file)) throw Failure{L"no application file was written to \"" + file + L"\""};
    Print(L"Exported " + room.name + L" to " + words[1]);
}

void Download(Session& session, const Words& words) {
    Host& host = session.GetHost();
    const Room& room = host.Find(words[0]);
    const std::size_t before = host.Reports().size();
    long result = 0;
    com::Check(Extended(room)->AppDownload(com::Bstr(FullPath(words[1])).Get(), &result));
    if (result != 0) Print(L"The download answered " + std::to_wstring(result));
    if (host.Reports().size() == before) Print(L"The host was told nothing of " + room.name);
}

void Get(Session& session, const Words& words) {
    const Room& room = session.GetHost().Find(words[0]);
    const ValueKind kind = ValueKindOf(words[1]);
    const ValueTexts texts = ReadValue(room, kind, words[2]);
    if (words.size() > 3) {
        const std::wstring& form = words[3];
        if (form != L"value" && form != L"shown" && form != L"raw") {
            throw Failure{L"\"" + form + L"\" is none of value, shown, raw"};
        }
        Print(texts.In(form == L"value" ? Form::kEdited
                       : form == L"raw" ? Form::kRaw
                                        : Form::kShown));
        return;
    }
    if (kind == ValueKind::kFile) {
        Print(room.name + L" " + texts.name + L": " + texts.raw);
    } else {
        Print(room.name + L" " + texts.name + L": " + texts.shown + L" [" + texts.raw + L"]");
    }
}

void Set(Session& session, const Words& words) {
    WriteValue(session.GetHost().Find(words[0]), ValueKindOf(words[1]), words[2], words[3]);
}

void Go(Session& session, const Words& words) {
    const Room& room = session.GetHost().Find(words[0]);
    if (words[1] == L"wink") {
        com::Check(room.device->Wink());
        return;
    }
    for (const auto& [name, action] : kActions) {
        if (name != words[1]) continue;
        VARIANT_BOOL done = VARIANT_FALSE;
        com::Check((room.device.Get()->*action)(&done));
        if (done == VARIANT_FALSE) throw Failure{room.name + L" did not go " + words[1]};
        return;
    }
    throw Failure{L"\"" + words[1] + L"\" is nothing that a device can be told"};
}

void Notify(Session& session, const Words& words) {
    const Room& room = session.GetHost().Find(words[0]);
    com::Bstr text(words[2]);
    long reason = 0;
    if (words[1] == L"name") {
        com::Check(room.device->ChangedName(text.InOut(), &reason));
    } else if (words[1] == L"status") {
        com::Check(room.device->ChangedStatus(text.InOut(), &reason));
    } else if (words[1] == L"xmiterr") {
        com::Check(room.device->ChangedXmitErr(text.InOut(), &reason));
    } else if (words[1] == L"point") {
        com::Check(room.device->NVCPChanged(text.InOut()));
    } else {
        throw Failure{L"\"" + words[1] + L"\" is none of name, status, xmiterr, point"};
    }
}

}  // namespace quorvex::bench::commands
