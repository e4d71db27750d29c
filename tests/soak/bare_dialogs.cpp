#include "soak/bare_dialogs.h"

#include "support/plugin_controls.h"
#include "support/process_memory.h"

namespace quillon::test {

namespace {

INT_PTR CALLBACK NoCode(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

void OpenAndClose(HMODULE plugin, const BareDialog& bare) {
    const auto make = [&](int dialog, HWND parent) {
        return CreateDialogParamW(plugin, MAKEINTRESOURCEW(dialog), parent, NoCode, 0);
    };
    const HWND frame = make(bare.dialog, nullptr);
    for (const int page : bare.pages) make(page, frame);
    ShowWindow(frame, SW_SHOWNOACTIVATE);
    UpdateWindow(frame);
    DestroyWindow(frame);
}

}  // namespace

double LeftByBareDialog(HMODULE plugin, const BareDialog& bare) {
    const PluginsControls controls(plugin);
    const auto repeat = [&](int rounds) {
        for (int round = 0; round < rounds; ++round) OpenAndClose(plugin, bare);
    };
    constexpr int kFirst = 5;
    constexpr int kRounds = 40;
    repeat(kFirst);
    const std::size_t before = MemoryInUse().heapBytes;
    repeat(kRounds);
    const std::size_t after = MemoryInUse().heapBytes;
    return (static_cast<double>(after) - static_cast<double>(before)) / kRounds;
}

}  // namespace quillon::test
