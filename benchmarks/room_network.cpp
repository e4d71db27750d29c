#include "room_network.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace quillon::benchmarks {

namespace {

using Json = nlohmann::json;

struct PointType {
    const char* name;
    const char* raw;
};

// What room units are made of: temperatures, levels, switches, enumerations, a structure, a float.
constexpr PointType kTypes[] = {
    {"SNVT_temp_p", "0834"},     {"SNVT_lev_cont", "AA"},
    {"SNVT_switch", "6401"},     {"SNVT_occupancy", "01"},
    {"SNVT_count", "0007"},      {"SNVT_temp_setpt", "08FC09C40AF00834076C0640"},
    {"SNVT_count_f", "3FC00000"}};

std::string Numbered(const std::string& front, int number) {
    std::string digits = std::to_string(number);
    return front + std::string(5 - std::min<std::size_t>(5, digits.size()), '0') + digits;
}

Json Point(const std::string& name, int index, const std::string& selfDocumentation) {
    const PointType& type = kTypes[static_cast<std::size_t>(index) % std::size(kTypes)];
    return {{"index", index},
            {"name", name},
            {"type", type.name},
            {"selfDoc", selfDocumentation},
            {"raw", type.raw}};
}

Json Variable(int index, bool allConfiguration) {
    const bool configuration = allConfiguration || index % 4 == 3;
    const bool output = !configuration && index % 4 == 1;
    const std::string front = configuration ? "nciPoint" : output ? "nvoPoint" : "nviPoint";
    Json point = Point(Numbered(front, index), index, "@1|" + std::to_string(index));
    point["config"] = configuration;
    point["output"] = output;
    return point;
}

Json Entries() {
    return {{{"id", "FFFA"}, {"address", 16384}, {"value", "0001002A"}},
            {{"id", "FFFD"}, {"address", 16400}, {"value", "040001000100000101FF9C"}},
            {{"id", "FFFE"}, {"address", 16640}, {"value", "0A1B2C3D"}},
            {{"id", "FFFF"}, {"address", 16448}, {"value", "0102030405061A170C"}},
            {{"id", "1"}, {"address", 0}, {"value", ""}}};
}

std::string Narrow(const std::wstring& digits) {
    return std::string(digits.begin(), digits.end());
}

Json Controller(const RoomSize& size) {
    Json variables = Json::array();
    for (int i = 0; i < size.variables; ++i)
        variables.push_back(Variable(i, size.allConfiguration));
    Json properties = Json::array();
    for (int i = 0; i < size.properties; ++i)
        properties.push_back(Point(Numbered("cpPoint", i), i, "&2,1," + std::to_string(i)));
    return {{"neuron", Narrow(kNeuron)},
            {"name", "Room"},
            {"programId", Narrow(kProgramId)},
            {"sisd", "&3.2@0NodeObject,8500FanCoil;0102021003001000"},
            {"state", "04"},
            {"manufacturer", "Nimbra"},
            {"deviceClass", "Fan coil unit"},
            {"model", 1},
            {"files", Entries()},
            {"nvs", std::move(variables)},
            {"cps", std::move(properties)}};
}

}  // namespace

void WriteNetwork(const std::filesystem::path& file, const RoomSize& size) {
    Json devices = Json::array();
    devices.push_back(Controller(size));
    std::ofstream stream(file, std::ios::binary);
    stream << Json{{"name", "Benchmark"}, {"devices", std::move(devices)}};
    if (!stream.flush()) throw std::runtime_error("a network file cannot be written");
}

}  // namespace quillon::benchmarks
