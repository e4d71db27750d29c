#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "catalogue/catalogue.h"

namespace quorvex {
namespace {

std::wstring Value(std::wstring_view type, std::wstring_view raw) {
    return ValueText(*FindType(type), BytesFromRawText(raw).value());
}

std::wstring Shown(std::wstring_view type, std::wstring_view raw) {
    return FormattedText(*FindType(type), BytesFromRawText(raw).value());
}

std::wstring Raw(std::wstring_view type, std::wstring_view value) {
    const auto bytes = BytesFromValueText(*FindType(type), value);
    return bytes ? RawText(*bytes) : L"refused";
}

bool IsNumeric(const Type& type) {
    return type.kind == Kind::Signed || type.kind == Kind::Unsigned || type.kind == Kind::Enum;
}

Bytes RandomBytes(std::mt19937& random, std::size_t length) {
    Bytes bytes(length);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

TEST(Values, KnownNumbers) {
    EXPECT_EQ(Value(L"SNVT_temp_p", L"0A28"), L"26.00");
    EXPECT_EQ(Shown(L"SNVT_temp_p", L"0A28"), L"26.00 degrees Celsius");
    EXPECT_EQ(Value(L"SNVT_temp_p", L"FF9C"), L"-1.00");
    EXPECT_EQ(Value(L"SNVT_temp", L"0B86"), L"21.0");
    EXPECT_EQ(Value(L"SNVT_lev_cont", L"65"), L"50.5");
    EXPECT_EQ(Value(L"SNVT_lev_percent", L"2710"), L"50.000");
    EXPECT_EQ(Value(L"SNVT_angle_deg", L"4650"), L"360.00");
    EXPECT_EQ(Value(L"SNVT_count", L"FFFF"), L"65535");
    EXPECT_EQ(Value(L"SNVT_count_inc", L"FFFF"), L"-1");
    EXPECT_EQ(Value(L"SNVT_count_32", L"FFFFFFFE"), L"4294967294");
    EXPECT_EQ(Value(L"SNVT_elec_kwh_l", L"80000000"), L"-214748364.8");
    EXPECT_EQ(Shown(L"SNVT_count_inc", L"0001"), L"1");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"26"), L"0A28");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"-0.25"), L"FFE7");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"0,5"), L"0032");
    EXPECT_EQ(Raw(L"SNVT_elec_kwh_l", L"-214748364.8"), L"80000000");
}

TEST(Values, AnInvalidValueIsShownAsItsNumberAndCanBeWritten) {
    EXPECT_EQ(Value(L"SNVT_temp_p", L"7FFF"), L"327.67");
    EXPECT_EQ(Shown(L"SNVT_temp_p", L"7FFF"), L"327.67 degrees Celsius");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"327.67"), L"7FFF");
    EXPECT_EQ(Raw(L"SNVT_flow", L"65535"), L"FFFF");
    EXPECT_EQ(Raw(L"SNVT_count_32", L"4294967295"), L"FFFFFFFF");
}

TEST(Values, NumbersOutsideTheLimitsAreRefused) {
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"-273.17"), L"954B");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"-273.18"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_temp_p", L"327.68"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_lev_cont", L"100.5"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_count", L"-1"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_count", L"65536"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_count", L""), L"refused");
    EXPECT_EQ(Raw(L"SNVT_count", L"?"), L"refused");
}

TEST(Values, Enumerations) {
    EXPECT_EQ(Value(L"SNVT_hvac_mode", L"03"), L"3");
    EXPECT_EQ(Shown(L"SNVT_hvac_mode", L"03"), L"HVAC_COOL");
    EXPECT_EQ(Value(L"SNVT_hvac_mode", L"FF"), L"-1");
    EXPECT_EQ(Shown(L"SNVT_hvac_mode", L"FF"), L"HVAC_NUL");
    EXPECT_EQ(Shown(L"SNVT_hvac_mode", L"64"), L"100");
    EXPECT_EQ(Raw(L"SNVT_hvac_mode", L"-1"), L"FF");
    EXPECT_EQ(Raw(L"SNVT_hvac_mode", L"100"), L"64");
    EXPECT_EQ(Raw(L"SNVT_hvac_mode", L"128"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_hvac_mode", L"1.0"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_hvac_mode", L"HVAC_COOL"), L"refused");
}

