// The late-bound objects of the host: collections of data points, the points themselves, their
// types and the catalogue of types. Member names are those of include/host_members.h.
#pragma once

#include <memory>
#include <string>
#include <variant>

#include "catalogue/catalogue.h"
#include "hosted.h"
#include "late_bound.h"
#include "room_controller.h"

namespace quorvex {

// A room controller as one device object sees it. Points outlive neither the controller nor,
// usefully, the device object: once that is gone, using them is misuse.
struct DeviceView {
    std::shared_ptr<RoomController> controller;
    std::weak_ptr<const void> device;

    // Refuses (misuse) when the device object is gone.
    void RequireDevice(std::wstring_view user) const;
};

// Which value a point object stands for: a whole variable or property, or a field inside it, or a
// field inside that.
struct PointPath {
    PointKind kind = PointKind::kVariable;
    std::size_t position = 0;
    std::vector<const Field*> fields;
};

com::Ptr<IDispatch> MakePoints(DeviceView view, PointKind kind);
com::Ptr<IDispatch> MakePoint(DeviceView view, PointPath path);
com::Ptr<IDispatch> MakeFields(DeviceView view, PointPath path);
com::Ptr<IDispatch> MakeType(const Type& type);
com::Ptr<IDispatch> MakeCatalogue();

// A collection's key as text: a text as it is, a whole number of any kind in decimal. Refuses
// anything else.
std::wstring KeyText(const VARIANT& key);

}  // namespace quorvex
