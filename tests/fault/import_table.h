// Puts functions of ours in the place of functions that a loaded module imports.
#pragma once

#include <windows.h>

#include <string_view>

namespace quillon::test {

// Replaces an import of the module, whichever library it comes from; gives the address that stood
// there, null when the module does not import the function. The module's own code alone is
// concerned.
void* ReplaceImport(HMODULE module, std::string_view function, void* replacement);

}  // namespace quillon::test
