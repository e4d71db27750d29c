// A network: its name and its room controllers, in the order of its file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "room_controller.h"

namespace quorvex {

struct NetworkModel {
    std::wstring name;
    std::vector<std::shared_ptr<RoomController>> controllers;

    // By Neuron ID in either letter case; empty when there is none.
    std::shared_ptr<RoomController> Find(std::wstring_view neuron) const;
};

}  // namespace quorvex
