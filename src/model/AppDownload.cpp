// CDevice: writing an application file into the device. Order of steps and codes: docs/download.md.
#include "com/late.h"
#include "host_members.h"
#include "model/CProfile.h"
#include "model/header_codes.h"
#include "plugin/CDevice.h"
#include "plugin/number_text.h"
#include "ui/message_box.h"
#include "ui/pump.h"

namespace quillon {

namespace {

// What the host is told.
enum class Outcome : std::uint32_t {
    kSuccess = 0,
    kOtherFirmware = 0x80040320,
    kProgramIdRefused = 0x80040321,
    kOtherCustomer = 0x80040322,
    kOtherDevice = 0x80040323,
    kNoApplication = 0x80040325,
    kFailedBeforeValues = 0x8004032B,
    kFailedWithValues = 0x8004032F,
};

const wchar_t* const kProgramIdQuestion =
    L"The ProgramID into the Application File is different to the one in the device. "
    L"Do you want to continue?";

// One download. Every early end leaves the device soft off line: the host decides what comes next.
class Download {
public:
    explicit Download(CDevice& device)
        : m_device(device), m_host(device.HostDevice()), m_profile(com::Make<CProfile>()) {}

    // Up to the application objects. kSuccess: go on with the values.
    Outcome WriteApplication(const std::wstring& appFile);
    // Configuration values where the settings ask for them, then back on line.
    void WriteValues();

private:
    Outcome WriteIdentity();
    Outcome WriteObjects();
    void WriteConfigurationVariables();
    std::wstring ReadEntry(IFile* entry);
    void WriteEntry(IFile* entry, const std::wstring& text);
    bool MayForceIdentity() { return !m_device.RequireSetting(L"ForceCustomerID").empty(); }

    CDevice& m_device;
    IDevice& m_host;
    com::Ptr<CProfile> m_profile;
    com::Ptr<IFile> m_objects;  // entry "FFFE"
};

std::wstring Download::ReadEntry(IFile* entry) {
    com::Bstr text;
    com::Check(entry->get_ValueText(text.Out()));
    return text.Text();
}

void Download::WriteEntry(IFile* entry, const std::wstring& text) {
    if (!entry) throw com::Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    com::Check(entry->put_ValueText(com::Bstr(text).Get()));
}

Outcome Download::WriteApplication(const std::wstring& appFile) {
    VARIANT_BOOL done = VARIANT_FALSE;
    com::Check(m_host.GoSoftOffLine(&done));
    m_objects = m_device.FindDeviceFile(L"FFFE");
    if (!m_profile->FriendSet(appFile, &m_device)) return Outcome::kNoApplication;
    const std::wstring version = m_profile->FWVersion();
    if (!version.empty() && version != m_device.IDeviceEx_VantorFirmwareVersion())
        return Outcome::kOtherFirmware;
    if (m_profile->CompleteCDB().empty()) return Outcome::kNoApplication;
    const Outcome identity = WriteIdentity();
    return identity == Outcome::kSuccess ? WriteObjects() : identity;
}

Outcome Download::WriteIdentity() {
    // None for want of memory is no device without an identity.
    const auto entry = com::InFull([&] { return m_device.FindDeviceFile(L"FFFA"); });
    if (!entry) return Outcome::kSuccess;
    std::wstring identity = ReadEntry(entry.Get());
    // The file's device ID is read as a decimal number and compared as a hexadecimal word: a file's
    // 0104 stands for the device's 0068.
    const std::wstring deviceCode = DeviceCodeAsWord(m_profile->DeviceID());
    if (LeadingFour(identity) != deviceCode) {
        if (!MayForceIdentity()) return Outcome::kOtherDevice;
        identity = deviceCode + TrailingFour(identity);
        WriteEntry(entry.Get(), identity);
    }
    const std::wstring customer = TrailingFour(identity);
    if (customer == m_profile->CustomerID()) return Outcome::kSuccess;
    if (customer != L"0000" && !MayForceIdentity()) return Outcome::kOtherCustomer;
    WriteEntry(entry.Get(), LeadingFour(identity) + m_profile->CustomerID());
    return Outcome::kSuccess;
}

Outcome Download::WriteObjects() {
    com::Bstr programId;
    com::Check(m_host.get_ProgramId(programId.Out()));
    const std::wstring& inFile = m_profile->ProgramID();
    // Enter presses No: going on with another program is for those who mean it.
    if (!inFile.empty() && inFile != programId.View() &&
        ui::ShowMessage(kProgramIdQuestion, MB_YESNO | MB_DEFBUTTON2, L"Warning") != IDYES)
        return Outcome::kProgramIdRefused;
    WriteEntry(m_objects.Get(), m_profile->CompleteCDB());
    return Outcome::kSuccess;
}

void Download::WriteValues() {
    const std::wstring setting = m_device.RequireSetting(L"DownLoadCPs");
    if (!setting.empty() && StrictNumber(setting) == 1.0) {
        WriteEntry(m_device.FindDeviceFile(L"1").Get(), m_profile->CPValues());
        WriteConfigurationVariables();
    }
    VARIANT_BOOL done = VARIANT_FALSE;
    com::Check(m_host.GoOnLine(&done));
}

void Download::WriteConfigurationVariables() {
    if (!m_profile->NVs()) return;
    for (const com::Ptr<CNV>& variable : CNVs::Records(m_profile->NVs()->All())) {
        ui::PumpMessages();
        const RecordText& record = variable->Record();
        if (!record.isNC) continue;
        com::Ptr<IDispatch> points;
        com::Check(m_host.get_NetworkVariables(points.Out()));
        const com::Ptr<IDispatch> point =
            com::Get(points.Get(), host::points::kItem,
                     {com::Variant(DecimalText(record.connectionIndex))})
                .AsObject();
        com::Put(point.Get(), host::point::kRawValue, com::Variant(record.rawValue));
    }
}

// Tells the host's network. A device without one has nobody to tell, which is no failure.
void Report(IDevice& host, Outcome outcome) {
    com::Ptr<INetwork> network;
    com::Check(host.get_Network(network.Out()));
    if (!network) return;
    long code = static_cast<long>(outcome);
    com::Ptr<IDevice> device(&host);
    com::Check(network->Report(&code, device.InOut()));
}

bool Focused(IDevice& host) {
    VARIANT_BOOL granted = VARIANT_FALSE;
    com::Check(host.Focus(nullptr, &granted));
    return granted != VARIANT_FALSE;
}

}  // namespace

std::int32_t CDevice::IDeviceEx_AppDownload(const std::wstring& appFile) {
    Outcome outcome = Outcome::kFailedBeforeValues;
    Outcome failure = outcome;
    try {
        if (!Focused(*moDevice)) return 0;
        Download download(*this);
        outcome = download.WriteApplication(appFile);
        if (outcome == Outcome::kSuccess) {
            failure = Outcome::kFailedWithValues;
            download.WriteValues();
            Report(*moDevice, Outcome::kSuccess);
        }
    } catch (...) {
        outcome = failure;
    }
    SetErrorInfo(0, nullptr);
    if (outcome == Outcome::kSuccess)
        RaiseChangedApplication();
    else
        com::Quietly([&] { Report(*moDevice, outcome); });  // a failure has nowhere else to go
    return 0;
}

}  // namespace quillon
