// What the operator does in the device window.
#include "fault/device_window.h"
#include "fault/operations.h"
#include "fault/stand_ins.h"
#include "window/resource.h"

namespace quillon::test {

namespace {

// The four value editors, from the lists.
HRESULT EditRow(Stage& stage, int list, const wchar_t* item) {
    EXPECT_TRUE(OpenRow(stage.window, list, item));
    return S_OK;
}

HRESULT EditNumber(Stage& stage) {
    return EditRow(stage, IDC_LVCPS, L"cpApplCode");
}

HRESULT EditText(Stage& stage) {
    return EditRow(stage, IDC_LVADVANCEDCPS, L"cpUnitName");
}

HRESULT EditEnumeration(Stage& stage) {
    return EditRow(stage, IDC_LVCOV, L"cpHoldOffMode");
}

HRESULT EditStructure(Stage& stage) {
    return EditRow(stage, IDC_LVADVANCEDCPS, L"nciSetpoints");
}

// The option dialogs, from the main view.
template <int kLabel>
HRESULT EditLabel(Stage& stage) {
    ChooseCommand(stage.window, IDC_LBLNV_FIRST + kLabel);
    return S_OK;
}

template <int kCommand>
HRESULT Choose(Stage& stage) {
    ChooseCommand(stage.window, kCommand);
    return S_OK;
}

void ChooseOutput(Stage& stage) {
    ChooseFile(stage.folder + L"\\" + kParameterFile);
}

void ChooseInput(Stage& stage) {
    ChooseFile(stage.folder + L"\\" + kChosenFile);
}

HRESULT PrintLabel(Stage& stage) {
    PrintFirstLabel(stage.window);
    return S_OK;
}

constexpr Operation kWindowOperations[] = {
    {.name = "number edited", .needsWindow = true, .quiet = true, .run = EditNumber},
    {.name = "text edited", .needsWindow = true, .quiet = true, .run = EditText},
    {.name = "enumeration edited", .needsWindow = true, .quiet = true, .run = EditEnumeration},
    {.name = "structure edited",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .putsBack = L"Point.Value.put(\"23.00 25.00 28.00 21.00 19.00 16.00\")",
     .run = EditStructure},
    // A reading that fails before the dialog is there does not keep the operator from choosing.
    {.name = "mode chosen",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .bySettings = true,
     .run = EditLabel<0>},
    {.name = "occupancy chosen",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .bySettings = true,
     .run = EditLabel<1>},
    {.name = "lighting chosen",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .putsBack = L"Point.Value.put(\"0.0\")",
     .bySettings = true,
     .run = EditLabel<2>},
    {.name = "energy hold off chosen",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .putsBack = L"Point.Value.put(\"0.0\")",
     .bySettings = true,
     .run = EditLabel<3>},
    {.name = "fan speed chosen",
     .needsWindow = true,
     .quiet = true,
     .stops = false,
     .putsBack = L"Point.Value.put(\"40.0\")",
     .bySettings = true,
     .run = EditLabel<4>},
    {.name = "About shown", .needsWindow = true, .quiet = true, .run = Choose<IDM_ABOUT>},
    {.name = "parameters saved",
     .needsWindow = true,
     .quiet = true,
     .prepare = ChooseOutput,
     .run = Choose<IDM_PARAM_SAVE>},
    {.name = "parameters downloaded",
     .needsWindow = true,
     .quiet = true,
     .prepare = ChooseInput,
     .run = Choose<IDM_PARAM_DOWNLOAD>},
    {.name = "label printed",
     .needsWindow = true,
     .quiet = true,
     .showsFailures = true,
     .run = PrintLabel},
};

}  // namespace

std::span<const Operation> WindowOperations() {
    return kWindowOperations;
}

}  // namespace quillon::test
