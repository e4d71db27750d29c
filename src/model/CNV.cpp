#include "model/CNV.h"

#include "model/record_element.h"

namespace quillon {

void CNV::Fill(IDispatch* element) {
    const com::Ptr<IXMLDOMNode> node = ElementNode(element);
    if (!node) return;
    ForEachAttribute(node.Get(),
                     [&](auto name, auto text) { TakeAttribute(m_record, name, text); });
    ForEachChildText(node.Get(),
                     [&](auto name, auto text) { TakeNetworkVariableChild(m_record, name, text); });
    CompleteNetworkVariable(m_record);
}

STDMETHODIMP CNV::get_RawValue(BSTR* value) {
    return com::Gate(value, [&] { return m_record.rawValue; });
}
STDMETHODIMP CNV::get_Length(long* value) {
    return com::Gate(value, [&] { return m_record.length; });
}
STDMETHODIMP CNV::put_Name(BSTR name) {
    return com::Gate([&] { SetName(com::Text(name)); });
}
STDMETHODIMP CNV::putref_XMLDomNode(IDispatch* element) {
    return com::Gate([&] { Fill(element); });
}
STDMETHODIMP CNV::put_ConnectionIndex(long index) {
    m_record.connectionIndex = index;
    return S_OK;
}
STDMETHODIMP CNV::get_ConnectionIndex(long* value) {
    return com::Gate(value, [&] { return m_record.connectionIndex; });
}
STDMETHODIMP CNV::get_IsNC(VARIANT_BOOL* value) {
    return com::Gate(value, [&] { return m_record.isNC; });
}
STDMETHODIMP CNV::get_Direction(long* value) {
    return com::Gate(value, [&] { return m_record.direction; });
}
STDMETHODIMP CNV::get_Name(BSTR* value) {
    return com::Gate(value, [&] { return m_record.name; });
}
STDMETHODIMP CNV::get_SNVTType(BSTR* value) {
    return com::Gate(value, [&] { return m_record.snvtType; });
}
STDMETHODIMP CNV::get_Address(long* value) {
    return com::Gate(value, [&] { return m_record.address; });
}
STDMETHODIMP CNV::put_Address(long address) {
    m_record.address = address;
    return S_OK;
}

}  // namespace quillon
