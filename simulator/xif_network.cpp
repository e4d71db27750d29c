#include "xif_network.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "catalogue/catalogue.h"

namespace quorvex {
namespace {

using Json = nlohmann::ordered_json;

const Type* StandardType(int number) {
    if (number == 0) return nullptr;
    const auto types = AllTypes();
    const auto found = std::find_if(types.begin(), types.end(),
                                    [&](const Type& type) { return type.index == number; });
    return found == types.end() ? nullptr : &*found;
}

// 8-bit characters as UTF-8.
std::string Utf8Of(std::string_view text) {
    std::string utf8;
    for (const char one : text) {
        const auto code = static_cast<unsigned char>(one);
        if (code < 0x80) {
            utf8.push_back(one);
        } else {
            utf8.push_back(static_cast<char>(0xC0 | code >> 6));
            utf8.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        }
    }
    return utf8;
}

// Names of types and bytes as digits are ASCII.
std::string AsciiOf(std::wstring_view text) {
    std::string ascii;
    for (const wchar_t one : text) ascii.push_back(static_cast<char>(one));
    return ascii;
}

Json VariableJson(const XifVariable& variable) {
    const Type* const type = StandardType(variable.standardType);
    return {{"index", variable.index},
            {"name", Utf8Of(variable.name)},
            {"type",
             type ? AsciiOf(type->name) : "UNVT_bytes_" + std::to_string(variable.value.size())},
            {"output", variable.output},
            {"config", variable.configuration},
            {"selfDoc", Utf8Of(variable.selfDocumentation)},
            {"raw", AsciiOf(RawText(variable.value))}};
}

}  // namespace

std::size_t CatalogueLength(int standardType) {
    const Type* const type = StandardType(standardType);
    return type ? type->length : 0;
}

std::string NetworkTextOf(const XifDevice& device, std::string_view name, std::string_view neuron) {
    Json json = {{"neuron", neuron},
                 {"name", name},
                 {"programId", device.programId},
                 {"sisd", Utf8Of(device.selfDocumentation)},
                 {"state", "04"},
                 {"files", Json::array()},
                 {"nvs", Json::array()},
                 {"cps", Json::array()}};
    for (const XifVariable& variable : device.variables)
        json["nvs"].push_back(VariableJson(variable));
    const Json network = {{"name", name}, {"devices", Json::array({json})}};
    return network.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quorvex
