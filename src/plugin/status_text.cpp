#include "plugin/status_text.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "plugin/number_text.h"

namespace quillon {
namespace {

struct KnownStatus {
    std::int32_t code;
    std::wstring_view text;
    std::uint32_t color;
};

constexpr std::uint32_t kGreyTextColor = 0x80000011;
constexpr std::uint32_t kWhite = 0xFFFFFF;

constexpr std::array kKnown{
    KnownStatus{-1, L"Absent", kGreyTextColor},
    KnownStatus{2, L"Unconfigured", 0xFF0000},
    KnownStatus{3, L"Applicationless Unconf.", 0x0000FF},
    KnownStatus{4, L"On Line", 0x00FF00},
    KnownStatus{6, L"Hard Off Line", 0xFF00FF},
    KnownStatus{12, L"Soft Off Line", 0x00FFFF},
    KnownStatus{140, L"Configured Bypass", 0x000000},
};

const KnownStatus* Find(std::int32_t code) {
    const auto found = std::find_if(kKnown.begin(), kKnown.end(), [code](const KnownStatus& known) {
        return known.code == code;
    });
    return found == kKnown.end() ? nullptr : &*found;
}

}  // namespace

std::wstring StatusText(std::int32_t code) {
    if (const KnownStatus* known = Find(code)) return std::wstring(known->text);
    return L"Status: " + DecimalText(code);
}

std::uint32_t StatusColor(std::int32_t code) {
    const KnownStatus* known = Find(code);
    return known ? known->color : kWhite;
}

}  // namespace quillon
