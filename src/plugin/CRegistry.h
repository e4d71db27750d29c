// Registry access for the help command and for scripts. A missing key or value reads as an empty
// text or false; nothing here shows a message.
#pragma once

#include <string>

#include "com/class_info.h"
#include "com/dual.h"
#include "com/gate.h"
#include "com/object.h"
#include "quillon_h.h"

namespace quillon {

class CRegistry final
    : public com::Object<com::Dual<_CRegistry>, com::ClassInfo<CRegistry>, com::ErrorInfoSupport> {
public:
    static inline const CLSID& kClass = ::CLSID_CRegistry;

    STDMETHODIMP FindGUUID(BSTR identifier, VARIANT_BOOL* found) override;
    STDMETHODIMP FindFirstMachineKey(BSTR path, BSTR* name) override;
    STDMETHODIMP GetNextMachineKey(BSTR* name) override;
    STDMETHODIMP get_AppSetting(BSTR section, BSTR name, BSTR* value) override;
    STDMETHODIMP put_AppSetting(BSTR section, BSTR name, BSTR value) override;
    STDMETHODIMP get_MachineSetting(BSTR path, BSTR name, BSTR* value) override;
    STDMETHODIMP put_MachineSetting(BSTR path, BSTR name, BSTR value) override;
    STDMETHODIMP DeleteMachineSetting(BSTR path, VARIANT_BOOL* deleted) override;

private:
    ~CRegistry() override;

    void CloseEnumeratedKey();
    std::wstring NextMachineKey();

    HKEY m_enumerated = nullptr;
    DWORD m_nextIndex = 0;
};

}  // namespace quillon
