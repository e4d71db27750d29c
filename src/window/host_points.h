// Reading the host's data points for the device window.
#pragma once

#include <functional>
#include <string>

#include "com/ptr.h"
#include "com/variant.h"
#include "window/list_rows.h"
#include "window/live_value.h"

namespace quillon {

// The item of a host collection under a key (text, or a number); empty when it names none. Throws
// com::Error when the host fails.
com::Ptr<IDispatch> FindPoint(IDispatch* points, const com::Variant& key);

// A row from a data point: its name, its key and its value as shown. `withDirection`: the icon
// tells input from output, which is then read. Throw com::Error.
ListRow ReadNetworkVariableRow(IDispatch* point, bool withDirection);
ListRow ReadConfigurationPropertyRow(IDispatch* point);

// One reading of a point's value: three texts, of which the shown one is read only when it is
// needed. `answered` is called as soon as the first says that the device is there. Throws
// com::Error.
LiveReading ReadLivePoint(IDispatch* point, const std::function<void()>& answered);

}  // namespace quillon
