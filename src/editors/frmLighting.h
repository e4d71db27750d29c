// Lighting.
#pragma once

#include "editors/OptionDialog.h"

namespace quillon {

class frmLighting final : public OptionDialog {
public:
    frmLighting() : OptionDialog(OptionSet::Lighting()) {}
};

}  // namespace quillon
