// Calibration files (.tca): one section for each device, named by its Neuron ID, whose key
// "Calibration" holds its factory data, 18 hexadecimal digits.
#pragma once

#include <string>

namespace quillon {

// Empty when the file has no values for the device.
std::wstring ReadCalibrationFile(const std::wstring& file, const std::wstring& neuronId);
// Nothing is reported; reading tells whether it was written.
void WriteCalibrationFile(const std::wstring& file, const std::wstring& neuronId,
                          const std::wstring& text);

// Tells the operator that a file has no values for the device.
void ShowMissingCalibrations();

}  // namespace quillon
