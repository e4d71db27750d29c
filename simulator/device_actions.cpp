// States, memory, tables, notifications and files.
#include <filesystem>

#include "com/module.h"
#include "device.h"
#include "network_file.h"
#include "parameter_file.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

namespace {

constexpr long kMemoryEnd = 0x10000;
// Where network variables lie, one behind the other in file order.
constexpr long kVariablesAddress = 0x1000;

void RequireRange(long address, long length) {
    if (address < 0 || length < 0 || address > kMemoryEnd || length > kMemoryEnd - address)
        Refuse(E_INVALIDARG, L"Device memory has 65,536 bytes");
}

}  // namespace

HRESULT Device::Action(MemberId member, VARIANT_BOOL* done, bool (RoomController::*action)()) {
    return Answer(member, done,
                  [&] { return Read([&](RoomController& own) { return (own.*action)(); }); });
}

STDMETHODIMP Device::Reset(VARIANT_BOOL* done) {
    return Action(Id("IDevice.Reset"), done, &RoomController::Reset);
}
STDMETHODIMP Device::ClearStatus(VARIANT_BOOL* done) {
    return Action(Id("IDevice.ClearStatus"), done, &RoomController::ClearStatus);
}
STDMETHODIMP Device::GoConfigured(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoConfigured"), done, &RoomController::GoConfigured);
}
STDMETHODIMP Device::GoUnConfigured(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoUnConfigured"), done, &RoomController::GoUnConfigured);
}
STDMETHODIMP Device::GoOnLine(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoOnLine"), done, &RoomController::GoOnLine);
}
STDMETHODIMP Device::GoSoftOffLine(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoSoftOffLine"), done, &RoomController::GoSoftOffLine);
}
STDMETHODIMP Device::GoHardOffLine(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoHardOffLine"), done, &RoomController::GoHardOffLine);
}
STDMETHODIMP Device::GoAppless(VARIANT_BOOL* done) {
    return Action(Id("IDevice.GoAppless"), done, &RoomController::GoAppless);
}

STDMETHODIMP Device::Wink() {
    return Do(Id("IDevice.Wink"), [&] { Read([](RoomController& own) { return own.Wink(); }); });
}

STDMETHODIMP Device::Reboot() {
    return Do(Id("IDevice.Reboot"), [&] { Read([](RoomController& own) { return own.Reset(); }); });
}

STDMETHODIMP Device::get_FocusHidden(VARIANT_BOOL* hidden) {
    return Answer(Id("IDevice.FocusHidden.get"), hidden, [] { return false; });
}

STDMETHODIMP Device::Focus(IDispatch* window, VARIANT_BOOL* granted) {
    return Answer(
        Id("IDevice.Focus"), granted,
        [&] { return Read([](RoomController& own) { return own.IsPresent(); }); },
        static_cast<IUnknown*>(window));
}

STDMETHODIMP Device::get_ForceFocus(VARIANT_BOOL* force) {
    return Answer(Id("IDevice.ForceFocus.get"), force, [] { return false; });
}

STDMETHODIMP Device::get_IsOpen(VARIANT_BOOL* open) {
    return Answer(Id("IDevice.IsOpen.get"), open, [&] { return m_windowShown; });
}

STDMETHODIMP Device::WriteSNVTTable(BSTR table) {
    return KeepText(Id("IDevice.WriteSNVTTable"), table, &Session::variableTable);
}
STDMETHODIMP Device::WriteNVFixedStruct(BSTR table) {
    return KeepText(Id("IDevice.WriteNVFixedStruct"), table, &Session::fixedTable);
}
STDMETHODIMP Device::WriteNVConfigStruct(BSTR table) {
    return KeepText(Id("IDevice.WriteNVConfigStruct"), table, &Session::configurationTable);
}
STDMETHODIMP Device::get_ReadOnlyFix15(BSTR* table) {
    return SessionText(Id("IDevice.ReadOnlyFix15.get"), table, &Session::fixedTable);
}

HRESULT Device::TableEntry(MemberId member, long index, BSTR* entry, std::wstring Session::*text) {
    return Answer(
        member, entry,
        [&] {
            return Read([&](RoomController& own) {
                const auto position = own.Points(PointKind::kVariable).Find(std::to_wstring(index));
                return position == PointTable::npos ? std::wstring() : own.session.*text;
            });
        },
        index);
}

