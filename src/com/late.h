// Late-bound access: members of an object reached by name. Every failure is an Error with the
// member's own result; an EXCEPINFO becomes its code and its record.
#pragma once

#include <initializer_list>
#include <string>

#include "com/platform.h"
#include "com/variant.h"

namespace quillon::com {

// Reads a property, or calls a method for its result.
Variant Get(IDispatch* object, const wchar_t* member,
            std::initializer_list<Variant> arguments = {});

// Reads a property as text; Null is an empty one.
std::wstring GetText(IDispatch* object, const wchar_t* member);

// Writes a property.
void Put(IDispatch* object, const wchar_t* member, const Variant& value);

// The enumerator of a collection, by its standard identifier.
Ptr<IEnumVARIANT> Enumerate(IDispatch* collection);

}  // namespace quillon::com
