// CDevice: saving the device's application to a file. Format: docs/formats/application-file.md.
#include <optional>
#include <vector>

#include "com/late.h"
#include "com/xml_document.h"
#include "host_members.h"
#include "model/xml_text.h"
#include "plugin/CDevice.h"
#include "ui/message_box.h"
#include "ui/pump.h"

namespace quillon {

namespace {

// Writes one document. What cannot be read is written as an empty text; what a document cannot hold
// (control characters) is left out of the text. What the document itself refuses is thrown.
class ApplicationWriter {
public:
    ApplicationWriter() : m_document(com::NewXmlDocument()) {
        com::Ptr<IXMLDOMProcessingInstruction> declaration;
        com::Check(m_document->createProcessingInstruction(
            com::Bstr(L"xml").Get(), com::Bstr(L"version=\"1.0\"").Get(), declaration.Out()));
        com::Check(m_document->appendChild(declaration.Get(), nullptr));
    }

    IXMLDOMNode* Document() { return m_document.Get(); }

    com::Ptr<IXMLDOMElement> Container(IXMLDOMNode* parent, const wchar_t* name) {
        return com::AppendElement(m_document.Get(), parent, name);
    }

    // An element with the text that `read` gives.
    template <class F>
    void Element(IXMLDOMNode* parent, const wchar_t* name, F&& read) {
        const std::wstring text = com::Quietly([&]() -> std::wstring { return read(); });
        com::AppendText(m_document.Get(), parent, name, XmlCharacters(text));
    }

    void Save(const std::wstring& path) { com::SaveXmlFile(m_document.Get(), path); }

    // Adds NVs or CPs with one element for each point, where there is at least one; nothing for a
    // collection that cannot be read.
    template <class F>
    void Points(IXMLDOMNode* profile, const wchar_t* name, IDispatch* points, F&& writeOne);

    void WriteNetworkVariable(IXMLDOMNode* list, IDispatch* point);
    void WriteConfigurationProperty(IXMLDOMNode* list, IDispatch* point);

private:
    com::Ptr<IXMLDOMElement> PointElement(IXMLDOMNode* list, IDispatch* point);
    void WriteDescription(IXMLDOMNode* element, IDispatch* point);
    void WriteValues(IXMLDOMNode* element, IDispatch* point);