TEST(Values, Floats) {
    EXPECT_EQ(Value(L"SNVT_temp_f", L"41A80000"), L"21");
    EXPECT_EQ(Shown(L"SNVT_temp_f", L"41AB3333"), L"21.4 degrees Celsius");
    EXPECT_EQ(Value(L"SNVT_count_f", L"47C35000"), L"100000");
    EXPECT_EQ(Value(L"SNVT_count_f", L"7F7FFFFF"), L"3.4028235e+38");
    EXPECT_EQ(Value(L"SNVT_count_f", L"80000000"), L"0");
    EXPECT_EQ(Raw(L"SNVT_temp_f", L"21.4"), L"41AB3333");
    EXPECT_EQ(Raw(L"SNVT_temp_f", L"21,4"), L"41AB3333");
    EXPECT_EQ(Raw(L"SNVT_temp_f", L"-273.17"), L"C38895C3");
    for (const auto* text :
         {L"-273.18", L"inf", L"nan", L"1e39", L"", L"-", L"1.2.3", L"1 2", L"0x1p3"}) {
        EXPECT_EQ(Raw(L"SNVT_temp_f", text), L"refused") << text;
    }
}

TEST(Values, AFloatThatIsNoNumberIsTheInvalidValue) {
    EXPECT_EQ(Value(L"SNVT_temp_f", L"7FFFFFFF"), FindType(L"SNVT_temp_f")->invalidValue);
    EXPECT_EQ(Value(L"SNVT_temp_f", L"FFC00000"), L"NaN");
    EXPECT_EQ(Raw(L"SNVT_temp_f", L"NaN"), L"7FFFFFFF");
}

