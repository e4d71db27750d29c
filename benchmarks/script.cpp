// What a user without the plug-in would write: a script, run by the system's script host.
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include "com/error.h"
#include "com/text.h"
#include "loading.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 9;
constexpr int kPoints = 500;  // of each of the two kinds

[[noreturn]] void Refuse(const std::string& why) {
    throw std::runtime_error("the script: " + why);
}

// A handle that is closed with it.
struct Handle {
    explicit Handle(HANDLE own = nullptr) : value(own) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Close(); }
    void Close() {
        if (value) CloseHandle(value);
        value = nullptr;
    }
    HANDLE value;
};

std::string ReadToEnd(HANDLE pipe) {
    std::string text;
    char piece[512];
    DWORD length = 0;
    while (ReadFile(pipe, piece, sizeof piece, &length, nullptr) && length > 0)
        text.append(piece, length);
    return text;
}

std::wstring ScriptHost() {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
    return folder + L"\\cscript.exe";
}

// What the script prints. `arguments` are quoted where they need it.
std::string Run(const std::wstring& arguments) {
    Handle reading;
    Handle writing;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    if (!CreatePipe(&reading.value, &writing.value, &inherited, 0)) Refuse("no pipe");
    SetHandleInformation(reading.value, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = writing.value;
    start.hStdError = writing.value;
    std::wstring line = L"cscript //nologo \"" QUILLON_SCRIPT "\" " + arguments;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(ScriptHost().c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &start, &process))
        Refuse("the script host cannot be started");
    const Handle thread(process.hThread);
    const Handle running(process.hProcess);
    writing.Close();
    std::string text = ReadToEnd(reading.value);
    WaitForSingleObject(running.value, INFINITE);
    return text;
}

// The last line of a script that went to its end.
struct Outcome {
    double seconds = 0;
    long points = 0;
    long characters = 0;
};

Outcome RunToEnd(const std::string& task, const std::wstring& arguments) {
    std::istringstream words(Run(arguments));
    words.imbue(std::locale::classic());
    std::string name;
    std::string done;
    Outcome outcome;
    words >> name >> done >> outcome.seconds >> outcome.points >> outcome.characters;
    if (name != task || done != "done" || outcome.points != 2 * kPoints)
        Refuse("'" + task + "' did not come to its end");
    return outcome;
}

std::wstring Quoted(const std::wstring& text) {
    return L" \"" + text + L"\"";
}

std::string Content(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::wstring FirmwareOf(const Room& room) {
    com::Bstr version;
    com::Check(room.subject.As<IDeviceEx>()->get_VantorFirmwareVersion(version.Out()));
    return version.Text();
}

}  // namespace

void MeasureScript(const Session& session, Table& table) {
    CLSID registered;
    if (FAILED(CLSIDFromProgID(L"Quorvex.Simulator", &registered)))
        Refuse("the simulated host must be registered (regsvr32 Quorvex.dll)");
    const Room room = session.OpenRoom({.variables = kPoints, .properties = kPoints});
    const std::wstring own = session.ExportApplication(room, L"own.app");
    const std::wstring scripts = (session.Folder() / L"script.app").native();
    const std::wstring saving = L"export" + Quoted((session.Folder() / L"network.json").native()) +
                                Quoted(kNeuron) + Quoted(FirmwareOf(room)) + Quoted(scripts);
    const std::wstring loading = L"load" + Quoted(own);
    if (RunToEnd("export", saving).seconds <= 0 || Content(own) != Content(scripts))
        Refuse("it wrote a different document");
    if (RunToEnd("load", loading).characters == 0) Refuse("it read no text");
    table.AddRatio(
        "export of 1,000 points, a point", "a script that writes the same file by MSXML", 1,
        Compare(
            kRounds, [&] { return Seconds([&] { session.ExportApplication(room, L"own.app"); }); },
            [&] { return RunToEnd("export", saving).seconds; }),
        2 * kPoints);
    table.AddRatio("`FriendSet` on 1,000 points, a point",
                   "a script that loads the same file by MSXML", 1,
                   Compare(
                       kRounds, [&] { return SecondsOfLoading(session, room, own); },
                       [&] { return RunToEnd("load", loading).seconds; }),
                   2 * kPoints);
}

}  // namespace quillon::benchmarks
