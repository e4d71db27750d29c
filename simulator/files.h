// A device's file entries as the host hands them out.
#pragma once

#include <memory>

#include "com/class_info.h"
#include "com/dual.h"
#include "hosted.h"
#include "quorvex_h.h"
#include "room_controller.h"

namespace quorvex {

// The collection of a controller's entries, in file order.
com::Ptr<IFiles> MakeFiles(std::shared_ptr<RoomController> controller);

}  // namespace quorvex
