#include "editors/structure_copy.h"

#include "editors/edit_text.h"
#include "plugin/field_text.h"

namespace quillon {

std::optional<std::wstring> StructureText(const std::vector<FieldRow>& rows) {
    std::wstring text;
    for (const FieldRow& row : rows) {
        if (row.value == kUnread) return std::nullopt;
        text += L' ';
        text += row.value;
    }
    return std::wstring(TrimBlanks(text));
}

}  // namespace quillon
