// Reading what an XML element holds for a record.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "com/xml_document.h"

namespace quillon {

// Takes a local name and the text that belongs to it.
using TakeText = std::function<void(std::wstring_view localName, std::wstring_view text)>;

// The node behind an object; empty for no object. Throws com::Error when it is something else.
com::Ptr<IXMLDOMNode> ElementNode(IDispatch* object);

// Hands over each attribute, and each child that is no comment and has a text: the value of its own
// first child. A node that cannot be read is left out. Throws for want of memory and what `take`
// throws alone, never for what the element holds.
void ForEachAttribute(IXMLDOMNode* element, const TakeText& take);
void ForEachChildText(IXMLDOMNode* element, const TakeText& take);

}  // namespace quillon
