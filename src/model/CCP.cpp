#include "model/CCP.h"

#include "model/record_element.h"

namespace quillon {

void CCP::Fill(IDispatch* element) {
    const com::Ptr<IXMLDOMNode> node = ElementNode(element);
    if (!node) return;
    ForEachChildText(node.Get(), [&](auto name, auto text) {
        TakeConfigurationPropertyChild(m_record, name, text);
    });
    CompleteConfigurationProperty(m_record);
}

STDMETHODIMP CCP::put_Name(BSTR name) {
    return com::Gate([&] { SetName(com::Text(name)); });
}
STDMETHODIMP CCP::putref_XMLDomNode(IDispatch* element) {
    return com::Gate([&] { Fill(element); });
}
STDMETHODIMP CCP::put_ConnectionIndex(long index) {
    m_record.connectionIndex = index;
    return S_OK;
}
STDMETHODIMP CCP::get_ConnectionIndex(long* value) {
    return com::Gate(value, [&] { return m_record.connectionIndex; });
}
STDMETHODIMP CCP::get_Name(BSTR* value) {
    return com::Gate(value, [&] { return m_record.name; });
}
STDMETHODIMP CCP::get_RawValue(BSTR* value) {
    return com::Gate(value, [&] { return m_record.rawValue; });
}

}  // namespace quillon