STDMETHODIMP Device::get_ReadNVConfigTable(long index, BSTR* entry) {
    return TableEntry(Id("IDevice.ReadNVConfigTable.get"), index, entry,
                      &Session::configurationTable);
}
STDMETHODIMP Device::get_ReadSNVTTable(long index, BSTR* entry) {
    return TableEntry(Id("IDevice.ReadSNVTTable.get"), index, entry, &Session::variableTable);
}

STDMETHODIMP Device::WriteNVNum(long number) {
    return Do(
        Id("IDevice.WriteNVNum"), [&] { Require().session.variableNumber = number; }, number);
}

STDMETHODIMP Device::get_FileSystemAddress(long* address) {
    return Answer(Id("IDevice.FileSystemAddress.get"), address, [&] {
        return Read([](RoomController& own) {
            long lowest = 0;
            for (const FileEntry& entry : own.Files())
                if (entry.address != 0 && (lowest == 0 || entry.address < lowest))
                    lowest = entry.address;
            return lowest;
        });
    });
}

STDMETHODIMP Device::get_NVAddress(long index, long* address) {
    return Answer(
        Id("IDevice.NVAddress.get"), address,
        [&] {
            return Read([&](RoomController& own) {
                const PointTable& points = own.Points(PointKind::kVariable);
                const auto position = points.Find(std::to_wstring(index));
                if (position == PointTable::npos)
                    Refuse(DISP_E_BADINDEX,
                           L"There is no network variable " + std::to_wstring(index));
                return kVariablesAddress + static_cast<long>(points.At(position).blockOffset);
            });
        },
        index);
}

// These act on the host's own bookkeeping, which here is never behind; they are calls like any
// other.
STDMETHODIMP Device::RefreshDeviceTree() {
    return Do(Id("IDevice.RefreshDeviceTree"), [&] { Require(); });
}
STDMETHODIMP Device::WriteOnlyFix15() {
    return Do(Id("IDevice.WriteOnlyFix15"), [&] { Require(); });
}
STDMETHODIMP Device::AdjustProfile() {
    return Do(Id("IDevice.AdjustProfile"), [&] { Require(); });
}

STDMETHODIMP Device::SetLogicalAddress(short domainIndex, BSTR domainId, short subnet, short node,
                                       BSTR key, VARIANT_BOOL* done) {
    return Answer(
        Id("IDevice.SetLogicalAddress"), done,
        [&] {
            return Read([&](RoomController& own) {
                if (!own.Answers() || domainIndex < 0 || domainIndex > 1) return false;
                own.session.addresses[domainIndex] = {com::Text(domainId), subnet, node,
                                                      com::Text(key)};
                return true;
            });
        },
        domainIndex, domainId, subnet, node, key);
}

STDMETHODIMP Device::GetLogicalAddress(short domainIndex, BSTR* domainId, short* domainLength,
                                       short* subnet, short* node, BSTR* key, VARIANT_BOOL* done) {
    if (!domainId || !domainLength || !subnet || !node || !key) return E_POINTER;
    return Answer(
        Id("IDevice.GetLogicalAddress"), done,
        [&] {
            return Read([&](RoomController& own) {
                const auto kept = own.session.addresses.find(domainIndex);
                if (!own.Answers() || kept == own.session.addresses.end()) return false;
                com::Bstr newId(kept->second.domainId), newKey(kept->second.key);
                SysFreeString(std::exchange(*domainId, newId.Detach()));
                SysFreeString(std::exchange(*key, newKey.Detach()));
                *domainLength = static_cast<short>(kept->second.domainId.size() / 2);
                *subnet = kept->second.subnet;
                *node = kept->second.node;
                return true;
            });
        },
        domainIndex, *domainId, *domainLength, *subnet, *node, *key);
}

STDMETHODIMP Device::WriteMemory(long address, long length, BSTR bytes, VARIANT_BOOL* done) {
    return Answer(
        Id("IDevice.WriteMemory"), done,
        [&] {
            RoomController& own = Require();
            RequireRange(address, length);
            const auto content = BytesFromRawText(com::View(bytes));
            if (!content || content->size() != static_cast<std::size_t>(length))
                RefuseMisuse(L"Memory was given \"" + com::Text(bytes) + L"\" for " +
                             std::to_wstring(length) + L" bytes");
            own.WriteMemory(address, *content);
            return true;
        },
        address, length, bytes);
}

