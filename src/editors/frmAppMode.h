// The application mode.
#pragma once

#include "editors/OptionDialog.h"

namespace quillon {

class frmAppMode final : public OptionDialog {
public:
    frmAppMode() : OptionDialog(OptionSet::AppMode()) {}
};

}  // namespace quillon
