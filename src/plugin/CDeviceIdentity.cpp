// CDevice: what a device is and in what state its application is.
#include "com/late.h"
#include "host_members.h"
#include "plugin/CDevice.h"
#include "plugin/number_text.h"
#include "ui/pump.h"

namespace quillon {

namespace {

constexpr std::int32_t kNoneConfigured = -1;

// The configuration property under a key; empty when there is none.
com::Ptr<IDispatch> ConfigProperty(IDevice& device, const std::wstring& key) {
    return com::Quietly([&] {
        com::Ptr<IDispatch> points;
        com::Check(device.get_ConfigProperties(points.Out()));
        return com::Get(points.Get(), host::points::kItem, {com::Variant(key)}).AsObject();
    });
}

// The first byte of an array of bytes; 0 when it is none or empty.
std::uint8_t FirstByte(SAFEARRAY* bytes) {
    if (!bytes || SafeArrayGetDim(bytes) != 1 || SafeArrayGetElemsize(bytes) != 1) return 0;
    long lower = 0;
    long upper = -1;
    SafeArrayGetLBound(bytes, 1, &lower);
    SafeArrayGetUBound(bytes, 1, &upper);
    void* data = nullptr;
    if (upper < lower || FAILED(SafeArrayAccessData(bytes, &data))) return 0;
    const std::uint8_t first = *static_cast<const std::uint8_t*>(data);
    SafeArrayUnaccessData(bytes);
    return first;
}

}  // namespace

SelfIdentification CDevice::ReadSelfIdentification() {
    com::Bstr sisd;
    com::Check(moDevice->get_SISD(sisd.Out()));
    const std::size_t inFront = SelfIdentificationMark(sisd.View()).value_or(sisd.View().size());
    for (std::size_t character = 0; character < inFront; ++character) ui::PumpMessages();
    return ParseSelfIdentification(sisd.View()).value_or(SelfIdentification());
}

std::wstring CDevice::IDeviceEx_VantorFirmwareType() {
    return com::Quietly([&] { return ReadSelfIdentification().type; });
}

std::wstring CDevice::IDeviceEx_VantorFirmwareVersion() {
    return com::Quietly([&] { return ReadSelfIdentification().version; });
}

std::wstring CDevice::IDeviceEx_VantorOSVersion() {
    return com::Quietly([&] { return ReadSelfIdentification().os; });
}

std::uint8_t CDevice::IDeviceEx_VantorAppStatus() {
    com::Quietly([&] { SetSettingsPath(); });
    if (const com::Ptr<IFile> entry = FindDeviceFile(L"FFFD")) {
        com::Quietly([&] {
            long address = 0;
            com::Check(entry->get_Address(&address));
            m_statusAddress = address;
        });
    }
    if (m_statusAddress == 0) return 0;
    return com::Quietly([&]() -> std::uint8_t {
        SAFEARRAY* bytes = nullptr;
        com::Check(moDevice->ReadMemoryUnicode(m_statusAddress, 1, &bytes));
        const std::uint8_t first = FirstByte(bytes);
        SafeArrayDestroy(bytes);
        return first;
    });
}

std::int32_t CDevice::LookUpApplicationCodeIndex() {
    const std::wstring text = ReadSetting(L"CP_AppCode");
    return text.empty() ? kNoneConfigured : LenientWhole(text);
}

std::wstring CDevice::IDeviceEx_ApplicationCode() {
    return com::Quietly([&]() -> std::wstring {
        if (m_applicationCodeIndex == 0)
            m_applicationCodeIndex = LookUpApplicationCodeIndex();
        else
            com::Quietly([&] { SetSettingsPath(); });
        if (m_applicationCodeIndex < 1) return {};
        const std::wstring key = DecimalText(m_applicationCodeIndex);
        com::Ptr<IDispatch> property = ConfigProperty(*moDevice, key);
        if (!property) {
            // The host may need a first question before it knows its properties.
            AskForSignOfLife();
            property = ConfigProperty(*moDevice, key);
        }
        return com::Get(property.Get(), host::point::kValue).AsText();
    });
}

bool CDevice::ReadFactoryData() {
    return com::Quietly([&] {
        const com::Ptr<IFile> entry = FindDeviceFile(L"FFFF");
        if (!entry) return false;
        com::Bstr text;
        com::Check(entry->get_ValueText(text.Out()));
        m_factoryText = text.Text();
        if (const auto data = ParseFactoryData(m_factoryText)) m_factory = *data;
        return true;
    });
}

}  // namespace quillon
