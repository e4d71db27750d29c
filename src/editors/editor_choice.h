// Which editor a data point gets: one table for the edit command and for the fields of a structure.
#pragma once

#include <string_view>

namespace quillon {

enum class EditorKind {
    kNumeric,      // frmCPModif1
    kText,         // frmCPModif2
    kEnumeration,  // frmCPModif3
    kStructure,    // frmCPModif4
    kRefused,      // the operator is told that the value cannot be changed
    kNone,         // a name that is not in the table
};

// By the general data type's name, whole and by case.
EditorKind ChooseEditor(std::wstring_view genType);

inline constexpr const wchar_t* kRefusedText = L"Unknown or Not modificable Attribute";
inline constexpr const wchar_t* kRefusedTitle = L"Edit Value";
// The general data type whose numbers take any number of decimals.
inline constexpr std::wstring_view kFloatType = L"Float";

}  // namespace quillon
