// The network file: JSON, UTF-8. Every key that is not known, every value of another type or range,
// and every index, entry or Neuron ID that stands twice is refused with a text that names the
// place, such as devices[1].nvs[3].raw.
#pragma once

#include <memory>
#include <string>

#include "network_model.h"

namespace quorvex {

// Refuses (kBadNetworkFile) a file that cannot be read or is not as it must be.
std::unique_ptr<NetworkModel> LoadNetwork(const std::wstring& path);

// Writes beside the file first and then puts the new one in its place, so that a failure
// (kBadNetworkFile) leaves the old one whole.
void SaveNetwork(const NetworkModel& network, const std::wstring& path);

// One controller as it stands in a network file.
std::string ControllerText(RoomController& device);

// Replaces the file's content. Refuses with kBadNetworkFile.
void ReplaceFile(const std::wstring& path, const std::string& content);

}  // namespace quorvex
