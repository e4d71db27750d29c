#include "window/mCalibra.h"

#include <cmath>
#include <limits>

#include "plugin/hex_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::uint8_t kModeButton = 2;
constexpr std::int32_t kFirstYear = 1998;
constexpr std::int32_t kLastYear = kFirstYear + 255;

// What the device's value is to be at the LOW and at the HIGH point, and their product.
constexpr float kLowReference = 1199;
constexpr float kHighReference = 7352;
constexpr float kReferenceProduct = 8815048;
constexpr float kReferenceDifference = 6153;

constexpr double kLargestSingle = std::numeric_limits<float>::max();

// A number whose every operation is rounded to single precision. Each is worked out in double
// first, which gives the same bits and tells an overflow before it is raised: NumberError then, and
// for a division by 0.
class Single {
public:
    constexpr Single(float number) : m_number(number) {}
    float Number() const { return m_number; }

    friend Single operator+(Single x, Single y) { return Rounded(x.Wide() + y.Wide()); }
    friend Single operator-(Single x, Single y) { return Rounded(x.Wide() - y.Wide()); }
    friend Single operator*(Single x, Single y) { return Rounded(x.Wide() * y.Wide()); }
    friend Single operator/(Single x, Single y) {
        if (y.m_number == 0) throw NumberError("division by zero");
        return Rounded(x.Wide() / y.Wide());
    }
    Single operator-() const { return {-m_number}; }

    static Single Rounded(double number) {
        if (!(std::abs(number) <= kLargestSingle)) throw NumberError("number out of range");
        return {static_cast<float>(number)};
    }

private:
    double Wide() const { return m_number; }

    float m_number;
};

// Int(x + 0.5), which rounds down.
std::int16_t RoundedWord(Single number) {
    const float whole = std::floor((number + 0.5F).Number());
    if (whole < -32768.0F || whole > 32767.0F) throw NumberError("number leaves 16 bits");
    return static_cast<std::int16_t>(whole);
}

template <class Number>
auto ValueOrZero(Number&& number) -> decltype(number()) {
    try {
        return number();
    } catch (const NumberError&) {
        return {};
    }
}

std::int16_t CountBound(const std::wstring& text) {
    return ValueOrZero([&]() -> std::int16_t {
        const std::int32_t whole = LenientWhole(text);
        const auto word = static_cast<std::int16_t>(whole);
        return word == whole ? word : std::int16_t{0};
    });
}

float VoltBound(const std::wstring& text) {
    return ValueOrZero([&] { return Single::Rounded(LenientNumber(text)).Number(); });
}

bool Lies(std::int16_t count, float volts, const PointLimits& limits) {
    return limits.countL < count && count < limits.countH && limits.voltL < volts &&
           volts < limits.voltH;
}

// The A/D count at 0 V, from the counts and voltages of the two points.
Single Offset(const CalibrationRecord& record) {
    const Single a = record.countL, b = record.countH, u = record.voltL, d = record.voltH;
    return (a * d - b * u) / (d - u);
}

Single ValueA(Single a, Single b, Single o) {
    return (kHighReference * b * o - kReferenceDifference * a * b - kLowReference * a * o) /
           (kLowReference * b - kLowReference * o - kHighReference * a + kHighReference * o);
}

Single ValueB(Single a, Single b, Single o) {
    return kReferenceProduct * (b - a) /
           (-kLowReference * b + kLowReference * o + kHighReference * a - kHighReference * o);
}

}  // namespace

CalibrationLimits ReadCalibrationLimits(
    const std::function<std::wstring(const wchar_t* section, const wchar_t* key)>& read) {
    const auto limits = [&](const wchar_t* section) {
        return PointLimits{CountBound(read(section, L"CountL")),
                           CountBound(read(section, L"CountH")), VoltBound(read(section, L"VoltL")),
                           VoltBound(read(section, L"VoltH"))};
    };
    return {limits(L"LowCalib"), limits(L"HighCalib")};
}

float TypedVoltage(std::wstring_view text) {
    try {
        return Single::Rounded(LenientNumber(text)).Number();
    } catch (const NumberError&) {
        return std::numeric_limits<float>::infinity();
    }
}

CalibrationPoint Classify(std::int16_t count, float volts, const CalibrationLimits& limits) {
    if (Lies(count, volts, limits.low)) return CalibrationPoint::kLow;
    if (Lies(count, volts, limits.high)) return CalibrationPoint::kHigh;
    return CalibrationPoint::kNone;
}

void CalibrationRecord::Take(CalibrationPoint point, std::int16_t count, float volts) {
    if (point == CalibrationPoint::kLow) {
        countL = count;
        voltL = volts;
    } else if (point == CalibrationPoint::kHigh) {
        countH = count;
        voltH = volts;
    }
}

bool CalibrationRecord::IsComplete() const {
    return voltL != 0 && countL != 0 && countH != 0 && voltH != 0;
}

CalibrationRecord& Calibration() {
    static CalibrationRecord s_record;
    return s_record;
}

bool IsModeAlone(std::uint8_t inputs) {
    return inputs == kModeButton;
}

std::optional<CalibrationValues> ComputeCalibration(const CalibrationRecord& record) {
    try {
        const Single a = record.countL, b = record.countH;
        const Single o = Offset(record);
        CalibrationValues values;
        values.a = RoundedWord(ValueA(a, b, o));
        values.b = RoundedWord(ValueB(a, b, o));
        values.offset = RoundedWord(std::abs(o.Number()));
        return values;
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

std::optional<std::wstring> CalibrationText(const CalibrationValues& values, const Date& today) {
    if (today.year < kFirstYear || today.year > kLastYear) return std::nullopt;
    std::wstring text;
    for (const std::int16_t word : {values.b, values.a, values.offset}) {
        std::int32_t bits = static_cast<std::uint16_t>(word);
        text += HexWord(bits);
    }
    std::int32_t year = today.year - kFirstYear;
    std::int32_t week = WeekNumber(today);
    return text + L"01" + HexByte(year) + HexByte(week);
}

}  // namespace quillon
