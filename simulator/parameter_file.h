// The parameter file (.cps): an INI file of 8-bit text with the values of a device's configuration
// variables and properties.
#pragma once

#include <string>

#include "room_controller.h"

namespace quorvex {

// Results of both: 0 done, 1 the file cannot be read or written, 2 it belongs to another program
// ID, 3 one of its entries names no point of the device or holds no value for it, 4 the device does
// not answer. Anything but 0 leaves the device, or the file, as it was.
inline constexpr long kParametersDone = 0;
inline constexpr long kParameterFileFault = 1;
inline constexpr long kParameterOtherProgram = 2;
inline constexpr long kParameterBadEntry = 3;
inline constexpr long kParameterNoAnswer = 4;

long ExportParameters(RoomController& controller, const std::wstring& path);
long DownloadParameters(RoomController& controller, const std::wstring& path);

}  // namespace quorvex
