#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"
#include "com/xml_document.h"
#include "late_call.h"
#include "loading.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 9;
constexpr int kPoints = 10'000;  // of each of the two kinds

constexpr CLSID kDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

using Node = com::Ptr<IXMLDOMNode>;

// A file as the parser takes it fastest: a stream it would gather piece by piece first.
com::Variant BytesOf(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    const auto size = static_cast<ULONG>(std::filesystem::file_size(file));
    com::Variant bytes;
    bytes.parray = SafeArrayCreateVector(VT_UI1, 0, size);
    if (!bytes.parray) throw std::bad_alloc();
    bytes.vt = VT_ARRAY | VT_UI1;
    if (!stream.read(static_cast<char*>(bytes.parray->pvData), static_cast<std::streamsize>(size)))
        throw std::runtime_error("an exported file cannot be read");
    return bytes;
}

// The document as the plug-in wants it, by the parser alone.
com::Ptr<IXMLDOMDocument2> BareLoad(const std::wstring& file) {
    com::Ptr<IXMLDOMDocument2> document;
    com::Check(CoCreateInstance(kDocument60, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IXMLDOMDocument2), document.OutVoid()));
    document->put_async(VARIANT_FALSE);
    document->put_validateOnParse(VARIANT_FALSE);
    document->put_resolveExternals(VARIANT_FALSE);
    document->setProperty(com::Bstr(L"ProhibitDTD").Get(), com::Variant(true));
    com::Variant source = BytesOf(file);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    com::Check(document->load(source, &loaded));
    if (!loaded) throw std::runtime_error("the parser refuses an exported file");
    return document;
}

// What was seen in the document; also what keeps the visit from being left out.
struct Visit {
    long variables = 0;
    long properties = 0;
    long configurations = 0;
    UINT propertyRawCharacters = 0;
    UINT characters = 0;
};

// Runs over the children that are no comments.
template <class F>
void ForEachChild(IXMLDOMNode* parent, F&& visit) {
    Node child;
    HRESULT got = parent->get_firstChild(child.Out());
    while (got == S_OK) {
        DOMNodeType kind = NODE_INVALID;
        child->get_nodeType(&kind);
        if (kind != NODE_COMMENT) visit(child.Get());
        Node next;
        got = child->get_nextSibling(next.Out());
        child = std::move(next);
    }
}

// Reads the name of a node and the value of its first child; the name stays with the caller.
UINT ReadText(IXMLDOMNode* node, com::Bstr& name) {
    node->get_baseName(name.Out());
    Node first;
    com::Variant value;
    if (node->get_firstChild(first.Out()) != S_OK) return 0;
    first->get_nodeValue(&value);
    return value.vt == VT_BSTR ? SysStringLen(value.bstrVal) : 0;
}

void VisitAttributes(IXMLDOMNode* element, Visit& seen) {
    com::Ptr<IXMLDOMNamedNodeMap> attributes;
    element->get_attributes(attributes.Out());
    Node attribute;
    while (attributes->nextNode(attribute.Out()) == S_OK) {
        com::Bstr name;
        com::Bstr text;
        attribute->get_baseName(name.Out());
        attribute->get_text(text.Out());
        if (text.View() == L"1") ++seen.configurations;
    }
}

void VisitPoint(IXMLDOMNode* element, Visit& seen, UINT& rawCharacters) {
    BarePump();
    com::Bstr name;
    element->get_baseName(name.Out());
    VisitAttributes(element, seen);
    ForEachChild(element, [&](IXMLDOMNode* child) {
        com::Bstr childName;
        const UINT length = ReadText(child, childName);
        seen.characters += length;
        if (childName.View() == L"RawValue") rawCharacters += length;
    });
}

