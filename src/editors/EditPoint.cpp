#include "editors/EditPoint.h"

#include <memory>

#include "editors/editor_choice.h"
#include "editors/frmCPModif1.h"
#include "editors/frmCPModif2.h"
#include "editors/frmCPModif3.h"
#include "editors/frmCPModif4.h"
#include "ui/message_box.h"

namespace quillon {

namespace {

std::unique_ptr<ValueEditor> MakeEditor(EditorKind kind) {
    switch (kind) {
        case EditorKind::kNumeric:
            return std::make_unique<frmCPModif1>();
        case EditorKind::kText:
            return std::make_unique<frmCPModif2>();
        case EditorKind::kEnumeration:
            return std::make_unique<frmCPModif3>();
        case EditorKind::kStructure:
            return std::make_unique<frmCPModif4>();
        case EditorKind::kRefused:
        case EditorKind::kNone:
            break;
    }
    return nullptr;
}

bool Edit(const DataPoint& point, EditorKind kind, HWND owner, bool calledFramModif4) {
    if (kind == EditorKind::kRefused)
        ui::ShowMessage(kRefusedText, MB_OK | MB_ICONEXCLAMATION, kRefusedTitle);
    const auto editor = MakeEditor(kind);
    if (!editor) return false;
    editor->SetCalledFramModif4(calledFramModif4);
    editor->SetDataPoint(point);
    editor->Show(owner);
    return true;
}

}  // namespace

bool EditPoint(const DataPoint& point, HWND owner) {
    return Edit(point, ChooseEditor(point.SNVType().GenType()), owner, false);
}

bool EditStructureField(const DataPoint& field, HWND owner) {
    const EditorKind kind = ChooseEditor(field.SNVType().GenType());
    return Edit(field, kind == EditorKind::kNone ? EditorKind::kRefused : kind, owner, true);
}

}  // namespace quillon
