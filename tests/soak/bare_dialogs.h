// What the system itself leaves in the heaps for dialogs.
#pragma once

#include <windows.h>

#include <span>

namespace quillon::test {

// A dialog of the plug-in's resources, and those that stand in it.
struct BareDialog {
    int dialog = 0;
    std::span<const int> pages;
};

// The bytes of heap that stay behind each time a dialog is opened and closed with no code behind
// it, with the controls that the plug-in's manifest asks for.
double LeftByBareDialog(HMODULE plugin, const BareDialog& bare);

}  // namespace quillon::test
