// The classes that a module makes: their factories and their registration.
#pragma once

#include <span>
#include <string_view>

#include "com/error.h"
#include "com/object.h"
#include "com/platform.h"

namespace quillon::com {

// One creatable class. `create` gives the first reference, or throws.
struct ClassEntry {
    CLSID clsid;
    const wchar_t* name;   // of the class alone; the ProgID is module name, ".", name
    const wchar_t* title;  // shown in registry tools
    Ptr<IUnknown> (*create)();
};

// What DllGetClassObject does with a table.
HRESULT GetClassObject(std::span<const ClassEntry> classes, REFCLSID clsid, REFIID iid,
                       void** factory) noexcept;

enum class Scope { kMachine, kUser };

// Registers every class (ProgID, InprocServer32, ThreadingModel Apartment, TypeLib) and the type
// library that is resource 1 of the module; prefix is that of the ProgIDs, "Quillon". A failure
// part-way takes back what was written. Unregister removes all of it, but not the ProgIDs while the
// other bitness is registered; it does not mind what is already gone, and fails, having removed
// what can be, when something cannot be removed.
HRESULT Register(std::span<const ClassEntry> classes, std::wstring_view prefix,
                 Scope scope) noexcept;
HRESULT Unregister(std::span<const ClassEntry> classes, std::wstring_view prefix,
                   Scope scope) noexcept;

// For a ClassEntry: makes a T by its default constructor.
template <class T>
Ptr<IUnknown> Create() {
    Ptr<T> made = Make<T>();
    Ptr<IUnknown> identity;
    Check(made->QueryInterface(IID_IUnknown, identity.OutVoid()));
    return identity;
}

}  // namespace quillon::com
