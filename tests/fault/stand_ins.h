// Parts of the system that would wait for an operator, or that a test machine lacks, answered in
// its place for one loaded module: the file dialogs, and a serial port that takes everything.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::test {

// Until the module is unloaded.
void StandInForSystem(HMODULE module);

// What the file dialogs are answered with from now on.
void ChooseFile(std::wstring path);

// What was written to the port, whatever its number, since the last ForgetPrinted.
const std::string& Printed();
void ForgetPrinted();

}  // namespace quillon::test
