#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"
#include "com/xml_document.h"
#include "host_members.h"
#include "late_call.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 9;
constexpr int kPoints = 10'000;  // of each of the two kinds

constexpr CLSID kDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

// Names and constant texts of the document, made once.
struct Words {
    com::Bstr direction{L"Direction"}, selfDocumentation{L"SISD"}, type{L"SNVTType"};
    com::Bstr length{L"Length"}, index{L"ConnectionIndex"}, raw{L"RawValue"}, shown{L"Value"};
    com::Bstr output{L"Output"}, input{L"Input"}, isConfiguration{L"IsNC"};
};

// Builds and saves the application file with the calls that it takes and no others.
class BareExport {
public:
    explicit BareExport(const Room& room)
        : m_device(room.bare.Get()), m_identity(room.subject.As<IDeviceEx>()) {
        com::Check(CoCreateInstance(kDocument60, nullptr, CLSCTX_INPROC_SERVER,
                                    __uuidof(IXMLDOMDocument2), m_document.OutVoid()));
        m_document->put_async(VARIANT_FALSE);
    }

    void Run(const std::wstring& file) {
        com::Ptr<IXMLDOMProcessingInstruction> declaration;
        com::Check(m_document->createProcessingInstruction(
            com::Bstr(L"xml").Get(), com::Bstr(L"version=\"1.0\"").Get(), declaration.Out()));
        com::Check(m_document->appendChild(declaration.Get(), nullptr));
        const auto root = Container(m_document.Get(), L"Configuration");
        WriteIdentity(root.Get());
        const auto profile = Container(root.Get(), L"Profile");
        WriteDevice(profile.Get());
        com::Ptr<IDispatch> points;
        com::Check(m_device->get_NetworkVariables(points.Out()));
        WritePoints(profile.Get(), L"NVs", points.Get(), true);
        com::Check(m_device->get_ConfigProperties(points.Out()));
        WritePoints(profile.Get(), L"CPs", points.Get(), false);
        com::Check(m_document->save(com::Variant(file)));
    }

private:
    com::Ptr<IXMLDOMElement> Element(IXMLDOMNode* parent, BSTR name) {
        com::Ptr<IXMLDOMElement> element;
        com::Check(m_document->createElement(name, element.Out()));
        com::Check(parent->appendChild(element.Get(), nullptr));
        return element;
    }
    com::Ptr<IXMLDOMElement> Container(IXMLDOMNode* parent, const wchar_t* name) {
        return Element(parent, com::Bstr(name).Get());
    }
    void Text(IXMLDOMNode* parent, BSTR name, BSTR text) {
        com::Check(Element(parent, name)->put_text(text));
    }
    void Text(IXMLDOMNode* parent, BSTR name, const com::Variant& text) {
        Text(parent, name, text.bstrVal);
    }
    void Number(IXMLDOMNode* parent, BSTR name, const com::Variant& number) {
        Text(parent, name, com::Bstr(std::to_wstring(number.lVal)).Get());
    }
    void Named(IXMLDOMNode* parent, const wchar_t* name, std::wstring_view text) {
        Text(parent, com::Bstr(name).Get(), com::Bstr(text).Get());
    }

    std::wstring EntryText(long identifier) {
        com::Ptr<IFiles> files;
        com::Check(m_device->get_Files(files.Out()));
        long count = 0;
        com::Check(files->get_Count(&count));
        for (long i = 1; i <= count; ++i) {
            BarePump();
            com::Ptr<IFile> entry;
            long own = 0;
            com::Bstr text;
            com::Check(files->get_Item(i, entry.Out()));
            com::Check(entry->get_Identifier(&own));
            if (own != identifier) continue;
            com::Check(entry->get_ValueText(text.Out()));
            return text.Text();
        }
        return {};
    }

    void WriteIdentity(IXMLDOMNode* root) {
        com::Bstr version;
        com::Check(m_identity->get_VantorFirmwareVersion(version.Out()));
        Named(root, L"FWVersion", L"V" + version.Text());
        const auto container = Container(root, L"Export");
        Named(container.Get(), L"Header", L"00000000" + EntryText(-6));
        Named(container.Get(), L"AppObjects", EntryText(-2));
    }

    void WriteDevice(IXMLDOMNode* profile) {
        com::Bstr text;
        com::Check(m_device->get_ProgramId(text.Out()));
        Named(profile, L"ProgramID", text.View());
        com::Check(m_device->get_UserCPFile(text.Out()));
        Named(profile, L"UserCPFile", text.View());
        com::Check(m_device->get_SISD(text.Out()));
        Named(profile, L"SDString", text.View());
    }

