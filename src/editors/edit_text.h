// What the keys of a text box do, as plain values: the window only obeys.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

// Characters [from, to) of a text; from == to is a caret.
struct Selection {
    std::size_t from = 0;
    std::size_t to = 0;

    bool operator==(const Selection&) const = default;
};

// A change of a text: the characters of `range` give way to `text`, and the caret then stands at
// `caret`.
struct TextEdit {
    Selection range;
    std::wstring text = {};
    std::size_t caret = 0;

    bool operator==(const TextEdit&) const = default;
};

std::wstring Applied(std::wstring_view text, const TextEdit& edit);

enum class KeyAct {
    kDrop,     // nothing
    kPass,     // the text box handles the key itself, as the character `key`
    kEdit,     // `edit` is done to the text
    kRestore,  // Esc
    kAccept,   // Enter: OK
};

struct KeyAnswer {
    KeyAct act = KeyAct::kDrop;
    wchar_t key = 0;
    TextEdit edit = {};

    bool operator==(const KeyAnswer&) const = default;
};

// Characters by which control keys reach a text box.
inline constexpr wchar_t kBackspace = 8;
inline constexpr wchar_t kEnter = 13;
inline constexpr wchar_t kEscape = 27;

// What stands before the first line end or NUL.
std::wstring_view FirstLine(std::wstring_view text);
// Without the spaces at both ends.
std::wstring_view TrimBlanks(std::wstring_view text);

}  // namespace quillon
