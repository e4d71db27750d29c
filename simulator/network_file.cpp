#include "network_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "json_place.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

namespace {

constexpr long kMostDevices = 1000;
constexpr long kMostAddress = 0xFFFF;
constexpr long kMostIndex = 999'999;

Bytes HexBytes(const JsonPlace& place) {
    auto bytes = BytesFromRawText(place.Text());
    if (!bytes) place.Bad("must be hexadecimal, two digits a byte");
    return *bytes;
}

std::wstring HexText(const JsonPlace& place, std::size_t digits) {
    const std::wstring text = place.Text();
    if (!IsHex(text, digits))
        place.Bad("must be " + std::to_string(digits) + " hexadecimal digits");
    return Upper(text);
}

FileEntry ReadEntry(const JsonPlace& place) {
    place.RequireKeys({"id", "address", "value"});
    FileEntry entry;
    entry.id = place.At("id").Text();
    if (entry.id.size() > 4 || !IsHex(entry.id, entry.id.size()) || entry.id.empty())
        place.At("id").Bad("must be 1 to 4 hexadecimal digits");
    entry.identifier = static_cast<std::int16_t>(std::stoul(Utf8FromWide(entry.id), nullptr, 16));
    entry.address = place.NumberOr("address", 0, 0, kMostAddress);
    entry.value = HexBytes(place.At("value"));
    return entry;
}

const Type& ReadType(const JsonPlace& place) {
    const Type* type = FindType(place.Text());
    if (!type) place.Bad("no such type \"" + Utf8FromWide(place.Text()) + "\"");
    return *type;
}

std::wstring ReadLimit(const JsonPlace& point, const char* key, const Type& type) {
    std::wstring limit = point.TextOr(key, L"");
    if (!limit.empty() && !BytesFromValueText(type, limit))
        point.At(key).Bad("is no value of the type");
    return limit;
}

DataPoint ReadPoint(const JsonPlace& place) {
    DataPoint point;
    point.index = place.At("index").Number(0, kMostIndex);
    point.name = place.At("name").Text();
    if (point.name.empty()) place.At("name").Bad("must not be empty");
    point.type = &ReadType(place.At("type"));
    point.selfDocumentation = place.TextOr("selfDoc", L"");
    point.raw = HexBytes(place.At("raw"));
    if (point.raw.size() != point.type->length)
        place.At("raw").Bad(std::to_string(point.raw.size()) + " bytes, but the type has " +
                            std::to_string(point.type->length));
    point.minimum = ReadLimit(place, "min", *point.type);
    point.maximum = ReadLimit(place, "max", *point.type);
    return point;
}

DataPoint ReadVariable(const JsonPlace& place) {
    place.RequireKeys(
        {"index", "name", "type", "output", "config", "selfDoc", "raw", "min", "max"});
    DataPoint point = ReadPoint(place);
    point.output = place.TruthOr("output", false);
    point.configuration = place.TruthOr("config", false);
    if (point.output && point.configuration)
        place.At("config").Bad("an output cannot be a configuration value");
    return point;
}

DataPoint ReadProperty(const JsonPlace& place) {
    place.RequireKeys({"index", "name", "type", "selfDoc", "raw", "min", "max"});
    return ReadPoint(place);
}

void ReadTexts(const JsonPlace& place, RoomController& device) {
    device.neuron = HexText(place.At("neuron"), 12);
    device.name = place.At("name").Text();
    device.displayName = place.TextOr("displayName", device.name);
    device.programId = HexText(place.At("programId"), 16);
    device.selfIdentification = place.TextOr("sisd", L"");
    device.state = place.At("state").Text().empty() ? L"" : HexText(place.At("state"), 2);
    device.userCpFile = place.TextOr("userCpFile", L"");
    device.manufacturer = place.TextOr("manufacturer", L"");
    device.deviceClass = place.TextOr("deviceClass", L"");
    device.model = static_cast<std::uint8_t>(place.NumberOr("model", 0, 0, 255));
}

std::shared_ptr<RoomController> ReadController(const JsonPlace& place) {
    place.RequireKeys({"neuron", "name", "displayName", "programId", "sisd", "state", "userCpFile",
                       "manufacturer", "deviceClass", "model", "files", "nvs", "cps"});
    auto device = std::make_shared<RoomController>();
    ReadTexts(place, *device);
    place.ForEach("files", [&](const JsonPlace& entry) {
        if (!device->AddFile(ReadEntry(entry))) entry.At("id").Bad("stands twice");
    });
    place.ForEach("nvs", [&](const JsonPlace& point) {
        if (!device->AddPoint(PointKind::kVariable, ReadVariable(point)))
            point.At("index").Bad("stands twice");
    });
    place.ForEach("cps", [&](const JsonPlace& point) {
        if (!device->AddPoint(PointKind::kProperty, ReadProperty(point)))
            point.At("index").Bad("stands twice");
    });
    return device;
}

std::string ReadAll(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file) Refuse(kBadNetworkFile, L"\"" + path + L"\" cannot be read");
    return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

std::shared_ptr<RoomController> NetworkModel::Find(std::wstring_view neuron) const {
    const std::wstring wanted = Upper(neuron);
    for (const auto& controller : controllers)
        if (controller->neuron == wanted) return controller;
    return nullptr;
}

std::unique_ptr<NetworkModel> LoadNetwork(const std::wstring& path) {
    const Json document = ParseJson(ReadAll(path));
    const JsonPlace root(document);
    root.RequireKeys({"name", "devices"});
    auto network = std::make_unique<NetworkModel>();
    network->name = root.At("name").Text();
    root.At("devices");
    root.ForEach("devices", [&](const JsonPlace& place) {
        auto device = ReadController(place);
        if (network->Find(device->neuron)) place.At("neuron").Bad("stands twice");
        if (network->controllers.size() == kMostDevices) place.Bad("too many devices");
        network->controllers.push_back(std::move(device));
    });
    return network;
}

}  // namespace quorvex
