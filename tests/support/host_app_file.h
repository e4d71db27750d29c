// Application files that a test makes, and what stands in one that was exported.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/host_session.h"

namespace quillon::test {

struct AppPoint {
    std::string name;
    int index = 0;
    bool isNC = false;
    std::optional<std::string> rawValue;
};

// What a file holds; the defaults fit room kRight of the small network. An absent text leaves its
// element out.
struct AppFile {
    std::optional<std::string> firmware = "V0210";
    std::optional<std::string> header = "000000000001002A";
    std::optional<std::string> objects = "0A1B2C3D";
    std::optional<std::string> programId = "9FFFFF0512040410";
    std::optional<std::vector<AppPoint>> variables = std::vector<AppPoint>{
        {"nviSetpoint", 0, false, {}}, {"nciFlowFactor", 7, true, "40200000"}};
    std::optional<std::vector<AppPoint>> properties =
        std::vector<AppPoint>{{"cpApplCode", 1, false, "0009"}, {"cpFanHigh", 2, false, "64"}};

    std::string Text() const;
};

// Every text and attribute of a document, one a line, in document order:
// "Configuration/FWVersion=V0210", "Configuration/Profile/NVs/nciX@IsNC=1".
Lines DocumentLines(const std::wstring& path);

}  // namespace quillon::test
