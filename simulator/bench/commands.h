// The commands by group; session.h says how they are found. Each gets the words behind its name.
#pragma once

#include "session.h"

namespace quorvex::bench::commands {

// Devices
void List(Session& session, const Words& words);
void Info(Session& session, const Words& words);
void Export(Session& session, const Words& words);
void Download(Session& session, const Words& words);
void Get(Session& session, const Words& words);
void Set(Session& session, const Words& words);
void Go(Session& session, const Words& words);
void Notify(Session& session, const Words& words);

// The rooms and the window
void Advance(Session& session, const Words& words);
void Plug(Session& session, const Words& words);
void Input(Session& session, const Words& words);
void Status(Session& session, const Words& words);
void Analog(Session& session, const Words& words);
void Calibration(Session& session, const Words& words);
void Temperature(Session& session, const Words& words);
void Window(Session& session, const Words& words);
void Edit(Session& session, const Words& words);

// Windows of devices
void Open(Session& session, const Words& words);
void Close(Session& session, const Words& words);
void Parameters(Session& session, const Words& words);
void Calibrate(Session& session, const Words& words);
void Calibrations(Session& session, const Words& words);
void PrintLabel(Session& session, const Words& words);
void OpenHelp(Session& session, const Words& words);

// The host and the bench itself
void Settings(Session& session, const Words& words);
void Fail(Session& session, const Words& words);
void Delay(Session& session, const Words& words);
void Silence(Session& session, const Words& words);
void Restore(Session& session, const Words& words);
void Answer(Session& session, const Words& words);
void Let(Session& session, const Words& words);
void Echo(Session& session, const Words& words);
void Save(Session& session, const Words& words);
void Run(Session& session, const Words& words);
void Import(Session& session, const Words& words);
void ImportInterface(const Words& words);  // the same; needs no host

// Expectations
void Expect(Session& session, const Words& words);
void Fails(Session& session, const Words& words);

// Readings that several groups use; each throws Failure.
HRESULT ParseCode(const std::wstring& word);             // one to eight hexadecimal digits
long ParseNumber(const std::wstring& word, long least);  // decimal, at least `least`
bool ParseSwitch(const std::wstring& word, std::wstring_view on, std::wstring_view off);
// "04 On Line": the two digits and what they mean; "Absent" for the empty text.
std::wstring StateText(std::wstring_view state);

}  // namespace quorvex::bench::commands
