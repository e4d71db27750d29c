// The record of one configuration property of an application file.
#pragma once

#include <string>

#include "com/class_info.h"
#include "com/dual.h"
#include "com/gate.h"
#include "com/object.h"
#include "model/record_text.h"
#include "quillon_h.h"

namespace quillon {

// A configuration property. Its fields and how an element fills them: model/record_text.h.
class CCP final : public com::Object<com::Dual<_CCP>, com::ClassInfo<CCP>, com::ErrorInfoSupport> {
public:
    using RecordInterface = _CCP;
    static inline const CLSID& kClass = ::CLSID_CCP;

    STDMETHODIMP put_Name(BSTR name) override;
    STDMETHODIMP putref_XMLDomNode(IDispatch* element) override;
    STDMETHODIMP put_ConnectionIndex(long index) override;
    STDMETHODIMP get_ConnectionIndex(long* index) override;
    STDMETHODIMP get_Name(BSTR* name) override;
    STDMETHODIMP get_RawValue(BSTR* text) override;

    const RecordText& Record() const { return m_record; }
    void SetName(std::wstring name) { m_record.name = std::move(name); }
    // Kept for the record's life, never used by it; may be absent.
    void SetTypeCatalogue(IDispatch* catalogue) { m_catalogue = catalogue; }
    // Fills the record; what is missing or malformed leaves its field. Throws com::Error for an
    // object that is no XML node; none at all fills nothing.
    void Fill(IDispatch* element);

private:
    RecordText m_record;
    com::Ptr<IDispatch> m_catalogue;
};

}  // namespace quillon
