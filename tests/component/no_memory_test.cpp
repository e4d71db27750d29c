// Shortages of memory that the XML DOM tells: what could not be fetched is not what is not there.
#include <new>

#include "com/xml_document.h"
#include "model/CCP.h"
#include "model/CNV.h"
#include "model/record_element.h"
#include "support/component_fixture.h"

namespace quillon {
namespace {

// A node of which each member has no memory. It lives as long as its test.
class NoMemoryNode final : public IXMLDOMNode {
public:
    static constexpr HRESULT kNone = E_OUTOFMEMORY;

    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return kNone; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return kNone; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return kNone; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return kNone;
    }
    STDMETHODIMP get_nodeName(BSTR*) override { return kNone; }
    STDMETHODIMP get_nodeValue(VARIANT*) override { return kNone; }
    STDMETHODIMP put_nodeValue(VARIANT) override { return kNone; }
    STDMETHODIMP get_nodeType(DOMNodeType*) override { return kNone; }
    STDMETHODIMP get_parentNode(IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_childNodes(IXMLDOMNodeList**) override { return kNone; }
    STDMETHODIMP get_firstChild(IXMLDOMNode** child) override {
        *child = m_child;
        return m_child ? S_OK : kNone;
    }
    STDMETHODIMP get_lastChild(IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_previousSibling(IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_nextSibling(IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_attributes(IXMLDOMNamedNodeMap**) override { return kNone; }
    STDMETHODIMP insertBefore(IXMLDOMNode*, VARIANT, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP replaceChild(IXMLDOMNode*, IXMLDOMNode*, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP removeChild(IXMLDOMNode*, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP appendChild(IXMLDOMNode*, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP hasChildNodes(VARIANT_BOOL*) override { return kNone; }
    STDMETHODIMP get_ownerDocument(IXMLDOMDocument**) override { return kNone; }
    STDMETHODIMP cloneNode(VARIANT_BOOL, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_nodeTypeString(BSTR*) override { return kNone; }
    STDMETHODIMP get_text(BSTR*) override { return kNone; }
    STDMETHODIMP put_text(BSTR) override { return kNone; }
    STDMETHODIMP get_specified(VARIANT_BOOL*) override { return kNone; }
    STDMETHODIMP get_definition(IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_nodeTypedValue(VARIANT*) override { return kNone; }
    STDMETHODIMP put_nodeTypedValue(VARIANT) override { return kNone; }
    STDMETHODIMP get_dataType(VARIANT*) override { return kNone; }
    STDMETHODIMP put_dataType(BSTR) override { return kNone; }
    STDMETHODIMP get_xml(BSTR*) override { return kNone; }
    STDMETHODIMP transformNode(IXMLDOMNode*, BSTR*) override { return kNone; }
    STDMETHODIMP selectNodes(BSTR, IXMLDOMNodeList**) override { return kNone; }
    STDMETHODIMP selectSingleNode(BSTR, IXMLDOMNode**) override { return kNone; }
    STDMETHODIMP get_parsed(VARIANT_BOOL*) override { return kNone; }
    STDMETHODIMP get_namespaceURI(BSTR*) override { return kNone; }
    STDMETHODIMP get_prefix(BSTR*) override { return kNone; }
    STDMETHODIMP get_baseName(BSTR*) override { return kNone; }
    STDMETHODIMP transformNodeToObject(IXMLDOMNode*, VARIANT) override { return kNone; }

    // Makes it a node that has a child.
    void SetChild(IXMLDOMNode* child) { m_child = child; }

private:
    IXMLDOMNode* m_child = nullptr;
};

class NoMemory : public test::ComponentTest {
protected:
    NoMemoryNode node;
    NoMemoryNode parent;
};

TEST_F(NoMemory, ChildThatCannotBeFetchedIsNotTakenForNone) {
    EXPECT_THROW(com::FirstChild(&node), std::bad_alloc);
    EXPECT_THROW(com::NextSibling(&node), std::bad_alloc);
}

TEST_F(NoMemory, TextThatCannotBeFetchedIsNotTakenForNone) {
    EXPECT_THROW(com::FirstChildText(&node), std::bad_alloc);
    parent.SetChild(&node);
    EXPECT_THROW(com::FirstChildText(&parent), std::bad_alloc) << "the child's own value";
}

TEST_F(NoMemory, NameThatCannotBeFetchedIsNotTakenForNone) {
    EXPECT_THROW(com::LocalName(&node), std::bad_alloc);
}

TEST_F(NoMemory, ElementThatCannotBeLookedForIsNotTakenForMissing) {
    EXPECT_THROW(com::FindNode(&node, L"descendant::a"), std::bad_alloc);
}

TEST_F(NoMemory, AttributesAndChildrenThatCannotBeFetchedAreNotLeftOut) {
    const auto none = [](std::wstring_view, std::wstring_view) { ADD_FAILURE(); };
    EXPECT_THROW(ForEachAttribute(&node, none), std::bad_alloc);
    EXPECT_THROW(ForEachChildText(&node, none), std::bad_alloc);
    parent.SetChild(&node);
    EXPECT_THROW(ForEachChildText(&parent, none), std::bad_alloc);
}

TEST_F(NoMemory, RecordOfSuchAnElementTellsIt) {
    EXPECT_EQ(com::Ptr<_CCP>(com::Make<CCP>())->putref_XMLDomNode(&node), E_OUTOFMEMORY);
    EXPECT_EQ(com::Ptr<_CNV>(com::Make<CNV>())->putref_XMLDomNode(&node), E_OUTOFMEMORY);
}

}  // namespace
}  // namespace quillon
