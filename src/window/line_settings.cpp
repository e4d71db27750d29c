#include "window/line_settings.h"

#include <array>
#include <cstddef>

namespace quillon {
namespace {

constexpr std::uint32_t kHighestPort = 256;
constexpr std::uint32_t kHighestBaud = 100'000'000;

std::wstring_view Trimmed(std::wstring_view text) {
    constexpr std::wstring_view kBlanks = L" \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Digits alone, 1 to `highest`.
std::optional<std::uint32_t> WholeNumber(std::wstring_view text, std::uint32_t highest) {
    std::uint64_t number = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = number * 10 + static_cast<std::uint64_t>(digit - L'0');
        if (number > highest) return std::nullopt;
    }
    if (number == 0) return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

std::optional<Parity> ParityOf(std::wstring_view text) {
    if (text == L"n" || text == L"N") return Parity::kNone;
    if (text == L"o" || text == L"O") return Parity::kOdd;
    if (text == L"e" || text == L"E") return Parity::kEven;
    if (text == L"m" || text == L"M") return Parity::kMark;
    if (text == L"s" || text == L"S") return Parity::kSpace;
    return std::nullopt;
}

std::optional<StopBits> StopBitsOf(std::wstring_view text) {
    if (text == L"1") return StopBits::kOne;
    if (text == L"1.5") return StopBits::kOneAndHalf;
    if (text == L"2") return StopBits::kTwo;
    return std::nullopt;
}

// Exactly four fields, trimmed.
std::optional<std::array<std::wstring_view, 4>> Fields(std::wstring_view text) {
    std::array<std::wstring_view, 4> fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t comma = text.find(L',');
        const bool last = i + 1 == fields.size();
        if (last != (comma == std::wstring_view::npos)) return std::nullopt;
        fields[i] = Trimmed(text.substr(0, comma));
        if (!last) text.remove_prefix(comma + 1);
    }
    return fields;
}

}  // namespace

std::optional<LineSettings> ParseLineSettings(std::wstring_view text) {
    const auto fields = Fields(text);
    if (!fields) return std::nullopt;
    const auto baud = WholeNumber((*fields)[0], kHighestBaud);
    const auto parity = ParityOf((*fields)[1]);
    const auto dataBits = WholeNumber((*fields)[2], 8);
    const auto stopBits = StopBitsOf((*fields)[3]);
    if (!baud || !parity || !dataBits || *dataBits < 4 || !stopBits) return std::nullopt;
    return LineSettings{*baud, *parity, static_cast<std::uint8_t>(*dataBits), *stopBits};
}

std::optional<std::uint32_t> ParsePortNumber(std::wstring_view text) {
    return WholeNumber(Trimmed(text), kHighestPort);
}

}  // namespace quillon
