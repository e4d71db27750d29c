// What the DLL exports.
#include "calls.h"
#include "com/class_table.h"
#include "com/error.h"
#include "com/module.h"
#include "control.h"
#include "device.h"

namespace {

namespace com = quillon::com;

const com::ClassEntry kClasses[] = {
    {__uuidof(::Device), L"Device", L"Tessaly generic device", &com::Create<quorvex::Device>},
    {__uuidof(::Simulator), L"Simulator", L"Quorvex simulator control",
     &com::Create<quorvex::Control>},
};
constexpr std::wstring_view kPrefix = L"Quorvex";

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds) quorvex::Calls::Abandon();
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
    return com::GetClassObject(kClasses, clsid, iid, factory);
}

// What callers left armed keeps their objects, and so the module.
STDAPI DllCanUnloadNow() {
    return com::ModuleLocks() == 0 && !quorvex::Calls::Process().HoldsObjects() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return com::Register(kClasses, kPrefix, com::Scope::kMachine);
}

STDAPI DllUnregisterServer() {
    return com::Unregister(kClasses, kPrefix, com::Scope::kMachine);
}

STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
    const bool user =
        commandLine && CompareStringOrdinal(commandLine, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    if (!user && commandLine && *commandLine) return E_INVALIDARG;
    const com::Scope scope = user ? com::Scope::kUser : com::Scope::kMachine;
    return install ? com::Register(kClasses, kPrefix, scope)
                   : com::Unregister(kClasses, kPrefix, scope);
}

}  // extern "C"
