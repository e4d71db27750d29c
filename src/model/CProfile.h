// One application file, loaded. Format: docs/formats/application-file.md.
#pragma once

#include <optional>
#include <string>

#include "com/class_info.h"
#include "com/dual.h"
#include "com/gate.h"
#include "com/object.h"
#include "com/xml_document.h"
#include "model/CCPs.h"
#include "model/CNVs.h"
#include "quillon_h.h"

namespace quillon {

// The failure that a file could not be loaded.
inline constexpr HRESULT kErrorBadApplicationFile = static_cast<HRESULT>(0x80040215);

// Created empty, loaded once, then read. What a file does not hold stays empty.
class CProfile final
    : public com::Object<com::Dual<_CProfile>, com::ClassInfo<CProfile>, com::ErrorInfoSupport> {
public:
    static inline const CLSID& kClass = ::CLSID_CProfile;

    STDMETHODIMP get_CPs(_CCPs** list) override;
    STDMETHODIMP get_CPValues(BSTR* text) override;
    STDMETHODIMP get_FileTypeIIVersion(BSTR* text) override;
    STDMETHODIMP get_UserCPFile(BSTR* text) override;
    STDMETHODIMP get_FWVersion(BSTR* text) override;
    STDMETHODIMP get_CompleteCDB(BSTR* text) override;
    STDMETHODIMP FriendSet(BSTR appFile, _CDevice** device, VARIANT_BOOL* loaded) override;
    STDMETHODIMP get_Name(BSTR* text) override;
    STDMETHODIMP get_DeviceID(BSTR* text) override;
    STDMETHODIMP get_CustomerID(BSTR* text) override;
    STDMETHODIMP get_NVs(_CNVs** list) override;
    STDMETHODIMP get_ProgramID(BSTR* text) override;

    // Loads the file; the device gives the type catalogue. False, after a message to the operator,
    // when the file cannot be read or is not well-formed; fields and lists then stay as they were.
    // The lists are read once: a second call keeps them. Handles window messages before each point.
    bool FriendSet(const std::wstring& appFile, _CDevice* device);

    // Number, source and description of the last load that failed; number 0 before.
    struct LastError {
        HRESULT number = S_OK;
        std::wstring source;
        std::wstring description;
    };
    const LastError& ErrorRecord() const { return m_error; }

    const std::wstring& ProgramID() const { return m_programId; }
    const std::wstring& DeviceID() const { return m_deviceId; }
    const std::wstring& CustomerID() const { return m_customerId; }
    const std::wstring& CompleteCDB() const { return m_completeCdb; }
    const std::wstring& CPValues() const { return m_cpValues; }
    // Without the letter in front.
    std::wstring FWVersion() const;
    // Empty when the file has no such list.
    const com::Ptr<CNVs>& NVs() const { return m_nvs; }
    const com::Ptr<CCPs>& CPs() const { return m_cps; }

private:
    void Refuse(const std::wstring& appFile, const com::XmlLoad& outcome);
    void ReadTexts();
    template <class List>
    void ReadList(IXMLDOMNode* document, _CDevice* device, com::Ptr<List>& list,
                  const wchar_t* path);
    void JoinCPValues();

    com::Ptr<IXMLDOMDocument2> m_document;
    com::Ptr<_CDevice> m_device;
    LastError m_error;
    std::wstring m_programId;
    std::wstring m_name;
    std::wstring m_userCpFile;
    std::wstring m_fileTypeIIVersion;
    std::wstring m_firmwareVersion;  // as stored, with its "V"
    std::wstring m_completeCdb;
    std::wstring m_deviceId;
    std::wstring m_customerId;
    std::wstring m_cpValues;
    com::Ptr<CNVs> m_nvs;
    com::Ptr<CCPs> m_cps;
};

}  // namespace quillon
