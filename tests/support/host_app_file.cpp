#include "support/host_app_file.h"

#include <stdexcept>

#include "com/xml_document.h"

namespace quillon::test {

namespace {

std::string Element(const char* name, const std::optional<std::string>& text) {
    if (!text) return {};
    return std::string("<") + name + ">" + *text + "</" + name + ">";
}

std::string List(const char* name, const std::optional<std::vector<AppPoint>>& points) {
    if (!points) return {};
    std::string text = std::string("<") + name + ">";
    for (const AppPoint& point : *points) {
        text += "<" + point.name + (point.isNC ? " IsNC=\"1\">" : ">");
        text += Element("ConnectionIndex", std::to_string(point.index));
        text += Element("RawValue", point.rawValue) + "</" + point.name + ">";
    }
    return text + "</" + name + ">";
}

bool HasElements(IXMLDOMNode* node) {
    com::Ptr<IXMLDOMNode> child;
    HRESULT got = node->get_firstChild(child.Out());
    while (got == S_OK && child) {
        DOMNodeType kind = NODE_INVALID;
        com::Check(child->get_nodeType(&kind));
        if (kind == NODE_ELEMENT) return true;
        com::Ptr<IXMLDOMNode> next;
        got = child->get_nextSibling(next.Out());
        child = next;
    }
    return false;
}

void AddAttributes(IXMLDOMNode* node, const std::wstring& path, Lines& lines) {
    com::Ptr<IXMLDOMNamedNodeMap> attributes;
    if (node->get_attributes(attributes.Out()) != S_OK || !attributes) return;
    com::Ptr<IXMLDOMNode> attribute;
    while (attributes->nextNode(attribute.Out()) == S_OK && attribute) {
        com::Bstr name;
        com::Bstr text;
        com::Check(attribute->get_nodeName(name.Out()));
        com::Check(attribute->get_text(text.Out()));
        lines.push_back(path + L"@" + name.Text() + L"=" + text.Text());
    }
}

void AddElement(IXMLDOMNode* node, const std::wstring& parent, Lines& lines) {
    com::Bstr name;
    com::Check(node->get_nodeName(name.Out()));
    const std::wstring path = parent + name.Text();
    AddAttributes(node, path, lines);
    if (!HasElements(node)) {
        com::Bstr text;
        com::Check(node->get_text(text.Out()));
        lines.push_back(path + L"=" + text.Text());
        return;
    }
    com::Ptr<IXMLDOMNode> child;
    HRESULT got = node->get_firstChild(child.Out());
    while (got == S_OK && child) {
        DOMNodeType kind = NODE_INVALID;
        com::Check(child->get_nodeType(&kind));
        if (kind == NODE_ELEMENT) AddElement(child.Get(), path + L"/", lines);
        com::Ptr<IXMLDOMNode> next;
        got = child->get_nextSibling(next.Out());
        child = next;
    }
}

}  // namespace

std::string AppFile::Text() const {
    return "<?xml version=\"1.0\"?>\n<Configuration>" + Element("FWVersion", firmware) +
           "<Export>" + Element("Header", header) + Element("AppObjects", objects) +
           "</Export><Profile>" + Element("ProgramID", programId) + List("NVs", variables) +
           List("CPs", properties) + "</Profile></Configuration>\n";
}

Lines DocumentLines(const std::wstring& path) {
    const auto document = com::NewXmlDocument();
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    if (!com::LoadXmlFile(document.Get(), path).loaded)
        throw std::runtime_error("the document cannot be loaded");
    com::Ptr<IXMLDOMElement> root;
    com::Check(document->get_documentElement(root.Out()));
    Lines lines;
    AddElement(root.Get(), L"", lines);
    return lines;
}

}  // namespace quillon::test
