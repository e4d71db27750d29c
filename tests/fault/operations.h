// What the plug-in is asked to do while calls fail: each operation with what it needs before, and
// with what may be seen of it.
#pragma once

#include <span>
#include <string>

#include "support/host_test.h"

namespace quillon::test {

// One room on a fresh network, with the plug-in's object behind it.
struct Stage {
    Room& room;
    HWND window = nullptr;  // the device window, where the operation needs one
    std::wstring folder;
};

struct Operation {
    const char* name;
    // A device window is open before it begins.
    bool needsWindow;
    // The results of its members are success whatever fails; otherwise the failure may come out.
    bool quiet;
    // Nothing is written any more once a call has failed.
    bool stops;
    // What it could not read is left out of the file that it writes, which is whole all the same.
    bool leavesOut;
    void (*prepare)(Stage& stage);
    HRESULT (*run)(Stage& stage);
};

std::span<const Operation> Operations();

// Files that operations write, by their names in the plug-in's folder.
inline constexpr const wchar_t* kExportFile = L"out.app";
inline constexpr const wchar_t* kCalibrationFile = L"out.tca";
// Files that operations read.
inline constexpr const wchar_t* kApplicationFile = L"in.app";
inline constexpr const wchar_t* kFactoryFile = L"in.tca";

// Writes the settings of the room's program ID and the files that are read.
void WriteInputFiles(const std::wstring& folder);

// The button for a box that an operation may show; 0 for one that none may.
int ButtonFor(const Box& box);

}  // namespace quillon::test
