// XML nodes made from text.
#pragma once

#include <string_view>

#include "com/xml_document.h"

namespace quillon::test {

// The root element of a text, by the machine's own DOM; its document lives as long as it. A text
// that is not well-formed fails the running test and gives none.
com::Ptr<IXMLDOMNode> Element(std::wstring_view text);

}  // namespace quillon::test
