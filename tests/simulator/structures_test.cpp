#include <gtest/gtest.h>

#include "catalogue/catalogue.h"
#include "known_types.h"

namespace quorvex {
namespace {

Bytes Hex(std::wstring_view text) {
    return BytesFromRawText(text).value();
}

TEST(Structures, FieldsAreSeparatedBySingleBlanks) {
    EXPECT_EQ(ValueText(The(L"SNVT_switch"), Hex(L"C801")), L"100.0 1");
    EXPECT_EQ(ValueText(The(L"SNVT_switch"), Hex(L"00FF")), L"0.0 255");
    EXPECT_EQ(ValueText(The(L"SNVT_hvac_status"), Hex(L"012710000000007FFF138800")),
              L"1 50.000 0.000 0.000 163.835 25.000 0");
    EXPECT_EQ(FormattedText(The(L"SNVT_hvac_status"), Hex(L"012710000000007FFF138800")),
              L"HVAC_HEAT 50.000 0.000 0.000 163.835 25.000 0");
    EXPECT_EQ(ValueText(The(L"SNVT_alarm"),
                        Hex(L"0102030405060007FC0900080A0B0C0D07E80C1F173B3B03E701020304")),
              L"010203040506 7 -4 9 8 0A0B0C0D 2024 12 31 23 59 59 999 01020304");
}

TEST(Structures, AreReadFromTheirFields) {
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_switch"), L"50.5 255"), Hex(L"65FF"));
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_switch"), L"  50,5   1 "), Hex(L"6501"));
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_setting"), L"5 127.5 -359.98"), Hex(L"05FFB9B1"));
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_temp_setpt"), L"23 25 28 21 19 327.67"),
              Hex(L"08FC09C40AF00834076C7FFF"));
}

TEST(Structures, AWrongNumberOfFieldsOrABadFieldIsRefused) {
    for (const auto* text : {L"", L"50", L"50 1 1", L"50 2", L"101 1", L"x 1", L"50;1"}) {
        EXPECT_EQ(BytesFromValueText(The(L"SNVT_switch"), text), std::nullopt) << text;
    }
}

TEST(Structures, BitFieldsCountFromTheMostSignificantBit) {
    EXPECT_EQ(ValueText(The(L"SNVT_state"), Hex(L"8001")), L"1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1");
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_state"), L"0 1 0 0 0 0 0 0 1 0 0 0 0 0 0 0"),
              Hex(L"4080"));
    EXPECT_EQ(BytesFromValueText(The(L"SNVT_state"), L"0 2 0 0 0 0 0 0 1 0 0 0 0 0 0 0"),
              std::nullopt);
    const auto status = ValueText(The(L"SNVT_obj_status"), Hex(L"000100400000"));
    EXPECT_EQ(status, L"1 0 0 0 0 0 0 0 0 0 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0");
}

TEST(Structures, AFieldIsCutOutAndPutBackWithoutTouchingItsNeighbours) {
    for (const Type& type : AllTypes()) {
        Bytes ones(type.length, 0xFF);
        for (const Field& field : type.fields) {
            const auto before = FieldBytes(field, ones);
            const auto untouched = ones;
            PutFieldBytes(field, ones, Bytes(field.type.length));
            EXPECT_NE(ones, untouched);
            EXPECT_EQ(FieldBytes(field, ones), Bytes(field.type.length));
            PutFieldBytes(field, ones, before);
            EXPECT_EQ(ones, untouched)
                << std::wstring(type.name) << ' ' << std::wstring(field.name);
        }
    }
}

TEST(Structures, EveryStructureSurvivesTheRoundTripOfItsFieldsLimits) {
    for (const Type& type : AllTypes()) {
        if (type.kind != Kind::Struct) continue;
        for (const auto limit : {&Type::minimum, &Type::maximum, &Type::invalidValue}) {
            std::wstring text;
            for (const Field& field : type.fields) {
                auto piece = field.type.*limit;
                if (piece.empty()) piece = ValueText(field.type, Bytes(field.type.length, 1));
                text += (text.empty() ? L"" : L" ") + piece;
            }
            const auto bytes = BytesFromValueText(type, text);
            ASSERT_TRUE(bytes) << std::wstring(type.name) << ' ' << text;
            EXPECT_EQ(ValueText(type, *bytes), text);
        }
    }
}

TEST(Structures, AShortStructureIsAnError) {
    const auto& field = The(L"SNVT_switch").fields[1];
    Bytes shortOne(1);
    EXPECT_THROW(FieldBytes(field, shortOne), std::invalid_argument);
    EXPECT_THROW(PutFieldBytes(field, shortOne, Bytes(1)), std::invalid_argument);
    Bytes whole(2);
    EXPECT_THROW(PutFieldBytes(field, whole, Bytes(2)), std::invalid_argument);
}

}  // namespace
}  // namespace quorvex