    void WritePoints(IXMLDOMNode* profile, const wchar_t* name, IDispatch* points, bool variables) {
        if (BareGet(points, host::points::kCount).lVal < 1) return;
        const auto list = Container(profile, name);
        DISPPARAMS none{};
        com::Variant all;
        com::Check(points->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                  DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none, &all, nullptr,
                                  nullptr));
        com::Ptr<IEnumVARIANT> enumerator;
        com::Check(all.punkVal->QueryInterface(IID_IEnumVARIANT, enumerator.OutVoid()));
        com::Variant point;
        while (enumerator->Next(1, point.Out(), nullptr) == S_OK) {
            WritePoint(list.Get(), point.pdispVal, variables);
            BarePump();
        }
    }

    void WritePoint(IXMLDOMNode* list, IDispatch* point, bool variable) {
        const com::Variant name = BareGet(point, host::point::kName);
        const auto element = Element(list, name.bstrVal);
        if (variable) {
            const bool output =
                BareGet(point, host::point::kDirection).lVal == host::point::kOutput;
            Text(element.Get(), m_words.direction.Get(),
                 output ? m_words.output.Get() : m_words.input.Get());
        }
        Text(element.Get(), m_words.selfDocumentation.Get(),
             BareGet(point, host::point::kSelfDocumentation));
        const com::Variant type = BareGet(point, host::point::kType);
        Text(element.Get(), m_words.type.Get(), BareGet(type.pdispVal, host::type::kName));
        Number(element.Get(), m_words.length.Get(), BareGet(type.pdispVal, host::type::kLength));
        Number(element.Get(), m_words.index.Get(), BareGet(point, host::point::kIndex));
        if (variable) {
            if (!BareGet(point, host::point::kIsConfiguration).boolVal) return;
            com::Check(element->setAttribute(m_words.isConfiguration.Get(), com::Variant(L"1")));
        }
        Text(element.Get(), m_words.raw.Get(), BareGet(point, host::point::kRawValue));
        Text(element.Get(), m_words.shown.Get(), BareGet(point, host::point::kFormattedValue));
    }

    IDevice* m_device;
    com::Ptr<IDeviceEx> m_identity;
    com::Ptr<IXMLDOMDocument2> m_document;
    Words m_words;
};

std::string ContentOf(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// Every member that either side asks of a point, a collection or a type.
constexpr const wchar_t* kReads[] = {L"IDevice.NetworkVariables",
                                     L"IDevice.ConfigProperties",
                                     L"Points.Count",
                                     L"Points._NewEnum",
                                     L"Points.Item",
                                     L"Point.Name",
                                     L"Point.Key",
                                     L"Point.Index",
                                     L"Point.NVDirection",
                                     L"Point.NVIsConfig",
                                     L"Point.SelfDoc",
                                     L"Point.SNVType",
                                     L"Point.RawValue",
                                     L"Point.Value",
                                     L"Point.FormattedValue",
                                     L"Type.Name",
                                     L"Type.Length"};

template <class F>
std::vector<long> ReadsDuring(const Session& session, F&& run) {
    com::Check(session.Host().Clear());
    run();
    std::vector<long> counts;
    for (const wchar_t* member : kReads) counts.push_back(session.Calls(member));
    return counts;
}

}  // namespace

void MeasureExport(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kPoints, .properties = kPoints});
    const std::wstring bareFile = (session.Folder() / L"bare.app").native();
    const auto subject = [&] {
        return Seconds([&] { session.ExportApplication(room, L"subject.app"); });
    };
    // Letting go of the document counts, for the export does that, too, before it returns.
    const auto floor = [&] { return Seconds([&] { BareExport(room).Run(bareFile); }); };
    if (ReadsDuring(session, subject) != ReadsDuring(session, floor))
        throw std::runtime_error("the export and the bare calls read the host differently");
    if (ContentOf((session.Folder() / L"subject.app").native()) != ContentOf(bareFile))
        throw std::runtime_error("the export and the bare calls wrote different documents");
    table.AddRatio("export of 20,000 points, a point",
                   "the same host reads, building and saving the same document", 1.2,
                   Compare(kRounds, subject, floor), 2 * kPoints);
}

}  // namespace quillon::benchmarks
