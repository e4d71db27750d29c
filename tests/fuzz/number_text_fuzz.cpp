#include "plugin/number_text.h"

#include <cmath>
#include <limits>

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

// The decimal half of the lenient value by another road: strtod of what may belong to a number.
double DecimalByTheLibrary(std::wstring_view text, const wchar_t* characters) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t"), text.size()));
    text = text.substr(0, text.find_first_not_of(characters));
    const std::string narrow(text.begin(), text.end());
    return std::strtod(narrow.c_str(), nullptr);
}

bool IsHexadecimal(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t"), text.size()));
    return text.starts_with(L"&H") || text.starts_with(L"&h");
}

void CheckLenient(const std::wstring& text) {
    const auto lenient = Attempt([&] { return LenientNumber(text); });
    if (IsHexadecimal(text)) {
        Require(!lenient || RoundHalfEven(*lenient) == *lenient);
    } else {
        const double expected = DecimalByTheLibrary(text, L"+-.0123456789");
        Require(lenient ? *lenient == expected : std::isinf(expected));
    }
    Require(Attempt([&] { return LenientNumber(L" \t" + text); }) == lenient);
    Require(Attempt([&] { return LenientNumber(text + L"?1"); }) == lenient);

    const auto strict = Attempt([&] { return StrictNumber(text); });
    Require(!strict || strict == lenient);
    Require(!Attempt([&] { return StrictNumber(text + L"?"); }));
}

void CheckScientific(const std::wstring& text) {
    const auto number = Attempt([&] { return LenientScientific(text); });
    if (IsHexadecimal(text)) {
        Require(number == Attempt([&] { return LenientNumber(text); }));
        Require(!IsScientific(text));
    } else {
        const double expected = DecimalByTheLibrary(text, L"+-.0123456789eE");
        Require(number ? *number == expected : std::isinf(expected));
    }
    Require(Attempt([&] { return LenientScientific(L" \t" + text); }) == number);
    Require(Attempt([&] { return LenientScientific(text + L"?1"); }) == number);

    Require(IsScientific(L" " + text + L"\t") == IsScientific(text));
    Require(!IsScientific(text + L"?"));
    if (Attempt([&] { return StrictNumber(text); })) Require(IsScientific(text));
}

void CheckWhole(const std::wstring& text) {
    const auto lenient = Attempt([&] { return LenientNumber(text); });
    const auto whole = Attempt([&] { return LenientWhole(text); });
    if (!whole) {
        Require(!lenient || std::abs(*lenient) >= 2147483647.5);
        return;
    }
    const double distance = std::abs(*lenient - *whole);
    Require(distance <= 0.5);
    Require(distance < 0.5 || *whole % 2 == 0);
    Require(StrictNumber(DecimalText(*whole)) == *whole);
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = quillon::fuzz::WideText(data, size);
    quillon::fuzz::CheckLenient(text);
    quillon::fuzz::CheckScientific(text);
    quillon::fuzz::CheckWhole(text);
    return 0;
}
