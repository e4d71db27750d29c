#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "catalogue/catalogue.h"
#include "known_types.h"

namespace quorvex {
namespace {

TEST(Types, ThereAreEnoughAndNamesAndIndexesAreUnique) {
    std::set<std::wstring_view> names;
    std::set<int> indexes;
    std::size_t standard = 0;
    for (const Type& type : AllTypes()) {
        EXPECT_TRUE(names.insert(type.name).second);
        EXPECT_EQ(FindType(type.name), &type);
        if (type.index != 0) {
            EXPECT_TRUE(indexes.insert(type.index).second);
            ++standard;
        }
    }
    EXPECT_GE(standard, 30U);
}

TEST(Types, EveryGeneralTypeIsThere) {
    std::set<std::wstring_view> kinds;
    for (const Type& type : AllTypes()) kinds.insert(type.GenType());
    const std::set<std::wstring_view> all{
        L"SignedNumeric", L"UnsignedNumeric", L"Float", L"Enum", L"Textual", L"User", L"Struct"};
    EXPECT_EQ(kinds, all);
}

TEST(Types, UnknownNamesAndOtherLetterCaseAreNotFound) {
    EXPECT_EQ(FindType(L""), nullptr);
    EXPECT_EQ(FindType(L"snvt_temp_p"), nullptr);
    EXPECT_EQ(FindType(L"SNVT_temp_p "), nullptr);
}

TEST(Types, TemperatureIsDescribed) {
    const Type& type = The(L"SNVT_temp_p");
    EXPECT_EQ(type.index, 105);
    EXPECT_EQ(type.length, 2U);
    EXPECT_EQ(type.GenType(), L"SignedNumeric");
    EXPECT_EQ(type.units, L"degrees Celsius");
    EXPECT_EQ(type.bCoef, -2);
    EXPECT_EQ(type.minimum, L"-273.17");
    EXPECT_EQ(type.maximum, L"327.66");
    EXPECT_EQ(type.invalidValue, L"327.67");
    EXPECT_TRUE(type.fields.empty());
}

TEST(Types, EnumerationsListTheirMembersOnceEachWithAClosingSemicolon) {
    for (const Type& type : AllTypes()) {
        if (type.kind != Kind::Enum) continue;
        EXPECT_EQ(type.enumDesc.back(), L';');
        const auto entries = std::count(type.enumDesc.begin(), type.enumDesc.end(), L';');
        EXPECT_EQ(std::count(type.enumDesc.begin(), type.enumDesc.end(), L','), entries);
        EXPECT_EQ(type.enumDesc.find(L' '), std::wstring::npos);
        EXPECT_EQ(type.invalidValue, type.name == L"SNVT_occupancy" ? L"255" : L"-1");
    }
}

TEST(Types, StandardLengthsOfStructures) {
    const std::pair<const wchar_t*, std::size_t> lengths[] = {
        {L"SNVT_state", 2},       {L"SNVT_time_stamp", 7},   {L"SNVT_elapsed_tm", 7},
        {L"SNVT_alarm", 29},      {L"SNVT_obj_request", 3},  {L"SNVT_obj_status", 6},
        {L"SNVT_preset", 14},     {L"SNVT_switch", 2},       {L"SNVT_temp_setpt", 12},
        {L"SNVT_hvac_overid", 5}, {L"SNVT_hvac_status", 12}, {L"SNVT_scene", 2},
        {L"SNVT_setting", 4},     {L"SNVT_tod_event", 4}};
    for (const auto& [name, length] : lengths) EXPECT_EQ(The(name).length, length) << name;
}

// Every byte of a structure belongs to one field, bit by bit, but for the last byte of the object
// status.
TEST(Types, FieldsCoverTheirStructureWithoutOverlap) {
    for (const Type& type : AllTypes()) {
        std::vector<unsigned> covered(type.length);
        for (const Field& field : type.fields) {
            ASSERT_LE(field.offset + field.type.length, type.length) << std::wstring(type.name);
            for (std::size_t i = 0; i < field.type.length; ++i) {
                unsigned& byte = covered[field.offset + i];
                const unsigned mask = field.bits == 0 ? 0xFFU
                                                      : ((1U << field.bits) - 1U)
                                                            << (8 - field.bitOffset - field.bits);
                EXPECT_EQ(byte & mask, 0U)
                    << std::wstring(type.name) << ' ' << std::wstring(field.name);
                byte |= mask;
            }
        }
        for (std::size_t i = 0; i < covered.size() && type.kind == Kind::Struct; ++i) {
            const bool reserved = type.name == L"SNVT_obj_status" && i == 5;
            EXPECT_EQ(covered[i], reserved ? 0U : 0xFFU) << std::wstring(type.name) << ' ' << i;
        }
    }
}

}  // namespace
}  // namespace quorvex
