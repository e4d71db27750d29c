#include <set>

#include "com/text.h"
#include "commands.h"

namespace quorvex::bench::commands {
namespace {

// The settings files of all programs of the network, beside the plug-in.
std::set<std::wstring> SettingsFiles(Host& host) {
    const std::wstring folder = host.PluginFolder();
    std::set<std::wstring> files;
    for (const Room& room : host.Rooms()) {
        com::Bstr programId;
        com::Check(room.device->get_ProgramId(programId.Out()));
        if (!programId.View().empty()) files.insert(folder + L"\\" + programId.Text() + L".ini");
    }
    return files;
}

[[noreturn]] void ThrowSystem(const std::wstring& what) {
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    throw Failure{what + L": " + CodeText(result)};
}

void ClearSettings(Host& host) {
    for (const auto& file : SettingsFiles(host)) {
        if (!DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND) {
            ThrowSystem(L"\"" + file + L"\" cannot be deleted");
        }
    }
}

}  // namespace

void Settings(Session& session, const Words& words) {
    Host& host = session.GetHost();
    if (words.size() == 1) {
        if (words[0] != L"clear") throw Failure{L"settings without a value can only be \"clear\""};
        ClearSettings(host);
        return;
    }
    const std::wstring section = words.size() == 3 ? words[0] : L"Settings";
    const std::wstring& key = words[words.size() - 2];
    if (section.empty() || key.empty()) throw Failure{L"a section and a key cannot be empty"};
    for (const auto& file : SettingsFiles(host)) {
        if (!WritePrivateProfileStringW(section.c_str(), key.c_str(), words.back().c_str(),
                                        file.c_str())) {
            ThrowSystem(L"\"" + file + L"\" cannot be written");
        }
    }
}

void Fail(Session& session, const Words& words) {
    long nth = 1;
    bool always = false;
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        if (words[i] == L"always") {
            always = true;
        } else {
            nth = ParseNumber(words[i], 1);
        }
    }
    com::Check(session.GetHost().Simulator().Fail(com::Bstr(words[0]).Get(), nth,
                                                  always ? VARIANT_TRUE : VARIANT_FALSE,
                                                  ParseCode(words.back())));
}

void Delay(Session& session, const Words& words) {
    com::Check(
        session.GetHost().Simulator().Delay(com::Bstr(words[0]).Get(), ParseNumber(words[1], 0)));
}

void Silence(Session& session, const Words& words) {
    const bool on = ParseSwitch(words[1], L"on", L"off");
    const Room& room = session.GetHost().Find(words[0]);
    com::Check(session.GetHost().Simulator().Silence(com::Bstr(room.neuron).Get(),
                                                     on ? VARIANT_TRUE : VARIANT_FALSE));
}

void Restore(Session& session, const Words&) {
    com::Check(session.GetHost().Simulator().Restore());
}

void Answer(Session& session, const Words& words) {
    const auto button = ButtonOf(words[0]);
    if (!button) throw Failure{L"\"" + words[0] + L"\" is no button of a message box"};
    session.Boxes().Queue(*button);
}

void Let(Session& session, const Words& words) {
    session.SetVariable(words[0], words[1]);
}

void Echo(Session&, const Words& words) {
    std::wstring line;
    for (const auto& word : words) line += (line.empty() ? L"" : L" ") + word;
    Print(line);
}

void Save(Session& session, const Words& words) {
    session.GetHost().Save(FullPath(words[0]));
}

void Run(Session& session, const Words& words) {
    session.RunScript(words[0]);
}

}  // namespace quorvex::bench::commands
