#include "support/host_network.h"

#include <windows.h>

#include <stdexcept>

namespace quillon::test {

Json NetworkFile(const char* name) {
    return Json::parse(ReadBytes(Wide(std::string(QUORVEX_NETWORKS) + "/" + name)));
}

Json& DeviceOf(Json& network, std::wstring_view neuron) {
    for (Json& device : network.at("devices"))
        if (device.at("neuron") == Narrow(neuron)) return device;
    throw std::runtime_error("no such device");
}

Json* FileOf(Json& device, std::string_view id) {
    for (Json& entry : device.at("files"))
        if (entry.at("id") == id) return &entry;
    return nullptr;
}

void SetFile(Json& device, const char* id, const std::string& value) {
    if (Json* entry = FileOf(device, id))
        (*entry)["value"] = value;
    else
        device["files"].push_back({{"id", id}, {"address", 0}, {"value", value}});
}

void RemoveFile(Json& device, std::string_view id) {
    Json kept = Json::array();
    for (Json& entry : device.at("files"))
        if (entry.at("id") != id) kept.push_back(entry);
    device["files"] = kept;
}

std::wstring Wide(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, text.data(), length);
    return text;
}

std::string Narrow(std::wstring_view text) {
    const int units = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

}  // namespace quillon::test
