// The About box.
#pragma once

#include "ui/dialog.h"

namespace quillon {

class frmVantorAbout final : public ui::Dialog {
public:
    void ShowModal(HWND owner);

private:
    bool OnInit() override;
    bool OnCommand(int id, int code, HWND control) override;
};

}  // namespace quillon
