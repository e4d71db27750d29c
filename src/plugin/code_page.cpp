#include "plugin/code_page.h"

#include <windows.h>

namespace quillon {

std::string Narrow(std::wstring_view text, bool* lossy) {
    const int wide = static_cast<int>(text.size());
    BOOL replaced = FALSE;
    const int length = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), wide, nullptr,
                                           0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), wide, narrow.data(), length,
                        nullptr, &replaced);
    if (lossy) *lossy = replaced != FALSE;
    return narrow;
}

std::wstring Widen(std::string_view text) {
    const int narrow = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), narrow, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), narrow, wide.data(), length);
    return wide;
}

}  // namespace quillon
