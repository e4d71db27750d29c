// The structure editor's working copy of a structured value.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon {

struct FieldRow {
    std::wstring key;    // the field's key in its collection
    std::wstring name;   // column "Field"
    std::wstring shown;  // column "Value"
    std::wstring value;  // value text, the row's tag

    bool operator==(const FieldRow&) const = default;
};

// The value text of the whole: the fields' value texts in their order, each after one blank,
// without the blanks at both ends. An empty one among them so leaves two blanks. nullopt when one
// of them could not be read: the whole is written together or not at all.
std::optional<std::wstring> StructureText(const std::vector<FieldRow>& rows);

}  // namespace quillon
