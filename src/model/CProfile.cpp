#include "model/CProfile.h"

#include <new>

#include "com/module.h"
#include "model/header_codes.h"
#include "ui/message_box.h"
#include "ui/pump.h"

namespace quillon {

namespace {

// Each is found at any depth, as the first in document order. The single step from the root keeps
// the search to one walk over the document.
const wchar_t* const kProgramId = L"descendant::Configuration/Profile/ProgramID";
const wchar_t* const kName = L"descendant::Configuration/Profile/Name";
const wchar_t* const kUserCpFile = L"descendant::Configuration/Profile/UserCPFile";
const wchar_t* const kFileTypeIIVersion = L"descendant::Configuration/Profile/FileTypeIIVersion";
const wchar_t* const kFirmwareVersion = L"descendant::Configuration/FWVersion";
const wchar_t* const kAppObjects = L"descendant::Configuration/Export/AppObjects";
const wchar_t* const kHeader = L"descendant::Configuration/Export/Header";
const wchar_t* const kNetworkVariables = L"descendant::Configuration/Profile/NVs";
const wchar_t* const kConfigurationProperties = L"descendant::Configuration/Profile/CPs";

// A missing element, or one without a text, leaves the field.
void ReadText(IXMLDOMNode* document, const wchar_t* path, std::wstring& field) {
    com::Quietly([&] {
        const com::Ptr<IXMLDOMNode> element = com::FindNode(document, path);
        if (!element) return;
        if (auto text = com::FirstChildText(element.Get())) field = std::move(*text);
    });
}

bool IsComment(IXMLDOMNode* node) {
    DOMNodeType kind = NODE_INVALID;
    com::Check(com::NoShortage(node->get_nodeType(&kind)));
    return kind == NODE_COMMENT;
}

}  // namespace

bool CProfile::FriendSet(const std::wstring& appFile, _CDevice* device) {
    m_device = device;
    com::XmlLoad outcome;
    com::Quietly([&] {
        m_document = com::NewXmlDocument();
        outcome = com::LoadXmlFile(m_document.Get(), appFile);
    });
    if (!outcome.loaded) {
        Refuse(appFile, outcome);
        return false;
    }
    // Window messages are handled while the lists are read: another load may replace the members.
    const com::Ptr<IXMLDOMDocument2> document = m_document;
    const com::Ptr<_CDevice> target(device);
    const com::Ptr<CNVs> hadNVs = m_nvs;
    const com::Ptr<CCPs> hadCPs = m_cps;
    // What is missing from the file is missing from the profile, but nothing for want of memory: a
    // download would leave it out, and the checks that go by it, too.
    const auto read = [&](auto& list, const wchar_t* path) {
        com::Quietly([&] { ReadList(document.Get(), target.Get(), list, path); });
    };
    try {
        com::InFull([&] {
            ReadTexts();
            read(m_nvs, kNetworkVariables);
            read(m_cps, kConfigurationProperties);
            com::Quietly([&] { JoinCPValues(); });
        });
    } catch (const std::bad_alloc&) {
        // Another load shall not take them for whole.
        m_nvs = hadNVs;
        m_cps = hadCPs;
        throw;
    }
    return true;
}

void CProfile::Refuse(const std::wstring& appFile, const com::XmlLoad& outcome) {
    ui::ShowMessage(L"Bad Application file: " + appFile, MB_OK | MB_ICONSTOP);
    m_error = {kErrorBadApplicationFile, com::ModuleName(),
               outcome.excerpt + L"\r" + outcome.reason};
    SetErrorInfo(0, com::MakeErrorRecord(m_error.source, m_error.description).Get());
}

void CProfile::ReadTexts() {
    IXMLDOMNode* document = m_document.Get();
    ReadText(document, kProgramId, m_programId);
    ReadText(document, kName, m_name);
    ReadText(document, kUserCpFile, m_userCpFile);
    ReadText(document, kFileTypeIIVersion, m_fileTypeIIVersion);
    ReadText(document, kFirmwareVersion, m_firmwareVersion);
    ReadText(document, kAppObjects, m_completeCdb);
    std::wstring header;
    ReadText(document, kHeader, header);
    HeaderCodes codes = ReadHeaderCodes(header);
    m_deviceId = std::move(codes.deviceId);
    m_customerId = std::move(codes.customerId);
}

template <class List>
void CProfile::ReadList(IXMLDOMNode* document, _CDevice* device, com::Ptr<List>& list,
                        const wchar_t* path) {
    com::Ptr<IDispatch> catalogue;
    if (!device) throw com::Error(E_POINTER);
    com::Check(device->get_XMLSNVTs(catalogue.Out()));
    if (list) return;
    const com::Ptr<IXMLDOMNode> container = com::FindNode(document, path);
    if (!container) return;
    com::Ptr<List> own;
    for (com::Ptr<IXMLDOMNode> child = com::FirstChild(container.Get()); child;
         child = com::NextSibling(child.Get())) {
        if (IsComment(child.Get())) continue;
        ui::PumpMessages();
        if (!list && !own) list = own = com::Make<List>();
        // A load started from inside the messages has read the list.
        if (list.Get() != own.Get()) return;
        own->Add(com::LocalName(child.Get()), child.Get(), catalogue.Get());
    }
}

void CProfile::JoinCPValues() {
    if (!m_cps) return;
    const com::Ptr<CCPs> cps = m_cps;
    std::wstring joined;
    for (const com::Ptr<CCP>& record : CCPs::Records(cps->All())) {
        ui::PumpMessages();
        joined += record->Record().rawValue;
    }
    m_cpValues = std::move(joined);
}

std::wstring CProfile::FWVersion() const {
    return m_firmwareVersion.empty() ? std::wstring() : m_firmwareVersion.substr(1);
}

STDMETHODIMP CProfile::FriendSet(BSTR appFile, _CDevice** device, VARIANT_BOOL* loaded) {
    const com::Ptr<_CProfile> hold(this);
    return com::Gate(loaded, [&] {
        const com::Ptr<_CDevice> target(device ? *device : nullptr);
        return FriendSet(com::Text(appFile), target.Get());
    });
}

STDMETHODIMP CProfile::get_CPs(_CCPs** list) {
    return com::Gate(list, [&] { return m_cps; });
}
STDMETHODIMP CProfile::get_NVs(_CNVs** list) {
    return com::Gate(list, [&] { return m_nvs; });
}
STDMETHODIMP CProfile::get_CPValues(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_cpValues); });
}
STDMETHODIMP CProfile::get_FileTypeIIVersion(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_fileTypeIIVersion); });
}
STDMETHODIMP CProfile::get_UserCPFile(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_userCpFile); });
}
STDMETHODIMP CProfile::get_FWVersion(BSTR* text) {
    return com::Gate(text, [&] { return FWVersion(); });
}
STDMETHODIMP CProfile::get_CompleteCDB(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_completeCdb); });
}
STDMETHODIMP CProfile::get_Name(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_name); });
}
STDMETHODIMP CProfile::get_DeviceID(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_deviceId); });
}
STDMETHODIMP CProfile::get_CustomerID(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_customerId); });
}
STDMETHODIMP CProfile::get_ProgramID(BSTR* text) {
    return com::Gate(text, [&] { return std::wstring_view(m_programId); });
}

}  // namespace quillon
