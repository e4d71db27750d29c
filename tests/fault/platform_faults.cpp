#include "fault/platform_faults.h"

#include <commdlg.h>
#include <oleauto.h>
#include <shlwapi.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fault/import_table.h"

// The platform has it, the compiler's headers do not.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);

namespace quillon::test {

namespace {

// The book is plain memory: it is written to from inside the plug-in's allocations.
struct Slot {
    const char* name = nullptr;
    long calls = 0;
    long failAt = 0;  // 0: never
    bool forGood = false;
};
constexpr std::size_t kMostFunctions = 48;
constexpr std::size_t kMostCalls = 100'000;
std::array<Slot, kMostFunctions> g_slots;
std::array<std::uint8_t, kMostCalls> g_order;
std::size_t g_ordered = 0;
std::size_t g_memory = kMostFunctions;

bool IsDue(std::size_t slot) {
    Slot& own = g_slots[slot];
    ++own.calls;
    if (slot != g_memory && g_ordered < kMostCalls)
        g_order[g_ordered++] = static_cast<std::uint8_t>(slot);
    if (own.failAt == 0) return false;
    if (--own.failAt > 0) return false;
    if (own.forGood) own.failAt = 1;
    return true;
}

// Stands in for one import: the system's function, or a failing one's answer.
template <std::size_t kSlot, auto kAnswer, class Function>
struct Import;

template <std::size_t kSlot, auto kAnswer, class R, class... Arguments>
struct Import<kSlot, kAnswer, R(WINAPI*)(Arguments...)> {
    static inline R(WINAPI* s_system)(Arguments...) = nullptr;
    static R WINAPI Call(Arguments... arguments) {
        if (!IsDue(kSlot)) return s_system(arguments...);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return kAnswer();
    }
};

#ifdef __i386__  // elsewhere WINAPI is the ordinary convention
template <std::size_t kSlot, auto kAnswer, class R, class... Arguments>
struct Import<kSlot, kAnswer, R (*)(Arguments...)> {
    static inline R (*s_system)(Arguments...) = nullptr;
    static R Call(Arguments... arguments) {
        return IsDue(kSlot) ? kAnswer() : s_system(arguments...);
    }
};
#endif

template <std::size_t kSlot, auto kAnswer, class Function>
void Stand(HMODULE module, const char* name, Function) {
    using Own = Import<kSlot, kAnswer, Function>;
    void* const system = ReplaceImport(module, name, reinterpret_cast<void*>(&Own::Call));
    g_slots[kSlot].name = system ? name : nullptr;
    Own::s_system = reinterpret_cast<Function>(system);
}

constexpr auto kFalse = [] { return FALSE; };
constexpr auto kZero = [] { return DWORD{0}; };
constexpr auto kNoFile = [] { return INVALID_HANDLE_VALUE; };
constexpr auto kDenied = [] { return LSTATUS{ERROR_ACCESS_DENIED}; };
constexpr auto kFails = [] { return E_FAIL; };
template <class T>
constexpr auto kNull = [] { return static_cast<T>(nullptr); };

void StandForFiles(HMODULE module) {
    Stand<0, kNoFile>(module, "CreateFileW", &CreateFileW);
    Stand<1, kFalse>(module, "ReadFile", &ReadFile);
    Stand<2, kFalse>(module, "MoveFileExW", &MoveFileExW);
    Stand<3, kZero>(module, "GetPrivateProfileStringA", &GetPrivateProfileStringA);
    Stand<4, kFalse>(module, "WritePrivateProfileStringA", &WritePrivateProfileStringA);
    Stand<5, kFails>(module, "SHCreateStreamOnFileEx", &SHCreateStreamOnFileEx);
    Stand<6, kFalse>(module, "GetFileSizeEx", &GetFileSizeEx);
    Stand<7, kFalse>(module, "WriteFile", &WriteFile);
    Stand<13, kFalse>(module, "GetOpenFileNameW", &GetOpenFileNameW);
    Stand<14, kFalse>(module, "GetSaveFileNameW", &GetSaveFileNameW);
    Stand<15, kFalse>(module, "DeleteFileW", &DeleteFileW);
}

void StandForRegistry(HMODULE module) {
    Stand<8, kDenied>(module, "RegCreateKeyExW", &RegCreateKeyExW);
    Stand<9, kDenied>(module, "RegSetValueExW", &RegSetValueExW);
    Stand<10, kFails>(module, "RegisterTypeLib", &RegisterTypeLib);
    Stand<11, kFails>(module, "RegisterTypeLibForUser", &RegisterTypeLibForUser);
    Stand<12, kFails>(module, "LoadTypeLibEx", &LoadTypeLibEx);
    Stand<39, kDenied>(module, "RegDeleteTreeW", &RegDeleteTreeW);
    Stand<40, kFails>(module, "UnRegisterTypeLibForUser", &UnRegisterTypeLibForUser);
}

void StandForWindows(HMODULE module) {
    Stand<16, kNull<HWND>>(module, "CreateDialogParamW", &CreateDialogParamW);
    Stand<17, kNull<HANDLE>>(module, "LoadImageW", &LoadImageW);
    Stand<18, [] { return UINT_PTR{0}; }>(module, "SetTimer", &SetTimer);
    Stand<19, kNull<HHOOK>>(module, "SetWindowsHookExW", &SetWindowsHookExW);
    Stand<20, kNull<HBRUSH>>(module, "CreateSolidBrush", &CreateSolidBrush);
    Stand<21, kNull<HANDLE>>(module, "CreateActCtxW", &CreateActCtxW);
    Stand<22, [] { return INT_PTR{-1}; }>(module, "DialogBoxParamW", &DialogBoxParamW);
    Stand<23, kNull<HWND>>(module, "CreateWindowExW", &CreateWindowExW);
}

void StandForPort(HMODULE module) {
    Stand<32, kFalse>(module, "GetCommState", &GetCommState);
    Stand<33, kFalse>(module, "SetCommState", &SetCommState);
    Stand<34, kFalse>(module, "SetupComm", &SetupComm);
    Stand<35, kFalse>(module, "SetCommTimeouts", &SetCommTimeouts);
    Stand<36, kFalse>(module, "ClearCommError", &ClearCommError);
    Stand<37, kFalse>(module, "GetOverlappedResult", &GetOverlappedResult);
    Stand<38, kNull<HANDLE>>(module, "CreateEventW", &CreateEventW);
}

void StandForObjects(HMODULE module) {
    Stand<24, kFails>(module, "CoCreateInstance", &CoCreateInstance);
    Stand<25, kNull<BSTR>>(module, "SysAllocStringLen", &SysAllocStringLen);
    Stand<26, kNull<BSTR>>(module, "SysAllocString", &SysAllocString);
    Stand<27, kNull<SAFEARRAY*>>(module, "SafeArrayCreateVector", &SafeArrayCreateVector);
    Stand<28, kFails>(module, "CreateErrorInfo", &CreateErrorInfo);
    Stand<29, kFails>(module, "VarBstrFromR4", &VarBstrFromR4);
    g_memory = 31;
    using Malloc = void* (*)(std::size_t);
    Stand<31, kNull<void*>>(module, PlatformFaults::kMemory, static_cast<Malloc>(&std::malloc));
}

}  // namespace

PlatformFaults::PlatformFaults(HMODULE module) {
    g_slots = {};
    StandForFiles(module);
    StandForRegistry(module);
    StandForWindows(module);
    StandForPort(module);
    StandForObjects(module);
    StartCount();
}

PlatformFaults::~PlatformFaults() {
    Restore();
}

void PlatformFaults::StartCount() {
    for (Slot& slot : g_slots) slot.calls = 0;
    g_ordered = 0;
}

std::vector<std::string> PlatformFaults::Calls() const {
    std::vector<std::string> calls;
    const std::size_t count = g_ordered;
    for (std::size_t i = 0; i < count; ++i) calls.emplace_back(g_slots[g_order[i]].name);
    return calls;
}

long PlatformFaults::Allocations() const {
    return g_slots[g_memory].calls;
}

void PlatformFaults::Fail(const std::string& function, long nth, bool forGood) {
    for (Slot& slot : g_slots)
        if (slot.name && function == slot.name) {
            slot.forGood = forGood;
            slot.failAt = nth;
        }
}

void PlatformFaults::Restore() {
    for (Slot& slot : g_slots) slot.failAt = 0;
}

}  // namespace quillon::test
