// The section of a settings file that says which network variable is edited by which option set.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillon {

// Its keys are the key texts of network variables.
inline constexpr const wchar_t* kOptionEditorsSection = L"OptionEditors";

enum class OptionEditor { kAppMode, kOccupancy, kLighting, kEnergyHoldOff, kFan };

struct OptionEditorChoice {
    OptionEditor editor = OptionEditor::kAppMode;
    std::int32_t speeds = 0;  // of the fan

    bool operator==(const OptionEditorChoice&) const = default;
};

// "AppMode", "Occupancy", "Lighting", "EnergyHoldOff", or "Fan" with a comma and the number of
// speeds; letter case counts, blanks around name and number do not. nullopt for anything else.
std::optional<OptionEditorChoice> ReadOptionEditor(std::wstring_view entry);

}  // namespace quillon