void VisitProfile(IXMLDOMNode* profile, Visit& seen) {
    UINT ignored = 0;
    ForEachChild(profile, [&](IXMLDOMNode* child) {
        com::Bstr name;
        seen.characters += ReadText(child, name);
        if (name.View() == L"NVs")
            ForEachChild(child, [&](IXMLDOMNode* point) {
                ++seen.variables;
                VisitPoint(point, seen, ignored);
            });
        if (name.View() == L"CPs")
            ForEachChild(child, [&](IXMLDOMNode* point) {
                ++seen.properties;
                VisitPoint(point, seen, seen.propertyRawCharacters);
            });
    });
}

// The whole document once, node by node, with a pump for each point, and one more for each property
// as joining their values takes.
Visit BareVisit(IXMLDOMDocument2* document) {
    Visit seen;
    com::Ptr<IXMLDOMElement> root;
    com::Check(document->get_documentElement(root.Out()));
    ForEachChild(root.Get(), [&](IXMLDOMNode* child) {
        com::Bstr name;
        seen.characters += ReadText(child, name);
        if (name.View() == L"Profile") VisitProfile(child, seen);
        if (name.View() == L"Export")
            ForEachChild(child,
                         [&](IXMLDOMNode* text) { seen.characters += ReadText(text, name); });
    });
    for (long i = 0; i < seen.properties; ++i) BarePump();
    return seen;
}

class Loading {
public:
    Loading(const Session& session, int points)
        : m_session(session),
          m_room(session.OpenRoom({.variables = points, .properties = points})),
          m_file(session.ExportApplication(m_room, (std::to_wstring(points) + L".app").c_str())) {}

    // Letting go of what was loaded is no part of either time.
    double SecondsOfSubject() const { return SecondsOfLoading(m_session, m_room, m_file); }

    double SecondsOfFloor() const {
        com::Ptr<IXMLDOMDocument2> document;
        Visit seen;
        return SecondsOfFloor(document, seen);
    }

    // Throws when the two have not seen the same points.
    void CheckSameWork() const {
        com::Ptr<_CProfile> profile;
        com::Ptr<IXMLDOMDocument2> document;
        Visit seen;
        SecondsOfLoading(m_session, m_room, m_file, profile);
        SecondsOfFloor(document, seen);
        com::Ptr<_CNVs> variables;
        com::Ptr<_CCPs> properties;
        com::Bstr values;
        long variableCount = 0;
        long propertyCount = 0;
        com::Check(profile->get_NVs(variables.Out()));
        com::Check(profile->get_CPs(properties.Out()));
        com::Check(profile->get_CPValues(values.Out()));
        com::Check(variables->get_Count(&variableCount));
        com::Check(properties->get_Count(&propertyCount));
        if (variableCount != seen.variables || propertyCount != seen.properties ||
            values.View().size() != seen.propertyRawCharacters || seen.configurations == 0)
            throw std::runtime_error("the profile and the bare visit read different files");
    }

private:
    double SecondsOfFloor(com::Ptr<IXMLDOMDocument2>& document, Visit& seen) const {
        return Seconds([&] {
            document = BareLoad(m_file);
            seen = BareVisit(document.Get());
        });
    }

    const Session& m_session;
    Room m_room;
    std::wstring m_file;
};

}  // namespace

void MeasureProfile(const Session& session, Table& table) {
    const Loading half(session, kPoints);
    half.CheckSameWork();
    table.AddRatio("`FriendSet` on 10,000 NVs + 10,000 CPs, a point",
                   "MSXML load plus one visit of the same nodes", 1.3,
                   Compare(
                       kRounds, [&] { return half.SecondsOfSubject(); },
                       [&] { return half.SecondsOfFloor(); }),
                   2 * kPoints);
    const Loading full(session, 2 * kPoints);
    table.AddRatio("the same at 20,000 + 20,000, whole", "at 10,000 + 10,000, whole", 2.2,
                   Compare(
                       kRounds, [&] { return full.SecondsOfSubject(); },
                       [&] { return half.SecondsOfSubject(); }),
                   1);
}

}  // namespace quillon::benchmarks
