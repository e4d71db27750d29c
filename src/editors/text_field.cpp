#include "editors/text_field.h"

#include <algorithm>

namespace quillon {
namespace {

// What Ctrl+Backspace types.
constexpr wchar_t kDelete = 127;

}  // namespace

KeyAnswer OnTextKey(wchar_t key) {
    switch (key) {
        case kEscape:
            return {.act = KeyAct::kRestore};
        case kEnter:
            return {.act = KeyAct::kAccept};
        case kDelete:
            return {};
        default:
            return {.act = KeyAct::kPass, .key = key == L' ' ? L'_' : key};
    }
}

std::wstring PastedText(std::wstring_view pasted) {
    std::wstring text(FirstLine(pasted));
    std::replace(text.begin(), text.end(), L' ', L'_');
    return text;
}

}  // namespace quillon
