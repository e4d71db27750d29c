#include "window/mCalibra.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "plugin/factory_data.h"

namespace quillon {
namespace {

using Settings = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

Settings UsualLimits() {
    return {{{L"LowCalib", L"CountL"}, L"1500"},  {{L"LowCalib", L"CountH"}, L"2000"},
            {{L"LowCalib", L"VoltL"}, L"0.1"},    {{L"LowCalib", L"VoltH"}, L"2.5"},
            {{L"HighCalib", L"CountL"}, L"6300"}, {{L"HighCalib", L"CountH"}, L"7300"},
            {{L"HighCalib", L"VoltL"}, L"9"},     {{L"HighCalib", L"VoltH"}, L"9.6"}};
}

CalibrationLimits LimitsFrom(const Settings& settings) {
    return ReadCalibrationLimits([&](const wchar_t* section, const wchar_t* key) {
        const auto found = settings.find({section, key});
        return found == settings.end() ? std::wstring() : found->second;
    });
}

CalibrationPoint ClassOf(std::int16_t count, const wchar_t* typed) {
    return Classify(count, TypedVoltage(typed), LimitsFrom(UsualLimits()));
}

// ---- what is taken

TEST(CalibrationLimits, AreReadFromTheTwoSections) {
    const CalibrationLimits limits = LimitsFrom(UsualLimits());
    EXPECT_EQ(limits.low.countL, 1500);
    EXPECT_EQ(limits.low.countH, 2000);
    EXPECT_EQ(limits.low.voltL, 0.1F);
    EXPECT_EQ(limits.low.voltH, 2.5F);
    EXPECT_EQ(limits.high.countL, 6300);
    EXPECT_EQ(limits.high.countH, 7300);
    EXPECT_EQ(limits.high.voltL, 9.0F);
    EXPECT_EQ(limits.high.voltH, 9.6F);
}

TEST(CalibrationLimits, MissingOrUnreadableBoundsAreZero) {
    EXPECT_EQ(LimitsFrom({}).high.countH, 0);
    EXPECT_EQ(LimitsFrom({}).low.voltH, 0.0F);
    for (const wchar_t* count : {L"", L"many", L"40000", L"-32769", L"99999999999", L"1e400"}) {
        Settings settings = UsualLimits();
        settings[{L"LowCalib", L"CountH"}] = count;
        const std::int16_t expected = std::wstring(count) == L"1e400" ? 1 : 0;
        EXPECT_EQ(LimitsFrom(settings).low.countH, expected);
        EXPECT_EQ(LimitsFrom(settings).low.countL, 1500);
    }
    Settings settings = UsualLimits();
    settings[{L"LowCalib", L"VoltH"}] = std::wstring(40, L'9');
    EXPECT_EQ(LimitsFrom(settings).low.voltH, 0.0F);
    settings[{L"LowCalib", L"VoltH"}] = std::wstring(400, L'9');
    EXPECT_EQ(LimitsFrom(settings).low.voltH, 0.0F);
}

TEST(CalibrationLimits, CountsAreWholeAndHexadecimalIsUnderstood) {
    Settings settings = UsualLimits();
    settings[{L"LowCalib", L"CountL"}] = L"1500.5";
    settings[{L"LowCalib", L"CountH"}] = L"&H7FFF";
    EXPECT_EQ(LimitsFrom(settings).low.countL, 1500);
    EXPECT_EQ(LimitsFrom(settings).low.countH, 32767);
}

TEST(TypedVoltage, DotIsTheSeparatorAndACommaEndsTheNumber) {
    EXPECT_EQ(TypedVoltage(L"2.35"), 2.35F);
    EXPECT_EQ(TypedVoltage(L"2,35"), 2.0F);
    EXPECT_EQ(TypedVoltage(L" 9.3 V"), 9.3F);
    EXPECT_EQ(TypedVoltage(L"volt"), 0.0F);
    EXPECT_EQ(TypedVoltage(L" "), 0.0F);
}

TEST(TypedVoltage, NumberThatSinglePrecisionCannotHoldIsInfinite) {
    EXPECT_TRUE(std::isinf(TypedVoltage(std::wstring(40, L'9'))));
    EXPECT_TRUE(std::isinf(TypedVoltage(std::wstring(400, L'9'))));
    EXPECT_TRUE(std::isinf(TypedVoltage(L"&H123456789")));
}

TEST(Classification, BoundsLieOutside) {
    EXPECT_EQ(ClassOf(1500, L"1"), CalibrationPoint::kNone);
    EXPECT_EQ(ClassOf(1501, L"1"), CalibrationPoint::kLow);
    EXPECT_EQ(ClassOf(1999, L"1"), CalibrationPoint::kLow);
    EXPECT_EQ(ClassOf(2000, L"1"), CalibrationPoint::kNone);
    EXPECT_EQ(ClassOf(7000, L"9.6"), CalibrationPoint::kNone);
    EXPECT_EQ(ClassOf(7000, L"9.59"), CalibrationPoint::kHigh);
    EXPECT_EQ(ClassOf(7300, L"9.59"), CalibrationPoint::kNone);
}

TEST(Classification, TypedVoltageMeetsItsBoundInSinglePrecision) {
    EXPECT_EQ(ClassOf(1700, L"0.1"), CalibrationPoint::kNone) << "equal to the bound 0.1";
    EXPECT_EQ(ClassOf(1700, L"0.1000000001"), CalibrationPoint::kNone) << "the same single";
    EXPECT_EQ(ClassOf(1700, L"0.10001"), CalibrationPoint::kLow);
}

TEST(Classification, BothReadingsMustLieInTheSameWindow) {
    EXPECT_EQ(ClassOf(1700, L"9.3"), CalibrationPoint::kNone);
    EXPECT_EQ(ClassOf(7000, L"2.35"), CalibrationPoint::kNone);
}

TEST(Classification, LowIsAskedFirst) {
    CalibrationLimits limits;
    limits.low = limits.high = {0, 100, 0, 10};
    EXPECT_EQ(Classify(50, 5, limits), CalibrationPoint::kLow);
}

TEST(Classification, WithoutLimitsNothingIsTaken) {
    EXPECT_EQ(Classify(0, 0, LimitsFrom({})), CalibrationPoint::kNone);
    EXPECT_EQ(Classify(1, 1, LimitsFrom({})), CalibrationPoint::kNone);
}

TEST(Classification, VoltageBeyondSinglePrecisionIsOutside) {
    CalibrationLimits limits;
    limits.high = {0, 100, 0, std::numeric_limits<float>::max()};
    EXPECT_EQ(Classify(50, TypedVoltage(std::wstring(40, L'9')), limits), CalibrationPoint::kNone);
}

TEST(CalibrationRecord, SamePointAgainReplacesIt) {
    CalibrationRecord record;
    record.Take(CalibrationPoint::kLow, 1700, 2.3F);
    record.Take(CalibrationPoint::kLow, 1753, 2.35F);
    EXPECT_EQ(record, (CalibrationRecord{1753, 0, 2.35F, 0}));
    EXPECT_FALSE(record.IsComplete());
    record.Take(CalibrationPoint::kNone, 1, 1);
    EXPECT_EQ(record, (CalibrationRecord{1753, 0, 2.35F, 0}));
    record.Take(CalibrationPoint::kHigh, 6819, 9.3F);
    EXPECT_TRUE(record.IsComplete());
}

TEST(CalibrationRecord, ZeroInAnyOfTheFourIsNotComplete) {
    EXPECT_FALSE((CalibrationRecord{0, 1, 1, 1}.IsComplete()));
    EXPECT_FALSE((CalibrationRecord{1, 0, 1, 1}.IsComplete()));
    EXPECT_FALSE((CalibrationRecord{1, 1, 0, 1}.IsComplete()));
    EXPECT_FALSE((CalibrationRecord{1, 1, 1, 0}.IsComplete()));
    EXPECT_TRUE((CalibrationRecord{-1, -1, -1, -1}.IsComplete()));
}

TEST(ModeButton, OnlyTheSecondInputAloneCounts) {
    for (int inputs = 0; inputs < 256; ++inputs)
        EXPECT_EQ(IsModeAlone(static_cast<std::uint8_t>(inputs)), inputs == 2) << inputs;
}

// ---- arithmetic

using Values = CalibrationValues;

TEST(Calibration, WorkedExample) {
    EXPECT_EQ(ComputeCalibration({1753, 6819, 2.35F, 9.3F}), (Values{10000, 16040, 40}));
    EXPECT_EQ(ComputeCalibration({1000, 2000, 1.0F, 2.0F}), (Values{1779, 2484, 0}));
}

TEST(Calibration, OffsetLosesItsSign) {
    EXPECT_EQ(ComputeCalibration({1700, 6900, 2.35F, 9.3F}), (Values{10000, 16364, 58}))
        << "of -58.27";
}

TEST(Calibration, ValuesAreRoundedDown) {
    EXPECT_EQ(ComputeCalibration({174, 100, 2.35F, 9.3F}), (Values{10000, -35, 199}))
        << "of -34.69; cutting off the fraction of -34.19 would give -34";
}

TEST(Calibration, ResultsThatLeave16BitsAreNone) {
    EXPECT_EQ(ComputeCalibration({1199, 7352, 1.63F, 10.0F}), std::nullopt);
    EXPECT_EQ(ComputeCalibration({30000, -30000, 1.0F, 1.0001F}), std::nullopt);
    const float huge = std::numeric_limits<float>::max();
    EXPECT_EQ(ComputeCalibration({1753, 6819, huge, -huge}), std::nullopt);
}

TEST(Calibration, ZeroDenominatorsAreNone) {
    EXPECT_EQ(ComputeCalibration({1753, 6819, 2.35F, 2.35F}), std::nullopt) << "equal voltages";
    EXPECT_EQ(ComputeCalibration({1199, 7352, 1199.0F, 7352.0F}), std::nullopt)
        << "counts that are the references themselves";
    EXPECT_EQ(ComputeCalibration({1000, 1000, 1.0F, 2.0F}), std::nullopt) << "equal counts";
}

// A converter with whole-number A, B and offset O, and a tester that shows millivolts.
class Bench {
public:
    struct Points {
        CalibrationRecord record;
        double offset;
    };
    Points Next() {
        const std::int32_t fullScale = 2000 + Up(30000);
        const std::int32_t resistance = fullScale / 4 + Up(32000 - fullScale / 4);
        const std::int32_t zero = Up(fullScale / 10);
        const auto count = [&](std::int32_t reference) {
            return static_cast<std::int16_t>(
                (fullScale * std::int64_t{reference} + std::int64_t{resistance} * zero) /
                (resistance + reference));
        };
        const auto volts = [&](std::int16_t n) {
            const std::int32_t millivolts = 10000 * (n - zero) / (fullScale - zero);
            return static_cast<float>(millivolts / 1000.0);
        };
        CalibrationRecord record{count(1199), count(7352), 0, 0};
        record.voltL = volts(record.countL);
        record.voltH = volts(record.countH);
        const double u = record.voltL, d = record.voltH;
        return {record, (record.countL * d - record.countH * u) / (d - u)};
    }

private:
    std::int32_t Up(std::int32_t end) {
        m_state = m_state * 1664525 + 1013904223;
        return static_cast<std::int32_t>((m_state >> 8) % static_cast<std::uint32_t>(end));
    }
    std::uint32_t m_state = 2026;
};

// The count at which the device, with its rounded values, finds a reference.
double CountOf(const Values& values, double reference) {
    return (reference * values.a + static_cast<double>(values.b) * values.offset) /
           (reference + values.b);
}

// The sum over all bits was worked out by another program, which rounds each step on its own: it is
// the same on every machine.
TEST(Calibration, BothPointsOf10000RoomsComeOutWithinOneCount) {
    Bench bench;
    std::uint32_t sum = 2166136261U;
    int silent = 0;
    double worst = 0;
    for (int valid = 0; valid < 10000;) {
        const auto [record, offset] = bench.Next();
        const auto values = ComputeCalibration(record);
        if (!values) {
            ++silent;
            continue;
        }
        for (const std::int16_t word : {values->b, values->a, values->offset})
            sum = (sum ^ static_cast<std::uint16_t>(word)) * 16777619U;
        if (offset < 0 || values->b < (values->a - offset) / 4) continue;
        ++valid;
        worst = std::max(worst, std::abs(CountOf(*values, 1199) - record.countL));
        worst = std::max(worst, std::abs(CountOf(*values, 7352) - record.countH));
    }
    EXPECT_LT(worst, 1.0);
    EXPECT_EQ(silent, 15);
    EXPECT_EQ(sum, 0x774e5e43U);
}

TEST(Calibration, NegativeOffsetMissesThePoints) {
    const CalibrationRecord record{1700, 6900, 2.35F, 9.3F};
    const auto values = ComputeCalibration(record);
    ASSERT_TRUE(values);
    EXPECT_GT(std::abs(CountOf(*values, 1199) - record.countL), 50);
}

// ---- text

TEST(CalibrationText, IsNineBytesOfFactoryData) {
    EXPECT_EQ(CalibrationText({10000, 16040, 40}, {2026, 11, 21}), L"27103EA80028011C2F");
    EXPECT_EQ(CalibrationText({0, 1, 255}, {1998, 1, 1}), L"0000000100FF010000");
    EXPECT_EQ(CalibrationText({0, 0, 0}, {2253, 12, 31}), L"00000000000001FF34");
}

TEST(CalibrationText, NegativeWordsAreTheirSixteenBits) {
    EXPECT_EQ(CalibrationText({-1, -32768, 32767}, {2026, 1, 2}), L"FFFF80007FFF011C01");
}

TEST(CalibrationText, YearThatOneByteCannotHoldGivesNone) {
    EXPECT_EQ(CalibrationText({1, 2, 3}, {1997, 12, 31}), std::nullopt);
    EXPECT_EQ(CalibrationText({1, 2, 3}, {2254, 1, 1}), std::nullopt);
}

TEST(CalibrationText, ReadsBackAsItsValues) {
    const auto text = CalibrationText({10000, 16040, 40}, {2026, 11, 21});
    ASSERT_TRUE(text && IsFactoryText(*text));
    const auto data = ParseFactoryData(*text);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->high, 10000);
    EXPECT_EQ(data->low, 16040);
    EXPECT_EQ(data->offset, 40);
    EXPECT_EQ(ProductionYear(*data), L"2026");
    EXPECT_EQ(ProductionWeek(*data), L"47");
}

TEST(CalibrationText, WordsFrom8000UpReadBackSwapped) {
    const auto data = ParseFactoryData(CalibrationText({-2, 16040, 40}, {2026, 1, 1}).value());
    ASSERT_TRUE(data);
    EXPECT_EQ(static_cast<std::uint16_t>(data->high), 0xFEFF);
    EXPECT_EQ(static_cast<std::uint16_t>(data->low), 0xA83E);
}

}  // namespace
}  // namespace quillon
