#include "editors/structure_copy.h"

#include "editors/edit_text.h"

namespace quillon {

std::wstring StructureText(const std::vector<FieldRow>& rows) {
    std::wstring text;
    for (const FieldRow& row : rows) {
        text += L' ';
        text += row.value;
    }
    return std::wstring(TrimBlanks(text));
}

}  // namespace quillon
