// Loading application files in tests.
#pragma once

#include <functional>
#include <string>

#include "component/probe.h"
#include "component/record_support.h"
#include "model/CProfile.h"
#include "support/temp_folder.h"

namespace quillon::test {

// A device of which a profile needs nothing but the type catalogue.
class StandInDevice final : public com::Object<com::Dual<_CDevice>> {
public:
    explicit StandInDevice(com::Ptr<IDispatch> catalogue = nullptr)
        : m_catalogue(std::move(catalogue)) {
        ++g_probes;
    }

    STDMETHODIMP get_XMLSNVTs(IDispatch** catalogue) override {
        if (++asked == failsAt) return E_ACCESSDENIED;
        if (asked == shortAt) com::Quietly([] { throw std::bad_alloc(); });
        *catalogue = com::Ptr<IDispatch>(m_catalogue).Detach();
        return S_OK;
    }
    STDMETHODIMP get_AnalogInput1_High(short*) override { return E_NOTIMPL; }
    STDMETHODIMP get_AnalogInput1_Low(short*) override { return E_NOTIMPL; }
    STDMETHODIMP get_AnalogInput1_Offset(short*) override { return E_NOTIMPL; }
    STDMETHODIMP get_ProductionYear(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_ProductionWeek(BSTR*) override { return E_NOTIMPL; }

    int asked = 0;
    int failsAt = 0;  // which of the calls for the catalogue fails; 0: none
    int shortAt = 0;  // at which of them the plug-in meets a shortage of memory; 0: none

private:
    ~StandInDevice() override { --g_probes; }

    com::Ptr<IDispatch> m_catalogue;
};

// A file with these parts; those not given are left out.
struct FileParts {
    std::string firmwareVersion = "<FWVersion>V2.10</FWVersion>";
    std::string exported = "<Header>000000000104002A</Header><AppObjects>0A1B2C3D</AppObjects>";
    std::string profile =
        "<ProgramID>9FFFFF0512040410</ProgramID><UserCPFile/><SDString>x"
        "</SDString>";
    std::string lists = {};
};

inline std::string FileText(const FileParts& parts) {
    return "<?xml version=\"1.0\"?><Configuration>" + parts.firmwareVersion + "<Export>" +
           parts.exported + "</Export><Profile>" + parts.profile + parts.lists +
           "</Profile></Configuration>";
}

class ProfileTest : public ProbeTest {
protected:
    // Loads a file of this content; success is expected, and gives no message.
    void Load(std::string_view bytes) { EXPECT_TRUE(LoadFile(folder.Write(L"a.app", bytes))); }
    void Load(const FileParts& parts) { Load(FileText(parts)); }

    // What FriendSet answers, its result being success in any case.
    bool LoadFile(const std::wstring& path) {
        _CDevice* given = device.Get();
        VARIANT_BOOL loaded = 7;
        EXPECT_EQ(profile->FriendSet(com::Bstr(path).Get(), &given, &loaded), S_OK);
        return loaded != VARIANT_FALSE;
    }
    // Loads a file that is refused with the message to the operator.
    void ExpectRefused(const std::wstring& path) {
        boxes().Answer(IDOK);
        EXPECT_FALSE(LoadFile(path));
        ASSERT_FALSE(boxes().Seen().empty());
        EXPECT_EQ(boxes().Seen().back().text, L"Bad Application file: " + path);
        EXPECT_EQ(profile->ErrorRecord().number, static_cast<HRESULT>(0x80040215));
    }
    void ExpectRefused(std::string_view bytes) { ExpectRefused(folder.Write(L"bad.app", bytes)); }

    std::wstring Text(HRESULT (STDMETHODCALLTYPE _CProfile::*get)(BSTR*)) {
        return TextOf(com::Ptr<_CProfile>(profile), get);
    }
    // The names of the records, each closed by a blank; "none" for no list.
    template <class List>
    static std::wstring Names(const com::Ptr<List>& list) {
        if (!list) return L"none";
        std::wstring names;
        for (const auto& record : list->All()) names += record->Record().name + L" ";
        return names;
    }
    std::wstring NVs() const { return Names(profile->NVs()); }
    std::wstring CPs() const { return Names(profile->CPs()); }

    TempFolder folder;
    com::Ptr<StandInDevice> device = com::Make<StandInDevice>();
    com::Ptr<CProfile> profile = com::Make<CProfile>();
};

}  // namespace quillon::test
