#include "editors/editor_choice.h"

#include <algorithm>
#include <array>

namespace quillon {
namespace {

struct Choice {
    std::wstring_view genType;
    EditorKind editor;
};

constexpr std::array kChoices{
    Choice{L"SignedNumeric", EditorKind::kNumeric},
    Choice{L"UnsignedNumeric", EditorKind::kNumeric},
    Choice{kFloatType, EditorKind::kNumeric},
    Choice{L"Enum", EditorKind::kEnumeration},
    Choice{L"Textual", EditorKind::kText},
    Choice{L"Struct", EditorKind::kStructure},
    Choice{L"User", EditorKind::kRefused},
};

}  // namespace

EditorKind ChooseEditor(std::wstring_view genType) {
    const auto* found = std::find_if(kChoices.begin(), kChoices.end(),
                                     [&](const Choice& one) { return one.genType == genType; });
    return found == kChoices.end() ? EditorKind::kNone : found->editor;
}

}  // namespace quillon
