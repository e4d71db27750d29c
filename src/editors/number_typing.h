// Typing a number: which keys reach the text, and what they do to it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "editors/edit_text.h"

namespace quillon {

struct NumberRules {
    wchar_t separator = L'.';
    std::optional<std::size_t> decimals;  // nullopt: any number of them
};

// The rules of a type with this power-of-ten exponent: -2 allows two decimals, 0 and above none.
NumberRules RulesOf(bool isFloat, int bCoef, wchar_t separator);

// A text that was acceptable (a "-" only in front, one separator, decimals within the rules) stays
// so, whatever is typed wherever:
// - a digit goes in at the caret and replaces a selection; not in front of a "-", and not where the
//   resulting text would have a separator and too many decimals;
// - the separator goes in at the end, or in place of the whole text, but never a second one;
// - "-" goes in at the start, replacing a selection there, unless the text behind it begins with
//   one;
// - Backspace removes the selection, else the last character; the caret goes to the end.
KeyAnswer OnNumberKey(const NumberRules& rules, std::wstring_view text, Selection selection,
                      wchar_t key);

// Of the first line of a pasted text, blanks before it left out, the beginning that could have been
// typed; nullopt when there is none.
std::optional<TextEdit> PasteNumber(const NumberRules& rules, std::wstring_view text,
                                    Selection selection, std::wstring_view pasted);

}  // namespace quillon
