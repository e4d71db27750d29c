// The module (DLL or program) that this code is linked into: its handle, files, lifetime and type
// libraries.
#pragma once

#include <string>

#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::com {

HINSTANCE ModuleHandle();
// Full path of the module's own file.
std::wstring ModulePath();
// Its folder without a trailing backslash, and its file name without folder and extension.
std::wstring ModuleFolder();
std::wstring ModuleName();

// Objects, class factory locks and windows alive keep the module loaded. Any thread.
void LockModule();
void UnlockModule();
long ModuleLocks();

// Holds the module for the lifetime of its owner.
class ModuleLock {
public:
    ModuleLock() { LockModule(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
    ~ModuleLock() { UnlockModule(); }
};

// The description of an interface or class, from the type libraries that are resources 1, 2, ... of
// the module's own file; the registry is never asked. Throws Error TYPE_E_ELEMENTNOTFOUND. What was
// once found is kept while anything holds the module.
Ptr<ITypeInfo> TypeInfoOf(const GUID& guid);

}  // namespace quillon::com
