#include "commands.h"

#include <charconv>
#include <limits>

#include "text.h"

namespace quorvex::bench {
namespace {

constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();

constexpr Command kCommands[] = {
    {L"list", 0, 0, L"list", commands::List},
    {L"info", 1, 1, L"info DEVICE", commands::Info},
    {L"export", 2, 2, L"export DEVICE FILE", commands::Export},
    {L"download", 2, 2, L"download DEVICE FILE", commands::Download},
    {L"get", 3, 4, L"get DEVICE nv|cp|file KEY [value|shown|raw]", commands::Get},
    {L"set", 4, 4, L"set DEVICE nv|cp|file KEY TEXT", commands::Set},
    {L"go", 2, 2,
     L"go DEVICE online|softoffline|hardoffline|configured|unconfigured|applicationless|reset|wink",
     commands::Go},
    {L"notify", 3, 3, L"notify DEVICE name|status|xmiterr|point TEXT", commands::Notify},
    {L"advance", 1, 1, L"advance MILLISECONDS", commands::Advance},
    {L"plug", 2, 2, L"plug DEVICE in|out", commands::Plug},
    {L"input", 3, 3, L"input DEVICE 1|2|3|4 on|off", commands::Input},
    {L"status", 2, 2, L"status DEVICE NUMBER", commands::Status},
    {L"analog", 2, 2, L"analog DEVICE COUNT|auto", commands::Analog},
    {L"calibration", 2, 2, L"calibration DEVICE high|low", commands::Calibration},
    {L"temperature", 2, 2, L"temperature DEVICE CELSIUS", commands::Temperature},
    {L"window", 0, kMany, L"window [--for SECONDS] [DEVICE...]", commands::Window},
    {L"open", 1, 1, L"open DEVICE", commands::Open},
    {L"close", 1, 1, L"close DEVICE", commands::Close},
    {L"calibrate", 3, 3, L"calibrate DEVICE low|high VOLTS", commands::Calibrate},
    {L"calibrations", 3, 3, L"calibrations save|load DEVICE FILE", commands::Calibrations},
    {L"print", 2, 2, L"print DEVICE MODEL", commands::PrintLabel},
    {L"help", 1, 1, L"help DEVICE", commands::OpenHelp},
    {L"parameters", 3, kMany, L"parameters save|download DEVICE FILE [NAME...]",
     commands::Parameters},
    {L"edit", 4, kMany, L"edit DEVICE TAB ROW STEP...", commands::Edit},
    {L"settings", 1, 3, L"settings clear | settings [SECTION] KEY VALUE", commands::Settings},
    {L"fail", 2, 4, L"fail MEMBER [NTH] [always] RESULT", commands::Fail},
    {L"delay", 2, 2, L"delay MEMBER MILLISECONDS", commands::Delay},
    {L"silence", 2, 2, L"silence DEVICE on|off", commands::Silence},
    {L"restore", 0, 0, L"restore", commands::Restore},
    {L"answer", 1, 1, L"answer yes|no|ok|cancel|retry|abort|ignore", commands::Answer},
    {L"let", 2, 2, L"let NAME TEXT", commands::Let},
    {L"echo", 0, kMany, L"echo [TEXT...]", commands::Echo},
    {L"save", 1, 1, L"save FILE", commands::Save},
    {L"import", 1, 3, L"import FILE.xif [NETWORK.json [NEURON]]", commands::Import},
    {L"run", 1, 1, L"run SCRIPT", commands::Run},
    {L"expect", 2, 6,
     L"expect report CODE [DEVICE] | expect value|shown|raw DEVICE nv|cp|file KEY TEXT | "
     L"expect state DEVICE DIGITS | expect box TEXT | expect event NAME [DEVICE] | "
     L"expect calls MEMBER NUMBER | expect misuse TEXT | expect no report|box|event",
     commands::Expect},
    {L"fails", 1, kMany, L"fails COMMAND...", commands::Fails},
};

}  // namespace

const Command* FindCommand(std::wstring_view name) {
    for (const Command& command : kCommands) {
        if (command.name == name) return &command;
    }
    return nullptr;
}

std::wstring CommandSummary() {
    std::wstring text;
    for (const Command& command : kCommands) text.append(L"  ").append(command.usage).append(L"\n");
    return text;
}

std::wstring UsageError(const Words& words) {
    const Command* const command = FindCommand(words[0]);
    if (!command) return L"\"" + words[0] + L"\" is no command";
    const std::size_t arguments = words.size() - 1;
    if (arguments >= command->fewest && arguments <= command->most) return {};
    return L"usage: " + std::wstring(command->usage);
}

namespace commands {

HRESULT ParseCode(const std::wstring& word) {
    if (word.empty() || word.size() > 8 || !IsHex(word, word.size())) {
        throw Failure{L"\"" + word + L"\" is no result code of up to eight hexadecimal digits"};
    }
    return static_cast<HRESULT>(std::stoul(word, nullptr, 16));
}

long ParseNumber(const std::wstring& word, long least) {
    const std::string digits = Utf8FromWide(word);
    long number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() || number < least) {
        throw Failure{L"\"" + word + L"\" is no whole number from " + std::to_wstring(least) +
                      L" up"};
    }
    return number;
}

bool ParseSwitch(const std::wstring& word, std::wstring_view on, std::wstring_view off) {
    if (word == on || word == off) return word == on;
    throw Failure{L"\"" + word + L"\" is neither " + std::wstring(on) + L" nor " +
                  std::wstring(off)};
}

std::wstring StateText(std::wstring_view state) {
    constexpr std::pair<std::wstring_view, std::wstring_view> labels[] = {
        {L"", L"Absent"},
        {L"02", L"Unconfigured"},
        {L"03", L"Applicationless"},
        {L"04", L"On Line"},
        {L"06", L"Hard Off Line"},
        {L"0C", L"Soft Off Line"},
        {L"8C", L"Configured Bypass"}};
    std::wstring text(state);
    for (const auto& [digits, label] : labels) {
        if (digits == state) text.append(text.empty() ? L"" : L" ").append(label);
    }
    return text;
}

}  // namespace commands
}  // namespace quorvex::bench
