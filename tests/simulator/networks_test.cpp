// The network files that travel with the simulated host, checked against its type catalogue.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "catalogue/catalogue.h"

namespace quorvex {
namespace {

using nlohmann::json;

json Load(const std::string& name) {
    std::ifstream file(std::string(QUORVEX_NETWORKS) + "/" + name);
    return json::parse(file);
}

std::wstring Wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

std::wstring Text(const json& object, const char* key) {
    return Wide(object.at(key).get<std::string>());
}

std::string FileValue(const json& device, const std::string& id) {
    for (const json& file : device.at("files")) {
        if (file.at("id") == id) return file.at("value");
    }
    return {};
}

bool IsXmlName(const std::string& name) {
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (name.empty() || !letter(name[0])) return false;
    for (const char c : name) {
        if (!letter(c) && !(c >= '0' && c <= '9') && c != '_') return false;
    }
    return true;
}

class NetworkFile : public testing::TestWithParam<const char*> {
protected:
    const json m_network = Load(GetParam());
};

TEST_P(NetworkFile, PointsHoldValuesOfTheirTypes) {
    for (const json& device : m_network.at("devices")) {
        for (const char* list : {"nvs", "cps"}) {
            std::set<std::string> names;
            int expected = 0;
            for (const json& point : device.at(list)) {
                const std::string where = device.at("name").get<std::string>() + " " +
                                          point.at("name").get<std::string>();
                EXPECT_EQ(point.at("index"), expected++) << where;
                EXPECT_TRUE(IsXmlName(point.at("name")) &&
                            point.at("name").get<std::string>().size() <= 16)
                    << where;
                EXPECT_TRUE(names.insert(point.at("name")).second) << where;
                const Type* const type = FindType(Text(point, "type"));
                ASSERT_NE(type, nullptr) << where;
                const auto bytes = BytesFromRawText(Text(point, "raw"));
                ASSERT_TRUE(bytes && bytes->size() == type->length) << where;
                EXPECT_EQ(BytesFromValueText(*type, ValueText(*type, *bytes)), bytes) << where;
                for (const char* limit : {"min", "max"}) {
                    const auto text = Text(point, limit);
                    if (!text.empty()) {
                        EXPECT_TRUE(BytesFromValueText(*type, text)) << where;
                    }
                }
            }
        }
    }
}

TEST_P(NetworkFile, EntryOneHoldsThePropertiesJoinedAndFactoryDataIsNineBytes) {
    for (const json& device : m_network.at("devices")) {
        std::string joined;
        for (const json& point : device.at("cps")) joined += point.at("raw").get<std::string>();
        EXPECT_EQ(FileValue(device, "1"), joined);
        EXPECT_EQ(FileValue(device, "FFFF").size(), 18U);
        EXPECT_GE(FileValue(device, "FFFD").size(), 22U);
        EXPECT_EQ(FileValue(device, "FFFA").size(), 8U);
        EXPECT_LE(FileValue(device, "FFFA").substr(0, 4), "0009");
    }
}

TEST_P(NetworkFile, EntriesDoNotOverlapInMemory) {
    for (const json& device : m_network.at("devices")) {
        std::set<long> used;
        for (const json& file : device.at("files")) {
            const auto length = file.at("value").get<std::string>().size() / 2;
            for (std::size_t i = 0; i < length; ++i) {
                EXPECT_TRUE(
                    used.insert(file.at("address").get<long>() + static_cast<long>(i)).second);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, NetworkFile, testing::Values("room.json", "small.json"),
                         [](const auto& instance) {
                             const std::string name = instance.param;
                             return name.substr(0, name.find('.'));
                         });

TEST(RoomNetwork, HoldsTwoModelsAndEveryKindOfRoomThatADownloadMeets) {
    const json network = Load("room.json");
    std::map<std::string, int> programs;
    std::set<std::string> neurons, states, identities, firmware;
    int fullRooms = 0;
    for (const json& device : network.at("devices")) {
        ++programs[device.at("programId")];
        EXPECT_TRUE(neurons.insert(device.at("neuron")).second);
        states.insert(device.at("state"));
        identities.insert(FileValue(device, "FFFA"));
        const std::string selfIdentification = device.at("sisd");
        firmware.insert(selfIdentification.substr(selfIdentification.find(';') + 5, 4));
        if (device.at("nvs").size() >= 40 && device.at("cps").size() >= 30) ++fullRooms;
    }
    EXPECT_EQ(programs.size(), 2U);
    for (const auto& [program, rooms] : programs) EXPECT_GE(rooms, 2) << program;
    EXPECT_GE(fullRooms, 4);
    EXPECT_EQ(states, (std::set<std::string>{"", "02", "03", "04"}));
    EXPECT_GE(identities.size(), 4U);
    EXPECT_EQ(firmware, (std::set<std::string>{"0205", "0210"}));
}

}  // namespace
}  // namespace quorvex
