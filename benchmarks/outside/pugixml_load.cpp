// pugixml_load FILE: how fast an application file can be read at all: natively, by a parser
// made for speed, each element, attribute and text looked at once. Prints the seconds a point takes
// as the median of nine, their median absolute deviation, and the number of points.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <pugixml.hpp>
#include <vector>

namespace {

constexpr int kRounds = 9;

struct Seen {
    long points = 0;
    std::size_t characters = 0;
};

Seen Visit(const pugi::xml_node& list) {
    Seen seen;
    for (const pugi::xml_node point : list) {
        ++seen.points;
        seen.characters += std::strlen(point.name());
        for (const pugi::xml_attribute attribute : point.attributes())
            seen.characters += std::strlen(attribute.value());
        for (const pugi::xml_node field : point)
            seen.characters += std::strlen(field.name()) + std::strlen(field.child_value());
    }
    return seen;
}

// Negative when the file is none.
double SecondsOfOneRun(const char* file, Seen& seen) {
    const auto start = std::chrono::steady_clock::now();
    pugi::xml_document document;
    if (!document.load_file(file)) return -1;
    const pugi::xml_node profile = document.child("Configuration").child("Profile");
    const Seen variables = Visit(profile.child("NVs"));
    const Seen properties = Visit(profile.child("CPs"));
    seen = {variables.points + properties.points, variables.characters + properties.characters};
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    std::vector<double> perPoint;
    Seen seen;
    SecondsOfOneRun(arguments[1], seen);
    for (int round = 0; round < kRounds; ++round) {
        const double seconds = SecondsOfOneRun(arguments[1], seen);
        if (seconds < 0 || seen.points == 0 || seen.characters == 0) return 1;
        perPoint.push_back(seconds / static_cast<double>(seen.points));
    }
    const double median = Median(perPoint);
    std::vector<double> deviations;
    for (const double value : perPoint) deviations.push_back(std::fabs(value - median));
    std::printf("%.12f %.12f %ld\n", median, Median(deviations), seen.points);
    return 0;
}
