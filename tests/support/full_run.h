// Whether everything is to be tried, or a sample of it.
#pragma once

#include <windows.h>

namespace quillon::test {

// True when QUILLON_FULL is set, as in ./test.sh --full: every case is wanted, not a sample.
inline bool FullRun() {
    return GetEnvironmentVariableW(L"QUILLON_FULL", nullptr, 0) > 1;  // with its end
}

}  // namespace quillon::test
