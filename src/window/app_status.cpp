#include "window/app_status.h"

namespace quillon {

AppStatusView AfterStatus(std::uint8_t status, std::wstring_view captionNow) {
    if (status == 0) return {.caption = std::wstring(kNormalCaption), .failureIcon = false};
    const std::wstring_view caption = captionNow.empty() ? kFailureCaption : std::wstring_view();
    return {.caption = std::wstring(caption), .failureIcon = true};
}

}  // namespace quillon
