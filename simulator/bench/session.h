// One run of the bench: commands in order on one host, and what must hold after each and at the
// end.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "device_windows.h"
#include "host.h"
#include "message_boxes.h"
#include "script_reader.h"

namespace quorvex::bench {

class Session;

struct Command {
    std::wstring_view name;
    std::size_t fewest;  // arguments behind the name
    std::size_t most;
    std::wstring_view usage;
    void (*run)(Session&, const Words& arguments);
};

// By name; nullptr when there is none.
const Command* FindCommand(std::wstring_view name);
// All usages, one a line.
std::wstring CommandSummary();
// Why the words are no command; empty when they are one.
std::wstring UsageError(const Words& words);

class Session {
public:
    explicit Session(Host& host) : m_host(host), m_windows(host) {}

    // Runs one command. A message box that nobody had an answer for makes it fail. Throws Failure.
    void Run(const Words& words);
    // Runs a script; a Failure begins with file and line.
    void RunScript(const std::wstring& file);
    // What is left at the end that should not be: a refused download that nothing expected, an
    // answer that no box asked for, misuse of the host. Throws Failure.
    void Finish();

    Host& GetHost() { return m_host; }
    MessageBoxes& Boxes() { return m_boxes; }
    DeviceWindows& Windows() { return m_windows; }
    void SetVariable(const std::wstring& name, const std::wstring& value) {
        m_variables[name] = value;
    }
    void ExpectMisuse(std::wstring_view text);

private:
    std::optional<std::wstring> Variable(std::wstring_view name) const;
    void CheckBoxes();

    Host& m_host;
    MessageBoxes m_boxes;
    DeviceWindows m_windows;
    std::map<std::wstring, std::wstring, std::less<>> m_variables;
    std::size_t m_checkedBoxes = 0;
    std::size_t m_checkedMisuse = 0;
    int m_depth = 0;
};

}  // namespace quorvex::bench
