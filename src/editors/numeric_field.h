// The rules of the numeric editor's field: how numbers are shown, the limits, what OK writes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "editors/number_typing.h"

namespace quillon {

// Reads a number by the regional settings, in single precision; infinite when it is out of range,
// nullopt when the text is no number there.
using RegionalReader = std::function<std::optional<float>(std::wstring_view text)>;

// The text with its first foreign separator ("," where the local one is ".", else ".") replaced by
// the local one.
std::wstring WithLocalSeparator(std::wstring_view text, wchar_t localSeparator);

class NumericField {
public:
    struct Point {
        bool isFloat = false;
        int bCoef = 0;
        // As the host delivers them; empty: no limit.
        std::wstring minimum = {};
        std::wstring maximum = {};
        std::wstring invalidValue = {};  // blank: the type has none
    };

    // Where the local separator is ".", numbers are read without regard to the regional settings,
    // in double precision, as far as a text begins with a number, its exponent included; otherwise
    // by `read`.
    NumericField(Point point, wchar_t localSeparator, RegionalReader read);

    const NumberRules& Rules() const { return m_rules; }
    std::wstring Shown(std::wstring_view text) const;
    // The limits with the local separator, "---" where there is none.
    std::wstring MinimumShown() const { return LimitShown(m_point.minimum); }
    std::wstring MaximumShown() const { return LimitShown(m_point.maximum); }
    bool HasInvalidValue() const { return !TrimBlanks(m_point.invalidValue).empty(); }
    std::wstring InvalidShown() const { return Shown(m_point.invalidValue); }
    bool IsInvalid(std::wstring_view value) const { return Shown(value) == InvalidShown(); }

    // While typing: true when the text is a number above the upper limit. A text or a limit that
    // cannot be read is not compared.
    bool ExceedsMaximum(std::wstring_view text) const;
    // Whether OK can be pressed.
    bool CanAccept(std::wstring_view text) const;

    // OK: the text to write, with a "0" in front of a leading separator.
    std::wstring TextToWrite(std::wstring_view text) const;
    // False for an invalid value such as "NaN", which no limit can be compared with.
    bool IsNumber(std::wstring_view text) const;
    // True when the text is below the lower limit. Throws NumberError when one of the two cannot be
    // read or is out of range.
    bool BelowMinimum(std::wstring_view text) const;

private:
    std::optional<double> Read(std::wstring_view text) const;
    double ReadForWriting(std::wstring_view text) const;
    std::wstring LimitShown(const std::wstring& limit) const;

    Point m_point;
    NumberRules m_rules;
    RegionalReader m_read;
};

inline constexpr const wchar_t* kTooGreatText = L"The value cannot not be greater than ";
inline constexpr const wchar_t* kTooSmallText = L"The value cannot not be less than ";
inline constexpr const wchar_t* kErrorInValue = L"error in calculating the value";

}  // namespace quillon
