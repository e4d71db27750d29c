#include <algorithm>

#include "commands.h"
#include "dialog_driver.h"

namespace quorvex::bench::commands {
namespace {

HWND OpenWindow(Session& session, const Room& room) {
    const HWND open = session.Windows().Find(room);
    return open ? open : session.Windows().Open(room);
}

BOOL CALLBACK OnListBox(HWND control, LPARAM found) {
    if (ClassOf(control) != L"ListBox" || !IsWindowVisible(control)) return TRUE;
    *reinterpret_cast<HWND*>(found) = control;
    return FALSE;
}

std::wstring LineText(HWND list, int line) {
    const auto length = SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(line), 0);
    std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
    SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(line),
                 reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

// Makes exactly the lines with these names selected, by clicks. Throws Failure for a name that no
// line has.
void SelectNames(HWND dialog, Words names) {
    HWND list = nullptr;
    EnumChildWindows(dialog, OnListBox, reinterpret_cast<LPARAM>(&list));
    if (!list) throw Failure{L"the dialog shows no list"};
    const int lines = static_cast<int>(SendMessageW(list, LB_GETCOUNT, 0, 0));
    Words missing = names;
    for (int line = 0; line < lines; ++line) {
        const std::wstring name = LineText(list, line);
        std::erase(missing, name);
        const bool wanted = std::find(names.begin(), names.end(), name) != names.end();
        if (wanted != (SendMessageW(list, LB_GETSEL, static_cast<WPARAM>(line), 0) > 0))
            ClickLine(list, line);
    }
    if (!missing.empty()) throw Failure{L"the list has no line \"" + missing.front() + L"\""};
}

// A file that is there is replaced: the dialog would ask.
void SaveParameters(HWND window, const std::wstring& file) {
    DeleteFileW(file.c_str());
    DriveDialogs({NameFile(L"Save parameters to file...", file)}, [&] {
        ChooseMenu(window, {L"Action", L"Parameters", L"save as..."});
    });
    if (GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES)
        throw Failure{L"no parameter file was written to \"" + file + L"\""};
}

void DownloadParameters(HWND window, const std::wstring& file, const Words& names) {
    const DialogStep choose{L"Parameter download", 0, [&](HWND dialog) {
                                if (!names.empty()) SelectNames(dialog, names);
                                PressButton(dialog, L"OK");
                            }};
    DriveDialogs({NameFile(L"Download parameters from file...", file), choose}, [&] {
        ChooseMenu(window, {L"Action", L"Parameters", L"Download"});
    });
}

}  // namespace

void Open(Session& session, const Words& words) {
    session.Windows().Open(session.GetHost().Find(words[0]));
}

void Close(Session& session, const Words& words) {
    session.Windows().Close(session.GetHost().Find(words[0]));
}

void Parameters(Session& session, const Words& words) {
    const bool save = ParseSwitch(words[0], L"save", L"download");
    const Room& room = session.GetHost().Find(words[1]);
    const std::wstring file = FullPath(words[2]);
    if (save && words.size() > 3) throw Failure{L"names go with a download alone"};
    const HWND window = OpenWindow(session, room);
    if (save) {
        SaveParameters(window, file);
        Print(L"Saved the parameters of " + room.name + L" to " + words[2]);
    } else {
        DownloadParameters(window, file, {words.begin() + 3, words.end()});
        Print(L"Downloaded parameters from " + words[2] + L" into " + room.name);
    }
}

}  // namespace quorvex::bench::commands
