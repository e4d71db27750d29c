#include <cmath>

#include "fuzz_support.h"
#include "plugin/factory_data.h"
#include "window/mCalibra.h"

namespace {

using namespace quillon;
using fuzz::Require;

// Two counts and two voltages from the front of the input; the rest is typed text and bounds.
CalibrationRecord TakeRecord(const std::uint8_t* data, std::size_t size) {
    CalibrationRecord record;
    const auto word = [&](std::size_t at) {
        return static_cast<std::int16_t>(at + 1 < size ? data[at] << 8 | data[at + 1] : 0);
    };
    record.countL = word(0);
    record.countH = word(2);
    record.voltL = static_cast<float>(word(4)) / 1000;
    record.voltH = static_cast<float>(word(6)) / 1000;
    return record;
}

void CheckText(const CalibrationValues& values, const Date& date) {
    const auto text = CalibrationText(values, date);
    Require(text.has_value() == (date.year >= 1998 && date.year <= 2253));
    if (!text) return;
    Require(IsFactoryText(*text) && fuzz::IsUpperHex(*text));
    const auto parsed = ParseFactoryData(*text);
    Require(parsed.has_value());
    Require(parsed->bytes[6] == 1 && parsed->bytes[8] == WeekNumber(date));
    if (values.b >= 0) Require(parsed->high == values.b);
    if (values.b >= 0 && values.a >= 0) Require(parsed->low == values.a);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CalibrationRecord record = TakeRecord(data, size);
    const auto values = ComputeCalibration(record);
    if (values) {
        Require(values->offset >= 0 && record.voltL != record.voltH);
        const std::int32_t year = 1900 + (size > 8 ? data[8] * 2 : 0);
        CheckText(*values, {year, 1 + (size > 9 ? data[9] % 12 : 0), 1});
    }
    const std::wstring text = size > 8 ? fuzz::WideText(data + 8, size - 8) : std::wstring();
    const float volts = TypedVoltage(text);
    Require(!std::isnan(volts));
    const auto limits = ReadCalibrationLimits([&](const wchar_t*, const wchar_t*) { return text; });
    Require(std::isfinite(limits.low.voltL));
    Require(Classify(record.countL, volts, limits) == CalibrationPoint::kNone);
    IsFactoryText(text);
    return 0;
}
