#include "editors/option_editors.h"

#include <array>
#include <utility>

#include "plugin/blanks.h"
#include "plugin/number_text.h"

namespace quillon {
namespace {

constexpr std::array<std::pair<std::wstring_view, OptionEditor>, 4> kNames{
    {{L"AppMode", OptionEditor::kAppMode},
     {L"Occupancy", OptionEditor::kOccupancy},
     {L"Lighting", OptionEditor::kLighting},
     {L"EnergyHoldOff", OptionEditor::kEnergyHoldOff}}};

constexpr std::wstring_view kFanName = L"Fan";

std::optional<std::int32_t> WholeNumber(std::wstring_view text) {
    if (text.find(L'.') != std::wstring_view::npos) return std::nullopt;
    try {
        return RoundHalfEven(StrictNumber(text));
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<OptionEditorChoice> ReadOptionEditor(std::wstring_view entry) {
    const std::size_t comma = entry.find(L',');
    const std::wstring_view name = WithoutBlanks(entry.substr(0, comma));
    if (comma != std::wstring_view::npos) {
        const auto speeds = WholeNumber(entry.substr(comma + 1));
        if (name != kFanName || !speeds) return std::nullopt;
        return OptionEditorChoice{OptionEditor::kFan, *speeds};
    }
    for (const auto& [known, editor] : kNames)
        if (name == known) return OptionEditorChoice{editor};
    return std::nullopt;
}

}  // namespace quillon
