#include "plugin/self_identification.h"

namespace quillon {
namespace {

constexpr std::size_t kVersionCharacters = 4;

std::wstring VersionAt(std::wstring_view text, std::size_t index) {
    const std::size_t begin = index * kVersionCharacters;
    if (begin >= text.size()) return {};
    return std::wstring(text.substr(begin, kVersionCharacters));
}

}  // namespace

std::optional<std::size_t> SelfIdentificationMark(std::wstring_view sisd) {
    const std::size_t mark = sisd.find(L';');
    if (mark == std::wstring_view::npos) return std::nullopt;
    return mark;
}

std::optional<SelfIdentification> ParseSelfIdentification(std::wstring_view sisd) {
    const auto mark = SelfIdentificationMark(sisd);
    if (!mark) return std::nullopt;
    const std::wstring_view versions = sisd.substr(*mark + 1);
    return SelfIdentification{VersionAt(versions, 0), VersionAt(versions, 1),
                              VersionAt(versions, 2)};
}

}  // namespace quillon
