// Networks for the simulated host as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "support/temp_folder.h"

namespace quillon::test {

using Json = nlohmann::ordered_json;

// The rooms of SmallNetwork, of one model.
inline constexpr const wchar_t* kLeft = L"0000000000A1";
inline constexpr const wchar_t* kRight = L"0000000000A2";
inline constexpr const char* kSmallProgramId = "9FFFFF0512040410";

// A network file that comes with the simulator: "small.json", "room.json".
Json NetworkFile(const char* name);
inline Json SmallNetwork() {
    return NetworkFile("small.json");
}

// The device of a network with this Neuron ID. Throws std::runtime_error when there is none.
Json& DeviceOf(Json& network, std::wstring_view neuron);
// The entry of a device; nullptr when it has none.
Json* FileOf(Json& device, std::string_view id);
// Sets an entry's value, and adds the entry where the device has none.
void SetFile(Json& device, const char* id, const std::string& value);
void RemoveFile(Json& device, std::string_view id);

// ASCII and UTF-8 to and from wide text.
std::wstring Wide(std::string_view utf8);
std::string Narrow(std::wstring_view text);

}  // namespace quillon::test
