// Types that the catalogue has, by name.
#pragma once

#include <stdexcept>
#include <string_view>

#include "catalogue/catalogue.h"

namespace quorvex {

inline const Type& The(std::wstring_view name) {
    const Type* const type = FindType(name);
    if (type == nullptr) throw std::invalid_argument("no such type");
    return *type;
}

}  // namespace quorvex
