#include "soak/pump_gap.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

#include "fault/import_table.h"

namespace quillon::test {

namespace {

std::map<std::string, LONGLONG> g_longest;
const char* g_work = "";
LONGLONG g_last = 0;
decltype(&PeekMessageW) g_peek = nullptr;
decltype(&GetMessageW) g_get = nullptr;

LONGLONG Now() {
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

void EndGap() {
    if (g_last == 0) return;
    LONGLONG& longest = g_longest[g_work];
    longest = std::max(longest, Now() - g_last);
}

BOOL WINAPI Peek(LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
    EndGap();
    const BOOL found = g_peek(message, window, first, last, remove);
    g_last = Now();
    return found;
}

BOOL WINAPI Get(LPMSG message, HWND window, UINT first, UINT last) {
    EndGap();
    const BOOL found = g_get(message, window, first, last);
    g_last = Now();
    return found;
}

}  // namespace

PumpGap::PumpGap(HMODULE module) {
    g_longest.clear();
    g_last = 0;
    g_peek = reinterpret_cast<decltype(g_peek)>(
        ReplaceImport(module, "PeekMessageW", reinterpret_cast<void*>(&Peek)));
    g_get = reinterpret_cast<decltype(g_get)>(
        ReplaceImport(module, "GetMessageW", reinterpret_cast<void*>(&Get)));
}

PumpGap::~PumpGap() {
    g_last = 0;
}

void PumpGap::Looked(const char* work) {
    EndGap();
    g_work = work;
    g_last = Now();
}

void PumpGap::Forget() {
    g_last = 0;
}

void PumpGap::Print() const {
    LARGE_INTEGER second{};
    QueryPerformanceFrequency(&second);
    std::printf("\n| work | longest time without a look at the messages, ms |\n|---|---|\n");
    for (const auto& [work, gap] : g_longest)
        std::printf("| %s | %.1f |\n", work.c_str(),
                    1000.0 * static_cast<double>(gap) / static_cast<double>(second.QuadPart));
}

}  // namespace quillon::test
