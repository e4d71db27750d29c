// Opening the editor that fits a data point.
#pragma once

#include <windows.h>

#include "editors/DataPoint.h"

namespace quillon {

// Opens the editor of the point's general data type, modal to the owner, and returns when it is
// closed. True: one was shown. A type that cannot be changed is refused with a message; one that is
// not known opens nothing. Throws com::Error when the host fails before the editor is there.
bool EditPoint(const DataPoint& point, HWND owner);

// The same for a field of a structure, which goes back to what it was unless its editor's OK
// succeeds. A type that is not known is refused, too.
bool EditStructureField(const DataPoint& field, HWND owner);

}  // namespace quillon
