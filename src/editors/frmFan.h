// Fan speed.
#pragma once

#include <cstdint>

#include "editors/OptionDialog.h"

namespace quillon {

class frmFan final : public OptionDialog {
public:
    frmFan() : OptionDialog(OptionSet::Fan(0)) {}
    // The number of speeds that the device offers; chooses what is offered. Before Show.
    void SetNumSpeed(std::int32_t speeds) { SetOptions(OptionSet::Fan(speeds)); }
};

}  // namespace quillon
