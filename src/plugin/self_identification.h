#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// The three versions of a controller, four characters each; shorter or empty where the text ends.
struct SelfIdentification {
    std::wstring type;
    std::wstring version;
    std::wstring os;
};

// The index of the first ";" of a self-identification text; nullopt without one.
std::optional<std::size_t> SelfIdentificationMark(std::wstring_view sisd);

// The versions that follow the first ";": type, firmware version, OS version. nullopt without a
// ";".
std::optional<SelfIdentification> ParseSelfIdentification(std::wstring_view sisd);

}  // namespace quillon