TEST(Values, TextsEndAtTheFirstNulAndHold30Characters) {
    const std::wstring thirty(30, L'x');
    const auto raw = Raw(L"SNVT_str_asc", L"Room 101");
    EXPECT_EQ(raw.size(), 62U);
    EXPECT_EQ(raw.substr(0, 18), L"526F6F6D2031303100");
    EXPECT_EQ(Value(L"SNVT_str_asc", raw), L"Room 101");
    EXPECT_EQ(Value(L"SNVT_str_asc", Raw(L"SNVT_str_asc", thirty)), thirty);
    EXPECT_EQ(Raw(L"SNVT_str_asc", thirty + L"x"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_str_asc", L"\x20AC"), L"refused");
    EXPECT_EQ(Raw(L"SNVT_str_asc", std::wstring_view(L"a\0b", 3)), L"refused");
    EXPECT_EQ(Value(L"SNVT_str_asc", Raw(L"SNVT_str_asc", L"\x00E9tage")), L"\x00E9tage");
    EXPECT_EQ(Raw(L"SNVT_str_asc", L""), std::wstring(62, L'0'));
    EXPECT_EQ(Value(L"SNVT_str_asc", std::wstring(62, L'4')), std::wstring(31, L'D'));
}

TEST(Values, UserBytesAreHexadecimal) {
    EXPECT_EQ(Value(L"UNVT_fan_curve", L"00FF10A0B0C0D0E0"), L"00FF10A0B0C0D0E0");
    EXPECT_EQ(Raw(L"UNVT_fan_curve", L"00ff10a0b0c0d0e0"), L"00FF10A0B0C0D0E0");
    EXPECT_EQ(Raw(L"UNVT_fan_curve", L"00FF"), L"refused");
    EXPECT_EQ(Raw(L"UNVT_fan_curve", L"00FF10A0B0C0D0G0"), L"refused");
}

TEST(Values, LimitsZeroAndInvalidOfEveryTypeSurviveTheRoundTrip) {
    for (const Type& type : AllTypes()) {
        for (const auto& text : {type.minimum, type.maximum, type.invalidValue}) {
            if (text.empty()) continue;
            const auto bytes = BytesFromValueText(type, text);
            ASSERT_TRUE(bytes) << std::wstring(type.name) << ' ' << text;
            EXPECT_EQ(bytes->size(), type.length);
            EXPECT_EQ(ValueText(type, *bytes), text) << std::wstring(type.name);
        }
        if (type.kind == Kind::Struct) continue;
        const Bytes zero(type.length);
        const auto text = ValueText(type, zero);
        const auto back = BytesFromValueText(type, text);
        const bool valid = type.rawMinimum <= 0 && 0 <= type.rawMaximum;
        ASSERT_EQ(back.has_value(), valid) << std::wstring(type.name);
        if (back) {
            EXPECT_EQ(*back, zero);
        }
    }
}

TEST(Values, RandomNumbersSurviveTheRoundTripOrAreOutsideTheLimits) {
    std::mt19937 random(20240611);
    for (const Type& type : AllTypes()) {
        if (!IsNumeric(type)) continue;
        int kept = 0;
        for (int i = 0; i < 500; ++i) {
            const auto bytes = RandomBytes(random, type.length);
            const bool isSigned = type.kind == Kind::Signed || type.rawMinimum < 0;
            std::int64_t raw = isSigned && static_cast<std::int8_t>(bytes[0]) < 0 ? -1 : 0;
            for (const auto byte : bytes) raw = raw * 256 + byte;
            const bool valid =
                (raw >= type.rawMinimum && raw <= type.rawMaximum) || raw == type.rawInvalid;
            const auto back = BytesFromValueText(type, ValueText(type, bytes));
            ASSERT_EQ(back.has_value(), valid) << std::wstring(type.name) << ' ' << raw;
            if (!back) continue;
            EXPECT_EQ(*back, bytes) << std::wstring(type.name);
            ++kept;
        }
        EXPECT_GT(kept, 100) << std::wstring(type.name);
    }
}

TEST(Values, RandomFloatsSurviveTheRoundTrip) {
    std::mt19937 random(20240612);
    const Type& type = *FindType(L"SNVT_count_f");
    for (int i = 0; i < 5000; ++i) {
        auto bytes = RandomBytes(random, 4);
        bytes[0] &= 0x7F;
        const auto text = ValueText(type, bytes);
        if (text == L"NaN" || text == L"inf") continue;
        EXPECT_EQ(BytesFromValueText(type, text), bytes) << text;
    }
}

TEST(Values, AnyTextIsReadOrRefusedNeverWorse) {
    std::mt19937 random(20240613);
    constexpr std::wstring_view letters = L"0123456789.,-+ eENanA;\t\x0100";
    for (int i = 0; i < 3000; ++i) {
        std::wstring text;
        for (auto n = random() % 40; n > 0; --n) text += letters[random() % letters.size()];
        for (const Type& type : AllTypes()) {
            const auto bytes = BytesFromValueText(type, text);
            if (bytes) {
                EXPECT_EQ(bytes->size(), type.length) << std::wstring(type.name) << ' ' << text;
            }
        }
    }
}

TEST(Values, AnotherNumberOfBytesIsAnError) {
    const Type& type = *FindType(L"SNVT_temp_p");
    EXPECT_THROW(ValueText(type, Bytes(1)), std::invalid_argument);
    EXPECT_THROW(FormattedText(type, Bytes(3)), std::invalid_argument);
}

TEST(RawTexts, HexadecimalBothWays) {
    EXPECT_EQ(RawText(Bytes{0x00, 0x0A, 0xFF}), L"000AFF");
    EXPECT_EQ(BytesFromRawText(L"000aFf"), (Bytes{0x00, 0x0A, 0xFF}));
    EXPECT_EQ(BytesFromRawText(L""), Bytes());
    for (const auto* text : {L"0", L"0G", L"00 1", L" 00", L"?", L"??", L"-1", L"\xFF10\xFF10"}) {
        EXPECT_EQ(BytesFromRawText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quorvex
