#include "support/xml_elements.h"

#include <gtest/gtest.h>

#include "com/text.h"

namespace quillon::test {

com::Ptr<IXMLDOMNode> Element(std::wstring_view text) {
    const com::Ptr<IXMLDOMDocument2> document = com::NewXmlDocument();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->loadXML(com::Bstr(text).Get(), &loaded);
    com::Ptr<IXMLDOMElement> root;
    if (loaded) document->get_documentElement(root.Out());
    EXPECT_TRUE(root) << testing::PrintToString(text);
    return root;
}

}  // namespace quillon::test
