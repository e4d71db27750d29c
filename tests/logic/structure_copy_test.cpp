#include "editors/structure_copy.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

std::optional<std::wstring> Joined(std::initializer_list<const wchar_t*> values) {
    std::vector<FieldRow> rows;
    for (const wchar_t* value : values)
        rows.push_back({.key = {}, .name = {}, .shown = {}, .value = value});
    return StructureText(rows);
}

TEST(StructureText, ValuesAreJoinedByBlanks) {
    EXPECT_EQ(Joined({L"1", L"20", L"3"}), L"1 20 3");
    EXPECT_EQ(Joined({L"7"}), L"7");
}

TEST(StructureText, StructureWithoutFieldsIsEmpty) {
    EXPECT_EQ(Joined({}), L"");
}

TEST(StructureText, EmptyFieldLeavesTwoBlanks) {
    EXPECT_EQ(Joined({L"1", L"", L"3"}), L"1  3");
    EXPECT_EQ(Joined({L"", L"2", L""}), L"2") << "but none at the ends";
}

TEST(StructureText, NestedValuesStandFlat) {
    EXPECT_EQ(Joined({L"1 2", L"3"}), L"1 2 3");
}

TEST(StructureText, NoneWhereAFieldCouldNotBeRead) {
    EXPECT_EQ(Joined({L"1", L"?", L"3"}), std::nullopt);
    EXPECT_EQ(Joined({L"?"}), std::nullopt);
    EXPECT_EQ(Joined({L"1", L"?x"}), L"1 ?x");
}

}  // namespace
}  // namespace quillon
