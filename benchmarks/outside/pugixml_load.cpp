// pugixml_load FILE: how fast an application file can be read at all: natively, by a parser
// made for speed, each element, attribute and text looked at once. Prints the seconds that a point
// takes, nine times.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <pugixml.hpp>

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

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    Seen seen;
    SecondsOfOneRun(arguments[1], seen);
    for (int round = 0; round < kRounds; ++round) {
        const double seconds = SecondsOfOneRun(arguments[1], seen);
        if (seconds < 0 || seen.points == 0 || seen.characters == 0) return 1;
        std::printf("%.12f\n", seconds / static_cast<double>(seen.points));
    }
    return 0;
}
