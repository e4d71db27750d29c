#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillon {

// What a value that equals its type's invalid value is shown as.
inline constexpr std::wstring_view kInvalidText = L"Invalid";

// True when a raw value says that the host could not read the device: it is exactly "?".
bool SaysSilent(std::wstring_view raw);

// What one reading of a network variable does to the text that shows it.
struct LiveReading {
    bool silent = false;  // the device did not answer; the shown text stays as it is
    std::wstring text;    // the text to show; empty when silent
};

// `invalid` is the invalid value of the variable's type; the two are compared after both have had
// their decimal separator replaced, so an empty value with an empty invalid value is invalid too.
// `formatted` gives the formatted value and is called only when that is what will be shown; what it
// throws goes to the caller.
LiveReading ReadLiveValue(std::wstring_view raw, std::wstring_view invalid,
                          const std::function<std::wstring()>& formatted,
                          std::wstring_view decimalSeparator);

}  // namespace quillon
