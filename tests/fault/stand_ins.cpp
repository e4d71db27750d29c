#include "fault/stand_ins.h"

#include <commdlg.h>

#include <string_view>
#include <utility>

#include "fault/import_table.h"

namespace quillon::test {

namespace {

std::wstring g_file;
std::string g_printed;
HANDLE g_port = nullptr;  // an event: something that can be closed

BOOL WINAPI AnswerFileDialog(OPENFILENAMEW* dialog) {
    if (g_file.size() >= dialog->nMaxFile) return FALSE;
    dialog->lpstrFile[g_file.copy(dialog->lpstrFile, g_file.size())] = L'\0';
    return TRUE;
}

HANDLE WINAPI OpenFileOrPort(LPCWSTR name, DWORD access, DWORD share,
                             LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                             HANDLE pattern) {
    if (!std::wstring_view(name).starts_with(L"\\\\.\\COM"))
        return CreateFileW(name, access, share, security, disposition, flags, pattern);
    g_port = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return g_port;
}

BOOL WINAPI WriteFileOrPort(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                            LPOVERLAPPED overlapped) {
    if (file != g_port) return WriteFile(file, bytes, count, written, overlapped);
    g_printed.append(static_cast<const char*>(bytes), count);
    overlapped->InternalHigh = count;
    SetEvent(overlapped->hEvent);
    return TRUE;
}

BOOL WINAPI GiveWritten(HANDLE, LPOVERLAPPED overlapped, LPDWORD written, BOOL) {
    *written = static_cast<DWORD>(overlapped->InternalHigh);
    return TRUE;
}

BOOL WINAPI GiveState(HANDLE, LPDWORD faults, LPCOMSTAT state) {
    *faults = 0;
    *state = COMSTAT{};
    return TRUE;
}

BOOL WINAPI TakeLine(HANDLE, LPDCB) {
    return TRUE;
}

BOOL WINAPI TakeSizes(HANDLE, DWORD, DWORD) {
    return TRUE;
}

BOOL WINAPI TakeTimeouts(HANDLE, LPCOMMTIMEOUTS) {
    return TRUE;
}

BOOL WINAPI TakePurge(HANDLE, DWORD) {
    return TRUE;
}

}  // namespace

void StandInForSystem(HMODULE module) {
    const auto stand = [&](const char* name, auto function) {
        ReplaceImport(module, name, reinterpret_cast<void*>(function));
    };
    stand("GetOpenFileNameW", AnswerFileDialog);
    stand("GetSaveFileNameW", AnswerFileDialog);
    stand("CreateFileW", OpenFileOrPort);
    stand("WriteFile", WriteFileOrPort);
    stand("GetOverlappedResult", GiveWritten);
    stand("ClearCommError", GiveState);
    stand("GetCommState", TakeLine);
    stand("SetCommState", TakeLine);
    stand("SetupComm", TakeSizes);
    stand("SetCommTimeouts", TakeTimeouts);
    stand("PurgeComm", TakePurge);
}

void ChooseFile(std::wstring path) {
    g_file = std::move(path);
}

const std::string& Printed() {
    return g_printed;
}

// A later file may get the number of a port that is closed.
void ForgetPrinted() {
    g_printed.clear();
    g_port = nullptr;
}

}  // namespace quillon::test
