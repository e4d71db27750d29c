// Stand-ins for parts of the system that wait for an operator or for a printer. The plug-in's
// module alone meets them, until it is unloaded.
#pragma once

#include <windows.h>

#include <string>

namespace quillon::test {

// Every serial port is there and takes what it is sent at once.
void StandInForPort(HMODULE module);
// What ports were sent since the last call.
std::string TakeReceived();

// The dialog that asks for a file to open is answered with a path, and never shown.
void StandInForFileDialog(HMODULE module);
void AnswerFileDialog(const std::wstring& path);

}  // namespace quillon::test
