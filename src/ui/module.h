// The module whose resources the windows are made of: our own, never the process's.
#pragma once

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace quillon::ui {

inline HINSTANCE OwnModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace quillon::ui
