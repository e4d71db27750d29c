#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

struct Option {
    std::int32_t code;
    std::wstring label;

    bool operator==(const Option&) const = default;
};

// Reads an option list such as "0,Auto;1,Off;2,On;", in its order. An entry ends at the next ";",
// the last one also at the end of the text; entries without "," are skipped, and so are empty ones.
// The code is the lenient number before the first ",", the label all that follows it, further ","
// included. An entry whose code is no 32-bit number is left out.
std::vector<Option> ParseOptionList(std::wstring_view text);

}  // namespace quillon
