#include "damage/label_tab.h"

#include "fault/device_window.h"
#include "support/plugin_window.h"
#include "window/resource.h"

namespace quillon::test {

void PrintFirstLabel(HWND window) {
    SelectTab(window, L"Label Print");
    const HWND models = ControlOf(window, IDC_NIMBRA_MODEL_LIST);
    if (SendMessageW(models, LB_SETCURSEL, 0, 0) == LB_ERR) return;
    SendMessageW(GetParent(models), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(IDC_NIMBRA_MODEL_LIST, LBN_SELCHANGE)),
                 reinterpret_cast<LPARAM>(models));
    PressButton(ControlOf(window, IDC_NIMBRA_PRINTBUTTON));
}

}  // namespace quillon::test
