// Text in files is UTF-8, inside it is wide.
#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// Characters that have no counterpart become U+FFFD.
std::wstring WideFromUtf8(std::string_view text);
std::string Utf8FromWide(std::wstring_view text);

// Upper case, ASCII letters alone.
std::wstring Upper(std::wstring_view text);

// A whole text of exactly `digits` hexadecimal digits, either case.
bool IsHex(std::wstring_view text, std::size_t digits);

}  // namespace quorvex
