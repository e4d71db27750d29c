#include "model/record_element.h"

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"

namespace quillon {

namespace {

void HandOver(IXMLDOMNode* child, const TakeText& take) {
    DOMNodeType kind = NODE_INVALID;
    if (FAILED(com::NoShortage(child->get_nodeType(&kind))) || kind == NODE_COMMENT) return;
    com::Bstr name;
    if (FAILED(com::NoShortage(child->get_baseName(name.Out())))) return;
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
    if (com::NoShortage(element->get_attributes(attributes.Out())) != S_OK || !attributes) return;
    com::Ptr<IXMLDOMNode> attribute;
    while (com::NoShortage(attributes->nextNode(attribute.Out())) == S_OK && attribute) {
        com::Bstr name;
        com::Bstr text;
        if (SUCCEEDED(com::NoShortage(attribute->get_baseName(name.Out()))) &&
            SUCCEEDED(com::NoShortage(attribute->get_text(text.Out()))))
            take(name.View(), text.View());
    }
}

void ForEachChildText(IXMLDOMNode* element, const TakeText& take) {
    for (com::Ptr<IXMLDOMNode> child = com::FirstChild(element); child;
         child = com::NextSibling(child.Get()))
        HandOver(child.Get(), take);
}

}  // namespace quillon
