#include "model/record_element.h"

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"

namespace quillon {

namespace {

void HandOver(IXMLDOMNode* child, const TakeText& take) {
    DOMNodeType kind = NODE_INVALID;
    if (FAILED(child->get_nodeType(&kind)) || kind == NODE_COMMENT) return;
    com::Bstr name;
    if (FAILED(child->get_baseName(name.Out()))) return;
    if (const auto text = com::FirstChildText(child)) take(name.View(), *text);
}

}  // namespace

com::Ptr<IXMLDOMNode> ElementNode(IDispatch* object) {
    com::Ptr<IXMLDOMNode> node;
    if (object && FAILED(object->QueryInterface(__uuidof(IXMLDOMNode), node.OutVoid())))
        throw com::Error(DISP_E_TYPEMISMATCH);
    return node;
}

void ForEachAttribute(IXMLDOMNode* element, const TakeText& take) {
    com::Ptr<IXMLDOMNamedNodeMap> attributes;
    if (element->get_attributes(attributes.Out()) != S_OK || !attributes) return;
    com::Ptr<IXMLDOMNode> attribute;
    while (attributes->nextNode(attribute.Out()) == S_OK && attribute) {
        com::Bstr name;
        com::Bstr text;
        if (SUCCEEDED(attribute->get_baseName(name.Out())) &&
            SUCCEEDED(attribute->get_text(text.Out())))
            take(name.View(), text.View());
    }
}

void ForEachChildText(IXMLDOMNode* element, const TakeText& take) {
    com::Ptr<IXMLDOMNode> child;
    HRESULT got = element->get_firstChild(child.Out());
    while (got == S_OK && child) {
        HandOver(child.Get(), take);
        com::Ptr<IXMLDOMNode> next;
        got = child->get_nextSibling(next.Out());
        child = std::move(next);
    }
}

}  // namespace quillon
