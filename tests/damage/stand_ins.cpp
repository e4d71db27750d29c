#include "damage/stand_ins.h"

#include <commdlg.h>

#include <string_view>
#include <utility>

#include "fault/import_table.h"

namespace quillon::test {

namespace {

HANDLE g_port = nullptr;
std::string g_received;
std::wstring g_path;
decltype(&CreateFileW) g_createFile = nullptr;
decltype(&WriteFile) g_writeFile = nullptr;

HANDLE WINAPI Open(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                   DWORD disposition, DWORD flags, HANDLE pattern) {
    if (!std::wstring_view(path).starts_with(L"\\\\.\\COM"))
        return g_createFile(path, access, share, security, disposition, flags, pattern);
    return g_port = CreateEventW(nullptr, TRUE, FALSE, nullptr);
}

// Ports are written to with an OVERLAPPED, files are not.
BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED work) {
    if (file != g_port || !work) return g_writeFile(file, bytes, size, written, work);
    g_received.append(static_cast<const char*>(bytes), size);
    work->Internal = 0;
    work->InternalHigh = size;
    SetEvent(work->hEvent);
    return TRUE;
}

template <class... Arguments>
BOOL WINAPI Accept(Arguments...) {
    return TRUE;
}

BOOL WINAPI ClearError(HANDLE, LPDWORD faults, LPCOMSTAT state) {
    if (faults) *faults = 0;
    if (state) *state = COMSTAT{};
    return TRUE;
}

BOOL WINAPI AnswerOpen(LPOPENFILENAMEW question) {
    if (g_path.size() >= question->nMaxFile) return FALSE;
    g_path.copy(question->lpstrFile, g_path.size());
    question->lpstrFile[g_path.size()] = L'\0';
    return TRUE;
}

template <class Function>
Function Stand(HMODULE module, const char* name, Function own) {
    return reinterpret_cast<Function>(ReplaceImport(module, name, reinterpret_cast<void*>(own)));
}

}  // namespace

void StandInForPort(HMODULE module) {
    g_createFile = Stand(module, "CreateFileW", &Open);
    g_writeFile = Stand(module, "WriteFile", &Write);
    Stand(module, "GetCommState", &Accept<HANDLE, LPDCB>);
    Stand(module, "SetCommState", &Accept<HANDLE, LPDCB>);
    Stand(module, "SetupComm", &Accept<HANDLE, DWORD, DWORD>);
    Stand(module, "SetCommTimeouts", &Accept<HANDLE, LPCOMMTIMEOUTS>);
    Stand(module, "PurgeComm", &Accept<HANDLE, DWORD>);
    Stand(module, "ClearCommError", &ClearError);
    g_received.clear();
}

std::string TakeReceived() {
    return std::exchange(g_received, {});
}

void StandInForFileDialog(HMODULE module) {
    Stand(module, "GetOpenFileNameW", &AnswerOpen);
}

void AnswerFileDialog(const std::wstring& path) {
    g_path = path;
}

}  // namespace quillon::test
