// Arguments as the log shows them: numbers in decimal, truths as True and False, texts in quotes,
// objects as "object" or "nothing".
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "com/platform.h"
#include "com/text.h"

namespace quorvex {

// Quotes, backslashes and line ends inside are escaped, so that a call stays one line.
std::wstring Quoted(std::wstring_view text);
std::wstring ArgumentText(const VARIANT& value);

inline std::wstring ArgumentText(BSTR text) {
    return Quoted(quillon::com::View(text));
}
inline std::wstring ArgumentText(bool truth) {
    return truth ? L"True" : L"False";
}
inline std::wstring ArgumentText(IUnknown* object) {
    return object ? L"object" : L"nothing";
}
template <class Number>
requires(std::is_integral_v<Number> && !std::is_same_v<Number, bool>) std::wstring
    ArgumentText(Number number) {
    return std::to_wstring(number);
}

template <class... Arguments>
std::wstring ArgumentsText(const Arguments&... arguments) {
    std::wstring text;
    ((text += (text.empty() ? L"" : L", "), text += ArgumentText(arguments)), ...);
    return text;
}

}  // namespace quorvex
