// Networks of one room controller with as many points as a measure wants.
#pragma once

#include <filesystem>

namespace quillon::benchmarks {

// What every generated controller is: its settings file is named after the program.
inline constexpr const wchar_t* kNeuron = L"0000000000B1";
inline constexpr const wchar_t* kProgramId = L"9FFFFF0512040410";

struct RoomSize {
    int variables = 0;
    int properties = 0;
    // Every variable is a configuration one; else every fourth is, and every fourth an output.
    bool allConfiguration = false;
};

// The room whose application file is loaded, here and by those that the plug-in is compared with.
inline constexpr RoomSize kLoadedRoom{.variables = 10'000, .properties = 10'000};

// Writes a network file for the simulated host. Throws std::runtime_error.
void WriteNetwork(const std::filesystem::path& file, const RoomSize& size);

}  // namespace quillon::benchmarks
