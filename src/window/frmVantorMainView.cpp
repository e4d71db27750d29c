// frmVantor: editing the values of the main view.
#include "com/error.h"
#include "editors/EditPoint.h"
#include "editors/frmAppMode.h"
#include "editors/frmEnergyHolfOff.h"
#include "editors/frmFan.h"
#include "editors/frmLighting.h"
#include "editors/frmOccSchedule.h"
#include "editors/option_editors.h"
#include "host_members.h"
#include "plugin/number_text.h"
#include "window/frmVantor.h"
#include "window/host_points.h"
#include "window/view_lists.h"

namespace quillon {

namespace {

void ShowOptionDialog(OptionDialog&& dialog, const DataPoint& point, HWND owner) {
    dialog.SetDataPoint(point);
    dialog.Show(owner);
}

void ShowOptionEditor(const OptionEditorChoice& choice, const DataPoint& point, HWND owner) {
    switch (choice.editor) {
        case OptionEditor::kAppMode:
            return ShowOptionDialog(frmAppMode(), point, owner);
        case OptionEditor::kOccupancy:
            return ShowOptionDialog(frmOccSchedule(), point, owner);
        case OptionEditor::kLighting:
            return ShowOptionDialog(frmLighting(), point, owner);
        case OptionEditor::kEnergyHoldOff:
            return ShowOptionDialog(frmEnergyHolfOff(), point, owner);
        case OptionEditor::kFan: {
            frmFan fan;
            fan.SetNumSpeed(choice.speeds);
            return ShowOptionDialog(std::move(fan), point, owner);
        }
    }
}

}  // namespace

// Not while a command works through its points: its loop would wait for the dialog. The window may
// be closed while the dialog is up.
void frmVantor::EditMainViewValue(int index) {
    if (IsAtWork() || m_editing || index < 0 || index >= MainViewCycle::kLabels) return;
    const com::Ptr<CDevice> hold = m_object;
    bool shown = false;
    m_editing = true;
    com::Quietly([&] {
        const auto number = EntryNumber(m_mainViewTags[static_cast<std::size_t>(index)]);
        if (!number) return;
        const std::wstring key = DecimalText(*number);
        const DataPoint point(FindPoint(NetworkVariables().Get(), com::Variant(key)));
        if (point.NVDirection() == host::point::kOutput || !IsOpen()) return;
        const auto choice =
            com::InFull([&] { return ReadOptionEditor(ReadSetting(kOptionEditorsSection, key)); });
        if (choice) ShowOptionEditor(*choice, point, Handle());
        shown = choice || EditPoint(point, Handle());
    });
    m_editing = false;
    if (!shown || !IsOpen()) return;
    const bool read = com::Quietly([&] { return ReadMainViewLabel(index); });
    if (!read && IsOpen() && m_mainViewAge[static_cast<std::size_t>(index)].Fail())
        PageAt(kTabMain).SetGreyed(IDC_LBLNV_FIRST + index, true);
}

// Not while a command works, or the editor would come up behind it.
void frmVantor::PostEdit(int command) const {
    if (!IsAtWork()) PostMessageW(Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void frmVantor::PostEditOfFocused() {
    if (FocusedList()) return PostEdit(IDM_EDIT_VALUE);
    const HWND focus = GetFocus();
    for (int index = 0; focus && index < MainViewCycle::kLabels; ++index)
        if (GetDlgItem(PageWindow(kTabMain), IDC_LBLNV_FIRST + index) == focus)
            PostEdit(IDC_LBLNV_FIRST + index);
}

}  // namespace quillon
