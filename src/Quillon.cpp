// The module: which classes it makes, its entry points and its registration.
#include "com/class_table.h"
#include "com/module.h"
#include "editors/frmVantorSplash.h"
#include "model/CProfile.h"
#include "plugin/CDevice.h"
#include "plugin/CRegistry.h"
#include "plugin/MMain.h"

namespace {

using quillon::com::ClassEntry;
using quillon::com::Scope;

const wchar_t* const kLibrary = L"Quillon";

std::span<const ClassEntry> Classes() {
    namespace com = quillon::com;
    static const ClassEntry classes[] = {
        {CLSID_CDevice, L"CDevice", L"Quillon.CDevice", com::Create<quillon::CDevice>},
        {CLSID_CProfile, L"CProfile", L"Quillon.CProfile", com::Create<quillon::CProfile>},
        {CLSID_CNV, L"CNV", L"Quillon.CNV", com::Create<quillon::CNV>},
        {CLSID_CNVs, L"CNVs", L"Quillon.CNVs", com::Create<quillon::CNVs>},
        {CLSID_CCP, L"CCP", L"Quillon.CCP", com::Create<quillon::CCP>},
        {CLSID_CCPs, L"CCPs", L"Quillon.CCPs", com::Create<quillon::CCPs>},
        {CLSID_CRegistry, L"CRegistry", L"Quillon.CRegistry", com::Create<quillon::CRegistry>},
    };
    return classes;
}

void ShowSplash() {
    quillon::frmVantorSplash::Create()->Show(nullptr);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
    return quillon::com::GetClassObject(Classes(), clsid, iid, factory);
}

STDAPI DllCanUnloadNow() {
    return quillon::com::ModuleLocks() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return quillon::com::Register(Classes(), kLibrary, Scope::kMachine);
}

STDAPI DllUnregisterServer() {
    return quillon::com::Unregister(Classes(), kLibrary, Scope::kMachine);
}

// regsvr32 /n /i:user registers for the current user alone; without "user", for the machine.
STDAPI DllInstall(BOOL install, PCWSTR arguments) {
    const bool user = arguments && _wcsicmp(arguments, L"user") == 0;
    if (arguments && *arguments && !user) return E_INVALIDARG;
    const Scope scope = user ? Scope::kUser : Scope::kMachine;
    return install ? quillon::com::Register(Classes(), kLibrary, scope)
                   : quillon::com::Unregister(Classes(), kLibrary, scope);
}

// rundll32 Quillon.dll,Main: the module started as a program. Ends when the splash has gone.
extern "C" void CALLBACK MainW(HWND, HINSTANCE, PWSTR, int) {
    OleInitialize(nullptr);
    quillon::com::Quietly([] { quillon::Main(true, ShowSplash); });
    MSG message;
    while (!quillon::ui::OpenForms().empty() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
}
