#include "window/shell_answer.h"

#include <algorithm>
#include <cstddef>

#include "plugin/hex_text.h"

namespace quillon {
namespace {

constexpr std::intptr_t kNoViewer = 31;
constexpr std::size_t kNameDigits = 4;

}  // namespace

std::optional<std::wstring> DocumentationMessage(std::intptr_t shellResult) {
    if (shellResult > kNoViewer) return std::nullopt;
    if (shellResult == kNoViewer) {
        return L"Viewer not Available. Please install the viewer to see the documentation";
    }
    if (shellResult == kShellFileNotFound) return L"Technical bullettin not available";
    return L"Visualization not allowed";
}

std::optional<std::wstring> BulletinFile(std::wstring_view identityBlock) {
    const std::wstring_view name = identityBlock.substr(0, kNameDigits);
    if (name.size() < kNameDigits ||
        !std::all_of(name.begin(), name.end(), [](wchar_t digit) { return HexDigit(digit); })) {
        return std::nullopt;
    }
    return std::wstring(name) + L".pdf";
}

}  // namespace quillon