STDMETHODIMP Device::ReadMemoryString(long address, long length, BSTR* bytes) {
    return Answer(
        Id("IDevice.ReadMemoryString"), bytes,
        [&] {
            RequireRange(address, length);
            return Read([&](RoomController& own) {
                return RawText(own.ReadMemory(address, static_cast<std::size_t>(length)));
            });
        },
        address, length);
}

STDMETHODIMP Device::ReadMemoryUnicode(long address, long length, SAFEARRAY** bytes) {
    return Answer(
        Id("IDevice.ReadMemoryUnicode"), bytes,
        [&] {
            RequireRange(address, length);
            return Read([&](RoomController& own) {
                return ByteArray{own.ReadMemory(address, static_cast<std::size_t>(length))};
            });
        },
        address, length);
}

STDMETHODIMP Device::get_Statistics(BSTR* text) {
    return Answer(Id("IDevice.Statistics.get"), text, [&] {
        return Read([](RoomController& own) {
            const Session& session = own.session;
            return L"Resets: " + std::to_wstring(session.resets) + L"; winks: " +
                   std::to_wstring(session.winks) + L"; points changed: " +
                   std::to_wstring(session.changedPoints) + L"; network variables: " +
                   std::to_wstring(session.variableNumber) + L"; name: " + session.lastName +
                   L"; status: " + session.lastStatus + L"; transmit error: " +
                   session.lastTransmitError;
        });
    });
}

STDMETHODIMP Device::ClearStyatistics() {
    return Do(Id("IDevice.ClearStyatistics"), [&] { Require().ClearStatistics(); });
}

HRESULT Device::NoteChange(MemberId member, BSTR* value, const long* reason,
                           std::wstring Session::*text) {
    if (!value || !reason) return E_POINTER;
    return Do(
        member, [&] { Require().session.*text = com::View(*value); }, *value, *reason);
}

STDMETHODIMP Device::ChangedName(BSTR* name, long* reason) {
    return NoteChange(Id("IDevice.ChangedName"), name, reason, &Session::lastName);
}
STDMETHODIMP Device::ChangedXmitErr(BSTR* transmitError, long* reason) {
    return NoteChange(Id("IDevice.ChangedXmitErr"), transmitError, reason,
                      &Session::lastTransmitError);
}
STDMETHODIMP Device::ChangedStatus(BSTR* status, long* reason) {
    return NoteChange(Id("IDevice.ChangedStatus"), status, reason, &Session::lastStatus);
}

STDMETHODIMP Device::NVCPChanged(BSTR* point) {
    if (!point) return E_POINTER;
    return Do(
        Id("IDevice.NVCPChanged"), [&] { ++Require().session.changedPoints; }, *point);
}

STDMETHODIMP Device::ApplicationDownload(BSTR fileName, VARIANT_BOOL keepConfiguration,
                                         long options, long* result) {
    return Answer(
        Id("IDevice.ApplicationDownload"), result,
        [&] {
            RoomController& own = Require();
            std::error_code failure;
            const bool there = std::filesystem::is_regular_file(com::Text(fileName), failure);
            return there && own.LoadApplication() ? 0L : 1L;
        },
        fileName, keepConfiguration != VARIANT_FALSE, options);
}

STDMETHODIMP Device::ParameterDownload(BSTR fileName, long* result) {
    return Answer(
        Id("IDevice.ParameterDownload"), result,
        [&] { return DownloadParameters(Require(), com::Text(fileName)); }, fileName);
}

STDMETHODIMP Device::ParameterExport(BSTR fileName, long* result) {
    return Answer(
        Id("IDevice.ParameterExport"), result,
        [&] { return ExportParameters(Require(), com::Text(fileName)); }, fileName);
}

STDMETHODIMP Device::Export(BSTR fileName) {
    return Do(
        Id("IDevice.Export"),
        [&] { ReplaceFile(com::Text(fileName), ControllerText(Require()) + "\n"); }, fileName);
}

}  // namespace quorvex