    com::Ptr<IXMLDOMDocument2> m_document;
};

std::wstring TextOf(IDispatch* object, const wchar_t* member) {
    return com::Get(object, member).AsText();
}

std::wstring NumberTextOf(IDispatch* object, const wchar_t* member) {
    return std::to_wstring(com::Get(object, member).AsNumber());
}

// A flag or number that cannot be read counts as not set.
bool IsTrue(IDispatch* point, const wchar_t* member) {
    return com::Quietly([&] { return com::Get(point, member).AsBool(); });
}

bool IsOutput(IDispatch* point) {
    return com::Quietly([&] {
        return com::Get(point, host::point::kDirection).AsNumber() == host::point::kOutput;
    });
}

// The points of a host collection, in its order, held before the first is written: messages are
// handled in between, and the host may change the collection meanwhile.
std::vector<com::Ptr<IDispatch>> Snapshot(IDispatch* points) {
    std::vector<com::Ptr<IDispatch>> all;
    com::Ptr<IEnumVARIANT> enumerator = com::Enumerate(points);
    for (;;) {
        com::Variant point;
        ULONG fetched = 0;
        const HRESULT next = enumerator->Next(1, &point, &fetched);
        com::Check(next);
        if (next != S_OK || fetched != 1) return all;
        if (auto object = com::Quietly([&] { return point.AsObject(); })) all.push_back(object);
    }
}

template <class F>
void ApplicationWriter::Points(IXMLDOMNode* profile, const wchar_t* name, IDispatch* points,
                               F&& writeOne) {
    const auto all = com::Quietly([&]() -> std::optional<std::vector<com::Ptr<IDispatch>>> {
        if (com::Get(points, host::points::kCount).AsNumber() < 1) return std::nullopt;
        return Snapshot(points);
    });
    if (!all) return;
    const com::Ptr<IXMLDOMElement> list = Container(profile, name);
    for (const com::Ptr<IDispatch>& point : *all) {
        writeOne(list.Get(), point.Get());
        ui::PumpMessages();
    }
}

// Empty when the point's name is none for an element: the point is then left out whole.
com::Ptr<IXMLDOMElement> ApplicationWriter::PointElement(IXMLDOMNode* list, IDispatch* point) {
    return com::Quietly([&]() -> com::Ptr<IXMLDOMElement> {
        const std::wstring name = TextOf(point, host::point::kName);
        return IsXmlName(name) ? Container(list, name.c_str()) : nullptr;
    });
}

void ApplicationWriter::WriteDescription(IXMLDOMNode* element, IDispatch* point) {
    Element(element, L"SISD", [&] { return TextOf(point, host::point::kSelfDocumentation); });
    const auto type = com::Quietly([&] { return com::Get(point, host::point::kType).AsObject(); });
    Element(element, L"SNVTType", [&] { return TextOf(type.Get(), host::type::kName); });
    Element(element, L"Length", [&] { return NumberTextOf(type.Get(), host::type::kLength); });
    Element(element, L"ConnectionIndex", [&] { return NumberTextOf(point, host::point::kIndex); });
}

void ApplicationWriter::WriteValues(IXMLDOMNode* element, IDispatch* point) {
    Element(element, L"RawValue", [&] { return TextOf(point, host::point::kRawValue); });
    Element(element, L"Value", [&] { return TextOf(point, host::point::kFormattedValue); });
}

void ApplicationWriter::WriteNetworkVariable(IXMLDOMNode* list, IDispatch* point) {
    const com::Ptr<IXMLDOMElement> element = PointElement(list, point);
    if (!element) return;
    Element(element.Get(), L"Direction",
            [&] { return std::wstring(IsOutput(point) ? L"Output" : L"Input"); });
    WriteDescription(element.Get(), point);
    if (!IsTrue(point, host::point::kIsConfiguration)) return;
    com::Check(element->setAttribute(com::Bstr(L"IsNC").Get(), com::Variant(L"1")));
    WriteValues(element.Get(), point);
}

void ApplicationWriter::WriteConfigurationProperty(IXMLDOMNode* list, IDispatch* point) {
    const com::Ptr<IXMLDOMElement> element = PointElement(list, point);
    if (!element) return;
    WriteDescription(element.Get(), point);
    WriteValues(element.Get(), point);
}

using TextMember = HRESULT (STDMETHODCALLTYPE IDevice::*)(BSTR*);

std::wstring DeviceText(IDevice& device, TextMember member) {
    com::Bstr text;
    com::Check((device.*member)(text.Out()));
    return text.Text();
}

std::wstring EntryText(IFile* entry) {
    com::Bstr text;
    com::Check(entry->get_ValueText(text.Out()));
    return text.Text();
}

void WriteIdentity(ApplicationWriter& writer, IXMLDOMNode* root, CDevice& device) {
    writer.Element(root, L"FWVersion",
                   [&] { return L"V" + device.IDeviceEx_VantorFirmwareVersion(); });
    const auto container = writer.Container(root, L"Export");
    const com::Ptr<IFile> identity = device.FindDeviceFile(L"FFFA");
    writer.Element(container.Get(), L"Header", [&]() -> std::wstring {
        if (!identity) return L"0000000000000000";
        return L"00000000" + com::Quietly([&] { return EntryText(identity.Get()); });
    });
    const com::Ptr<IFile> objects = device.FindDeviceFile(L"FFFE");
    writer.Element(container.Get(), L"AppObjects",
                   [&] { return objects ? EntryText(objects.Get()) : std::wstring(); });
}

void WriteProfile(ApplicationWriter& writer, IXMLDOMNode* root, CDevice& device) {
    const auto profile = writer.Container(root, L"Profile");
    IDevice& host = device.HostDevice();
    writer.Element(profile.Get(), L"ProgramID",
                   [&] { return DeviceText(host, &IDevice::get_ProgramId); });
    writer.Element(profile.Get(), L"UserCPFile",
                   [&] { return DeviceText(host, &IDevice::get_UserCPFile); });
    writer.Element(profile.Get(), L"SDString",
                   [&] { return DeviceText(host, &IDevice::get_SISD); });
    com::Ptr<IDispatch> variables;
    com::Ptr<IDispatch> properties;
    host.get_NetworkVariables(variables.Out());
    host.get_ConfigProperties(properties.Out());
    writer.Points(profile.Get(), L"NVs", variables.Get(),
                  [&](auto* list, auto* point) { writer.WriteNetworkVariable(list, point); });
    writer.Points(profile.Get(), L"CPs", properties.Get(),
                  [&](auto* list, auto* point) { writer.WriteConfigurationProperty(list, point); });
}

void WriteApplication(ApplicationWriter& writer, CDevice& device) {
    const auto root = writer.Container(writer.Document(), L"Configuration");
    WriteIdentity(writer, root.Get(), device);
    WriteProfile(writer, root.Get(), device);
}

}  // namespace

// A file that lacks what there was no memory for would be taken for the whole application later:
// the old one stays instead, and the operator is told.
bool CDevice::IDeviceEx_AppExport(const std::wstring& appFile) {
    try {
        ApplicationWriter writer;
        com::InFull([&] { WriteApplication(writer, *this); });
        writer.Save(appFile);
    } catch (...) {
        SetErrorInfo(0, nullptr);
        ui::ShowMessage(L"Error when saving the file: " + appFile +
                            L"\r\nCheck the available space on the driver.",
                        MB_OK | MB_ICONSTOP, L"Warning");
    }
    return false;
}

}  // namespace quillon
