// Late-bound calls with nothing around them: what a caller cannot do without. A member is looked up
// by name at every call, for an identifier is good for the one object that gave it.
#pragma once

#include "com/platform.h"
#include "com/variant.h"

namespace quillon::benchmarks {

// The value of a property, or of a method with one argument. Throws com::Error.
com::Variant BareGet(IDispatch* object, const wchar_t* member, VARIANT* argument = nullptr);
// Writes a property. Throws com::Error.
void BarePut(IDispatch* object, const wchar_t* member, VARIANT& value);

// Handles the window messages that are pending.
void BarePump();

}  // namespace quillon::benchmarks
