#include "plugin/code_page.h"

#include <windows.h>

#include "com/error.h"

namespace quillon {

namespace {

constexpr UINT kGb18030 = 54936;

// The system refuses every flag for a code page that has all characters.
bool HasEveryCharacter(UINT codePage) {
    return codePage == CP_UTF8 || codePage == kGb18030;
}

// Half a surrogate pair is no character, and lost in any code page.
bool HasHalfPairs(UINT codePage, std::wstring_view text) {
    return !text.empty() &&
           WideCharToMultiByte(codePage, WC_ERR_INVALID_CHARS, text.data(),
                               static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr) == 0;
}

UINT Known(unsigned codePage) {
    return codePage ? codePage : GetACP();
}

// A conversion's length, 0 being a failure unless there is nothing to convert.
std::size_t Length(int length, bool ofNothing) {
    if (length == 0 && !ofNothing) throw com::Error(HRESULT_FROM_WIN32(GetLastError()));
    return static_cast<std::size_t>(length);
}

}  // namespace

std::string Narrow(std::wstring_view text, bool* lossy, unsigned codePage) {
    const UINT page = Known(codePage);
    const bool whole = HasEveryCharacter(page);
    const DWORD flags = whole ? 0 : WC_NO_BEST_FIT_CHARS;
    const int size = static_cast<int>(text.size());
    BOOL replaced = FALSE;
    std::string narrow(
        Length(WideCharToMultiByte(page, flags, text.data(), size, nullptr, 0, nullptr, nullptr),
               text.empty()),
        '\0');
    WideCharToMultiByte(page, flags, text.data(), size, narrow.data(),
                        static_cast<int>(narrow.size()), nullptr, whole ? nullptr : &replaced);
    if (lossy) *lossy = replaced || (whole && HasHalfPairs(page, text));
    return narrow;
}

std::wstring Widen(std::string_view text, unsigned codePage) {
    const UINT page = Known(codePage);
    const int size = static_cast<int>(text.size());
    std::wstring wide(
        Length(MultiByteToWideChar(page, 0, text.data(), size, nullptr, 0), text.empty()), L'\0');
    MultiByteToWideChar(page, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace quillon
