#include "editors/numeric_field.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "plugin/field_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

// Reads as a region with decimal comma does: strictly, in single precision.
std::optional<float> CommaReader(std::wstring_view text) {
    std::wstring point(text);
    if (point.find(L'.') != std::wstring::npos) return std::nullopt;
    std::replace(point.begin(), point.end(), L',', L'.');
    try {
        return static_cast<float>(StrictNumber(point));
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

NumericField Limited(std::wstring minimum, std::wstring maximum, wchar_t separator = L'.') {
    return NumericField({.minimum = std::move(minimum), .maximum = std::move(maximum)}, separator,
                        CommaReader);
}

TEST(NumericField, ShowsTheFirstForeignSeparatorAsTheLocalOne) {
    EXPECT_EQ(WithLocalSeparator(L"1.5", L','), L"1,5");
    EXPECT_EQ(WithLocalSeparator(L"1,5", L'.'), L"1.5");
    EXPECT_EQ(WithLocalSeparator(L"1.5", L'.'), L"1.5");
    EXPECT_EQ(WithLocalSeparator(L"12", L','), L"12");
    EXPECT_EQ(WithLocalSeparator(L"", L','), L"");
    EXPECT_EQ(WithLocalSeparator(L"1.2.3", L','), L"1,2.3");
}

TEST(NumericField, NumberWithBothSeparatorsIsNotConvertedAsLiveValuesAre) {
    EXPECT_EQ(WithLocalSeparator(L"1,234.5", L'.'), L"1.234.5");
    EXPECT_EQ(ReplaceDecimalSeparator(L"1,234.5", L"."), L"1,234.5");
}

TEST(NumericField, LimitsAreShownWithDashesWhereThereAreNone) {
    EXPECT_EQ(Limited(L"", L"").MinimumShown(), L"---");
    EXPECT_EQ(Limited(L"", L"").MaximumShown(), L"---");
    EXPECT_EQ(Limited(L"1.5", L"2.5", L',').MinimumShown(), L"1,5");
    EXPECT_EQ(Limited(L"1.5", L"2,5").MaximumShown(), L"2.5");
}

TEST(NumericField, BlankInvalidValueIsNone) {
    const auto with = [](std::wstring invalid) {
        return NumericField({.invalidValue = std::move(invalid)}, L',', CommaReader);
    };
    EXPECT_FALSE(with(L"").HasInvalidValue());
    EXPECT_FALSE(with(L"  ").HasInvalidValue());
    EXPECT_TRUE(with(L" 327.67").HasInvalidValue());
    EXPECT_EQ(with(L"327.67").InvalidShown(), L"327,67");
    EXPECT_TRUE(with(L"327.67").IsInvalid(L"327,67")) << "both with the local separator";
    EXPECT_FALSE(with(L"327.67").IsInvalid(L"327.6"));
}

TEST(NumericField, UpperLimitIsInclusive) {
    const NumericField field = Limited(L"", L"30.5");
    EXPECT_FALSE(field.ExceedsMaximum(L"30.5"));
    EXPECT_FALSE(field.ExceedsMaximum(L"-100"));
    EXPECT_TRUE(field.ExceedsMaximum(L"30.51"));
}

TEST(NumericField, WithoutLimitsNothingExceeds) {
    EXPECT_FALSE(Limited(L"", L"").ExceedsMaximum(std::wstring(1000, L'9')));
    EXPECT_FALSE(Limited(L"", L"").BelowMinimum(L"abc"));
}

TEST(NumericField, ExponentsAreReadInTheValueAndInBothLimits) {
    const NumericField small = Limited(L"1e-06", L"1");
    EXPECT_FALSE(small.ExceedsMaximum(L"5e-06"));
    EXPECT_TRUE(small.ExceedsMaximum(L"5e+06"));
    EXPECT_FALSE(small.BelowMinimum(L"5e-06"));
    EXPECT_TRUE(small.BelowMinimum(L"5e-07"));
    const NumericField wide = Limited(L"-3.4E+38", L"3,4E+38");
    EXPECT_FALSE(wide.ExceedsMaximum(L"500"));
    EXPECT_TRUE(wide.ExceedsMaximum(L"3.5e38"));
    EXPECT_FALSE(wide.BelowMinimum(L"-500"));
    EXPECT_TRUE(wide.BelowMinimum(L"-3.5e38"));
}

TEST(NumericField, ExponentOutOfRangeIsInfiniteWhileTypingAndAnErrorOnOk) {
    EXPECT_TRUE(Limited(L"", L"5").ExceedsMaximum(L"1e999"));
    EXPECT_FALSE(Limited(L"", L"5").ExceedsMaximum(L"-1e999"));
    EXPECT_FALSE(Limited(L"", L"5").ExceedsMaximum(L"9e-999"));
    EXPECT_THROW(Limited(L"5", L"").BelowMinimum(L"1e999"), NumberError);
}

TEST(NumericField, InvalidValueMayBeNoNumber) {
    for (const wchar_t separator : {L'.', L','}) {
        const NumericField field = Limited(L"10", L"", separator);
        EXPECT_FALSE(field.IsNumber(L"NaN"));
        EXPECT_FALSE(field.IsNumber(L"1 - none"));
        EXPECT_TRUE(field.IsNumber(L"-999"));
    }
    EXPECT_TRUE(Limited(L"", L"").IsNumber(L"-3.4E+38"));
}

TEST(NumericField, NegativeMaximumTurnsAMinusOrAnEmptyTextIntoTheLimitUnderAPoint) {
    const NumericField field = Limited(L"", L"-5");
    EXPECT_TRUE(field.ExceedsMaximum(L"-"));
    EXPECT_TRUE(field.ExceedsMaximum(L""));
    EXPECT_TRUE(field.ExceedsMaximum(L"."));
    EXPECT_FALSE(field.ExceedsMaximum(L"-5"));
}

TEST(NumericField, TextThatTheRegionCannotReadIsNotComparedWhileTyping) {
    const NumericField field = Limited(L"", L"-5", L',');
    EXPECT_FALSE(field.ExceedsMaximum(L"-"));
    EXPECT_FALSE(field.ExceedsMaximum(L""));
    EXPECT_FALSE(field.ExceedsMaximum(L","));
    EXPECT_TRUE(field.ExceedsMaximum(L"-4,5"));
}

TEST(NumericField, RegionalNumbersAreComparedInSinglePrecision) {
    EXPECT_FALSE(Limited(L"", L"16777216", L',').ExceedsMaximum(L"16777217"));
    EXPECT_TRUE(Limited(L"", L"16777216").ExceedsMaximum(L"16777217"));
}

TEST(NumericField, LimitInTheOtherSeparatorIsRead) {
    EXPECT_TRUE(Limited(L"", L"1,5").ExceedsMaximum(L"1.6"));
    EXPECT_FALSE(Limited(L"", L"1,5").ExceedsMaximum(L"1.4"));
    EXPECT_TRUE(Limited(L"", L"1.5", L',').ExceedsMaximum(L"1,6"));
}

TEST(NumericField, LimitThatIsNoNumber) {
    EXPECT_TRUE(Limited(L"", L"abc").ExceedsMaximum(L"1")) << "reads as 0 under a point";
    EXPECT_FALSE(Limited(L"", L"abc").ExceedsMaximum(L"abc")) << "so the limit itself may stand";
    EXPECT_FALSE(Limited(L"", L"abc", L',').ExceedsMaximum(L"1"));
    EXPECT_THROW(Limited(L"abc", L"", L',').BelowMinimum(L"1"), NumberError);
    EXPECT_TRUE(Limited(L"abc", L"").BelowMinimum(L"-1"));
}

TEST(NumericField, NumberOutOfRangeIsInfiniteWhileTypingAndAnErrorOnOk) {
    const std::wstring huge(400, L'9');
    EXPECT_TRUE(Limited(L"", L"5").ExceedsMaximum(huge));
    EXPECT_FALSE(Limited(L"", L"5").ExceedsMaximum(L"-" + huge));
    EXPECT_THROW(Limited(L"5", L"").BelowMinimum(huge), NumberError);
    const NumericField infinite({.minimum = L"1", .maximum = L"5"}, L',',
                                [](std::wstring_view text) -> std::optional<float> {
                                    return text.size() > 2 ? INFINITY : 1.0F;
                                });
    EXPECT_TRUE(infinite.ExceedsMaximum(L"123"));
    EXPECT_THROW(infinite.BelowMinimum(L"123"), NumberError);
}

TEST(NumericField, LowerLimitIsInclusive) {
    EXPECT_FALSE(Limited(L"10", L"").BelowMinimum(L"10"));
    EXPECT_TRUE(Limited(L"10", L"").BelowMinimum(L"9.99"));
    EXPECT_TRUE(Limited(L"10", L"", L',').BelowMinimum(L"9,99"));
    EXPECT_THROW(Limited(L"10", L"", L',').BelowMinimum(L"-"), NumberError);
    EXPECT_TRUE(Limited(L"10", L"").BelowMinimum(L"-")) << "reads as 0";
}

TEST(NumericField, OkNeedsMoreThanASeparator) {
    const NumericField field = Limited(L"", L"");
    EXPECT_FALSE(field.CanAccept(L""));
    EXPECT_FALSE(field.CanAccept(L"."));
    EXPECT_TRUE(field.CanAccept(L","));
    EXPECT_TRUE(field.CanAccept(L"-"));
    EXPECT_TRUE(field.CanAccept(L"0"));
    EXPECT_FALSE(Limited(L"", L"", L',').CanAccept(L","));
}

TEST(NumericField, LeadingSeparatorIsWrittenWithAZero) {
    const NumericField point = Limited(L"", L"");
    EXPECT_EQ(point.TextToWrite(L".5"), L"0.5");
    EXPECT_EQ(point.TextToWrite(L"-.25"), L"-0.25");
    EXPECT_EQ(point.TextToWrite(L"-."), L"-0.");
    EXPECT_EQ(point.TextToWrite(L"1.5"), L"1.5");
    EXPECT_EQ(point.TextToWrite(L"-"), L"-");
    EXPECT_EQ(point.TextToWrite(L",5"), L",5");
    const NumericField comma = Limited(L"", L"", L',');
    EXPECT_EQ(comma.TextToWrite(L",5"), L"0,5");
    EXPECT_EQ(comma.TextToWrite(L"0,5"), L"0,5") << "as it stands";
}

}  // namespace
}  // namespace quillon
