// Energy hold-off.
#pragma once

#include "editors/OptionDialog.h"

namespace quillon {

class frmEnergyHolfOff final : public OptionDialog {
public:
    frmEnergyHolfOff() : OptionDialog(OptionSet::EnergyHoldOff()) {}
};

}  // namespace quillon
