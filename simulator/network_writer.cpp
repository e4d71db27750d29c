#include <filesystem>
#include <fstream>

#include "json_place.h"
#include "network_file.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

namespace {

Json EntryJson(const FileEntry& entry) {
    return {{"id", Utf8FromWide(entry.id)},
            {"address", entry.address},
            {"value", Utf8FromWide(RawText(entry.value))}};
}

Json PointJson(const DataPoint& point, PointKind kind) {
    Json json = {{"index", point.index},
                 {"name", Utf8FromWide(point.name)},
                 {"type", Utf8FromWide(point.type->name)}};
    if (kind == PointKind::kVariable) {
        json["output"] = point.output;
        json["config"] = point.configuration;
    }
    json["selfDoc"] = Utf8FromWide(point.selfDocumentation);
    json["raw"] = Utf8FromWide(RawText(point.raw));
    json["min"] = Utf8FromWide(point.minimum);
    json["max"] = Utf8FromWide(point.maximum);
    return json;
}

Json TextsJson(const RoomController& device) {
    return {{"neuron", Utf8FromWide(device.neuron)},
            {"name", Utf8FromWide(device.name)},
            {"displayName", Utf8FromWide(device.displayName)},
            {"programId", Utf8FromWide(device.programId)},
            {"sisd", Utf8FromWide(device.selfIdentification)},
            {"state", Utf8FromWide(device.state)},
            {"userCpFile", Utf8FromWide(device.userCpFile)},
            {"manufacturer", Utf8FromWide(device.manufacturer)},
            {"deviceClass", Utf8FromWide(device.deviceClass)},
            {"model", device.model}};
}

// One element a line, so that people can read and compare network files.
std::string Lines(const std::vector<Json>& elements) {
    if (elements.empty()) return "[]";
    std::string text = "[\n";
    for (std::size_t i = 0; i < elements.size(); ++i)
        text += "        " + elements[i].dump() + (i + 1 < elements.size() ? ",\n" : "\n");
    return text + "      ]";
}

std::string PointLines(RoomController& device, PointKind kind) {
    std::vector<Json> points;
    for (std::size_t i = 0; i < device.Points(kind).Size(); ++i)
        points.push_back(PointJson(device.Points(kind).At(i), kind));
    return Lines(points);
}

}  // namespace

std::string ControllerText(RoomController& device) {
    std::string text = "    {\n";
    const Json texts = TextsJson(device);
    for (const auto& [key, value] : texts.items())
        text += "      " + Json(key).dump() + ": " + value.dump() + ",\n";
    std::vector<Json> entries;
    for (const FileEntry& entry : device.Files()) entries.push_back(EntryJson(entry));
    text += "      \"files\": " + Lines(entries) + ",\n";
    text += "      \"nvs\": " + PointLines(device, PointKind::kVariable) + ",\n";
    text += "      \"cps\": " + PointLines(device, PointKind::kProperty) + "\n    }";
    return text;
}

void ReplaceFile(const std::wstring& path, const std::string& content) {
    const std::filesystem::path target(path);
    std::filesystem::path beside(path + L".new");
    {
        std::ofstream file(beside, std::ios::binary | std::ios::trunc);
        file << content;
        file.flush();
        if (!file) Refuse(kBadNetworkFile, L"\"" + beside.wstring() + L"\" cannot be written");
    }
    std::error_code failure;
    std::filesystem::rename(beside, target, failure);
    if (!failure) return;
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    Refuse(kBadNetworkFile, L"\"" + path + L"\" cannot be replaced");
}

void SaveNetwork(const NetworkModel& network, const std::wstring& path) {
    std::string text =
        "{\n  \"name\": " + Json(Utf8FromWide(network.name)).dump() + ",\n  \"devices\": [\n";
    for (std::size_t i = 0; i < network.controllers.size(); ++i)
        text += ControllerText(*network.controllers[i]) +
                (i + 1 < network.controllers.size() ? ",\n" : "\n");
    ReplaceFile(path, text + "  ]\n}\n");
}

}  // namespace quorvex
