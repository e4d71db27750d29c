// VARIANTs in another type, in the invariant locale.
#pragma once

#include <optional>

#include "com/variant.h"

namespace quorvex {

// Empty when there is no such conversion.
inline std::optional<quillon::com::Variant> Converted(const VARIANT& value, VARTYPE type) {
    quillon::com::Variant copy(value);
    if (FAILED(VariantChangeTypeEx(&copy, &copy, LOCALE_INVARIANT, 0, type))) return std::nullopt;
    return copy;
}

}  // namespace quorvex
