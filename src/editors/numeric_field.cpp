#include "editors/numeric_field.h"

#include <cmath>
#include <limits>

#include "plugin/number_text.h"

namespace quillon {
namespace {

// Beyond double's range.
double Infinite(std::wstring_view text) {
    const std::size_t begin = text.find_first_not_of(L" \t");
    const bool negative = begin != std::wstring_view::npos && text[begin] == L'-';
    const double infinity = std::numeric_limits<double>::infinity();
    return negative ? -infinity : infinity;
}

}  // namespace

std::wstring WithLocalSeparator(std::wstring_view text, wchar_t localSeparator) {
    std::wstring shown(text);
    const std::size_t place = shown.find(localSeparator == L',' ? L'.' : L',');
    if (place != std::wstring::npos) shown[place] = localSeparator;
    return shown;
}

NumericField::NumericField(Point point, wchar_t localSeparator, RegionalReader read)
    : m_point(std::move(point)),
      m_rules(RulesOf(m_point.isFloat, m_point.bCoef, localSeparator)),
      m_read(std::move(read)) {}

std::wstring NumericField::Shown(std::wstring_view text) const {
    return WithLocalSeparator(text, m_rules.separator);
}

std::wstring NumericField::LimitShown(const std::wstring& limit) const {
    return limit.empty() ? L"---" : Shown(limit);
}

std::optional<double> NumericField::Read(std::wstring_view text) const {
    if (m_rules.separator != L'.') return m_read(text);
    try {
        return LenientScientific(text);
    } catch (const NumberError&) {
        return Infinite(text);
    }
}

double NumericField::ReadForWriting(std::wstring_view text) const {
    const auto number = Read(text);
    if (!number || !std::isfinite(*number)) throw NumberError("not a number in range");
    return *number;
}

bool NumericField::ExceedsMaximum(std::wstring_view text) const {
    if (m_point.maximum.empty()) return false;
    const auto number = Read(text);
    const auto limit = Read(Shown(m_point.maximum));
    return number && limit && *number > *limit;
}

bool NumericField::CanAccept(std::wstring_view text) const {
    return !text.empty() && text != std::wstring_view(&m_rules.separator, 1);
}

std::wstring NumericField::TextToWrite(std::wstring_view text) const {
    std::wstring written(text);
    if (text.starts_with(m_rules.separator))
        written.insert(0, 1, L'0');
    else if (text.starts_with(L'-') && text.substr(1).starts_with(m_rules.separator))
        written.insert(1, 1, L'0');
    return written;
}

bool NumericField::IsNumber(std::wstring_view text) const {
    return m_rules.separator == L'.' ? IsScientific(text) : m_read(text).has_value();
}

bool NumericField::BelowMinimum(std::wstring_view text) const {
    if (m_point.minimum.empty()) return false;
    return ReadForWriting(text) < ReadForWriting(Shown(m_point.minimum));
}

}  // namespace quillon
