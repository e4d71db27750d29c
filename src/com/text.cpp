#include "com/text.h"

#include <limits>
#include <new>

namespace quillon::com {

BSTR NewBstr(std::wstring_view text) {
    // The length in bytes, terminator and prefix included, is held in 32 bits.
    if (text.size() > (std::numeric_limits<UINT>::max() / sizeof(wchar_t)) - 16)
        throw std::bad_alloc();
    BSTR made = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!made) throw std::bad_alloc();
    return made;
}

}  // namespace quillon::com
