// Occupancy.
#pragma once

#include "editors/OptionDialog.h"

namespace quillon {

class frmOccSchedule final : public OptionDialog {
public:
    frmOccSchedule() : OptionDialog(OptionSet::OccSchedule()) {}
};

}  // namespace quillon
