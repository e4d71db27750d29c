// The rules of the text editor's field.
#pragma once

#include <string>
#include <string_view>

#include "editors/edit_text.h"

namespace quillon {

inline constexpr std::size_t kLongestText = 30;
inline constexpr const wchar_t* kTooLongText = L"The text cannot exceed 30 characters";
inline constexpr const wchar_t* kTooLongTitle = L"Name too long";

// A space becomes "_" as it is typed; Esc, Enter and what deletes a word have no character; every
// other key goes to the text box.
KeyAnswer OnTextKey(wchar_t key);
// The first line of a pasted text, as if it were typed.
std::wstring PastedText(std::wstring_view pasted);

inline bool IsTooLong(std::wstring_view text) {
    return text.size() > kLongestText;
}
inline std::wstring Shortened(std::wstring_view text) {
    return std::wstring(text.substr(0, kLongestText));
}

}  // namespace quillon
