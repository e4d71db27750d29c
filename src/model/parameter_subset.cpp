#include "model/parameter_subset.h"

#include <algorithm>
#include <optional>

#include "plugin/field_text.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

// What stands for a number that no device can have.
constexpr std::int32_t kNoNumber = -1;

wchar_t Lower(wchar_t one) {
    return one >= L'A' && one <= L'Z' ? static_cast<wchar_t>(one - L'A' + L'a') : one;
}

// The number of an entry's section, kMostParameters for any larger one; nullopt for a section that
// is no entry of the kind. Section names are compared without letter case.
std::optional<std::int32_t> EntryNumber(std::wstring_view name, std::wstring_view prefix) {
    if (name.size() <= prefix.size()) return std::nullopt;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (Lower(name[i]) != Lower(prefix[i])) return std::nullopt;
    const std::wstring_view digits = name.substr(prefix.size());
    if (digits[0] == L'0' && digits.size() > 1) return std::nullopt;
    std::int32_t number = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = std::min(number * 10 + (digit - L'0'), kMostParameters);
    }
    return number;
}

std::int32_t ClaimedTotal(std::wstring_view total) {
    try {
        const double number = std::clamp(LenientNumber(total), 0.0, double{kMostParameters});
        return RoundHalfEven(number);
    } catch (const NumberError&) {
        return 0;
    }
}

std::int32_t PointNumber(std::wstring_view text) {
    try {
        return LenientWhole(text);
    } catch (const NumberError&) {
        return kNoNumber;
    }
}

bool IsMarked(std::wstring_view mark) {
    try {
        return LenientNumber(mark) != 0;
    } catch (const NumberError&) {
        return false;
    }
}

}  // namespace

std::int32_t EntryCount(std::wstring_view total, const std::vector<std::wstring>& sections,
                        const ParameterKind& kind) {
    std::int32_t present = 0;
    for (const std::wstring& section : sections)
        if (const auto number = EntryNumber(section, kind.section))
            present = std::max(present, *number + 1);
    return std::min(ClaimedTotal(total), std::min(present, kMostParameters));
}

ParameterLine ReadParameter(const SettingReader& read, const ParameterKind& kind, std::int32_t n) {
    const std::wstring section = kind.section + DecimalText(n);
    ParameterLine line;
    line.name = read(section, L"Name");
    line.hidden = std::wstring(kind.tag) + L"\\" +
                  DecimalText(PointNumber(read(section, kind.key))) + L"\\" +
                  read(section, L"Value");
    line.selected = IsMarked(read(section, L"Mark"));
    return line;
}

ParameterSubset::ParameterSubset(std::wstring_view programId) {
    Section(kGeneralSection);
    Key(kProgramIdKey, programId);
}

void ParameterSubset::Add(std::wstring_view hiddenLine) {
    const std::wstring tag = GetField(hiddenLine, 0, L"\\");
    for (std::size_t place = 0; place < kParameterKinds.size(); ++place) {
        const ParameterKind& kind = *kParameterKinds[place];
        if (tag != kind.tag) continue;
        Section(kind.section + DecimalText(m_counts[place]++));
        Key(kind.key, GetField(hiddenLine, 1, L"\\"));
        Key(L"Value", GetField(hiddenLine, 2, L"\\"));
    }
}

std::wstring ParameterSubset::Text() const {
    ParameterSubset whole(*this);
    for (std::size_t place = 0; place < kParameterKinds.size(); ++place) {
        whole.Section(kParameterKinds[place]->list);
        whole.Key(kTotalNumber, DecimalText(m_counts[place]));
    }
    return whole.m_text;
}

void ParameterSubset::Section(std::wstring_view name) {
    m_text.append(L"[").append(name).append(L"]\r\n");
}

void ParameterSubset::Key(std::wstring_view name, std::wstring_view value) {
    constexpr std::wstring_view kBlanks = L" \t";
    value.remove_prefix(std::min(value.find_first_not_of(kBlanks), value.size()));
    value = value.substr(0, value.find_last_not_of(kBlanks) + 1);
    m_text.append(name).append(L"=").append(value).append(L"\r\n");
}

}  // namespace quillon
