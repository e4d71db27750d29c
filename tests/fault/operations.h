// What the plug-in is asked to do while calls fail: each operation with what it needs before, and
// with what may be seen of it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "support/host_test.h"

namespace quillon::test {

// One room on a fresh network, with the plug-in's object behind it.
struct Stage {
    Room& room;
    HWND window = nullptr;  // the device window, where the operation needs one
    std::wstring folder;
    com::Ptr<IDevice> host;  // the host's own object of the same room
};

inline void Nothing(Stage&) {}

struct Operation {
    const char* name = nullptr;
    // A device window is open before it begins.
    bool needsWindow = false;
    // The results of its members are success whatever fails; otherwise the failure may come out.
    bool quiet = false;
    // Nothing is written any more once a call has failed.
    bool stops = true;
    // What it could not read is left out of the file that it writes, which is whole all the same.
    bool leavesOut = false;
    // It shows a failure in a box with a text of the failure's own.
    bool showsFailures = false;
    // What it writes to put back, or to leave, what stood there.
    const wchar_t* putsBack = nullptr;
    // Other settings make it another operation.
    bool bySettings = false;
    void (*prepare)(Stage& stage) = Nothing;
    HRESULT (*run)(Stage& stage) = nullptr;
};

// Of the device object and of its window's timers; of what the operator does in the window.
std::span<const Operation> DeviceOperations();
std::span<const Operation> WindowOperations();
// All of them.
const std::vector<Operation>& Operations();

// Opens the device window.
HRESULT ShowWindowOf(Stage& stage);

// The variables of the main view's labels, by their keys, and the rows that are polled.
inline constexpr int kMainViewLabels = 5;
inline constexpr const wchar_t* kMainViewKeys[] = {L"20", L"2", L"22", L"21", L"3"};
inline constexpr int kMonitoredRows = 3;

// The small network with variables for each option dialog.
Json FaultNetwork();

// Files that operations write, by their names in the plug-in's folder.
inline constexpr const wchar_t* kExportFile = L"out.app";
inline constexpr const wchar_t* kCalibrationFile = L"out.tca";
inline constexpr const wchar_t* kParameterFile = L"out.cps";
inline constexpr const wchar_t* kWrittenFiles[] = {kExportFile, kCalibrationFile, kParameterFile};
// Files that operations read.
inline constexpr const wchar_t* kApplicationFile = L"in.app";
inline constexpr const wchar_t* kFactoryFile = L"in.tca";
inline constexpr const wchar_t* kChosenFile = L"in.cps";

// Writes the settings of the room's program ID and the files that are read.
void WriteInputFiles(const std::wstring& folder);

// Puts the value of the point with this key, past the log.
using Points = HRESULT (STDMETHODCALLTYPE IDevice::*)(IDispatch** points);
void PutQuietly(const Stage& stage, Points points, const wchar_t* key, const wchar_t* value);

// Gives points that a window polls other values than it shows, past the log.
void ChangePolledValues(const Stage& stage);

// The button for a box that an operation may show; 0 for one that it may not.
int ButtonFor(const Operation& operation, const Box& box);

}  // namespace quillon::test
