#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// What the host gives for any text of a point that it could not read. It takes it from nobody.
inline constexpr std::wstring_view kUnread = L"?";

// Field n (counted from 0) of a delimited text, compared by case. Field 0 is what stands before the
// first delimiter, so a text without any delimiter has no field 0. A later field begins one
// character after its delimiter's first character, and each search starts one character after the
// previous find: with a delimiter of several characters the field keeps the delimiter's rest. The
// last field runs to the end. Empty when there is no such field, for a negative n and for an empty
// delimiter.
std::wstring GetField(std::wstring_view text, std::int32_t n, std::wstring_view delimiter);

// The text with its first "." replaced by the separator, or with its first "," when it holds no
// ".". Every other "." and "," stays; a text without either comes back unchanged.
std::wstring ReplaceDecimalSeparator(std::wstring_view text, std::wstring_view separator);

}  // namespace quillon
