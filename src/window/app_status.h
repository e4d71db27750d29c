#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// The caption until the application status has been read, and the one while it is 0.
inline constexpr std::wstring_view kDesignCaption = L"Merrowind Nimbra PlugIn";
inline constexpr std::wstring_view kNormalCaption = L"Merrowind New_Nimbra PlugIn";
inline constexpr std::wstring_view kFailureCaption = L"Nimbra Failure";

struct AppStatusView {
    std::wstring caption;
    bool failureIcon = false;

    bool operator==(const AppStatusView&) const = default;
};

// What the window shows after one reading of the application status. 0: the normal caption and
// icon. Any other: the failure icon, and kFailureCaption when the caption is empty, an empty one
// when it is not, so that it blinks from reading to reading.
AppStatusView AfterStatus(std::uint8_t status, std::wstring_view captionNow);

}  // namespace quillon
