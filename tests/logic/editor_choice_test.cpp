#include "editors/editor_choice.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(EditorChoice, EachNameHasItsEditor) {
    EXPECT_EQ(ChooseEditor(L"SignedNumeric"), EditorKind::kNumeric);
    EXPECT_EQ(ChooseEditor(L"UnsignedNumeric"), EditorKind::kNumeric);
    EXPECT_EQ(ChooseEditor(L"Float"), EditorKind::kNumeric);
    EXPECT_EQ(ChooseEditor(L"Enum"), EditorKind::kEnumeration);
    EXPECT_EQ(ChooseEditor(L"Textual"), EditorKind::kText);
    EXPECT_EQ(ChooseEditor(L"Struct"), EditorKind::kStructure);
    EXPECT_EQ(ChooseEditor(L"User"), EditorKind::kRefused);
}

TEST(EditorChoice, NamesAreComparedWholeAndByCase) {
    for (const wchar_t* name : {L"", L"float", L"FLOAT", L"Float ", L" Float", L"Floats", L"Str",
                                L"Numeric", L"user", L"Enumeration"})
        EXPECT_EQ(ChooseEditor(name), EditorKind::kNone) << name;
}

}  // namespace
}  // namespace quillon
