#include "text.h"

#include <algorithm>

#include "com/platform.h"

namespace quorvex {

std::wstring WideFromUtf8(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(),
                        static_cast<int>(wide.size()));
    return wide;
}

std::string Utf8FromWide(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), length,
                                                                    nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(),
                        static_cast<int>(narrow.size()), nullptr, nullptr);
    return narrow;
}

std::wstring Upper(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& c : upper)
        if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
    return upper;
}

bool IsHex(std::wstring_view text, std::size_t digits) {
    return text.size() == digits && std::all_of(text.begin(), text.end(), [](wchar_t c) {
               return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'F') ||
                      (c >= L'a' && c <= L'f');
           });
}

}  // namespace quorvex
