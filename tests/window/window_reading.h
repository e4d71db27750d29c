// What the controls of a window show.
#pragma once

#include <windows.h>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "support/drawn_colors.h"
#include "support/plugin_window.h"
#include "window/frmVantor.h"

namespace quillon::test {

using Lines = std::vector<std::wstring>;

struct ShownRow {
    std::wstring text;
    std::wstring value;
    std::wstring icon;  // its key

    bool operator==(const ShownRow&) const = default;
};

void PrintTo(const ShownRow& row, std::ostream* out);

HWND PageItem(const frmVantor& window, int tab, int id);
std::wstring PageText(const frmVantor& window, int tab, int id);
// Texts of a page's controls that have no identifier of their own, in their order.
Lines FixedTexts(const frmVantor& window, int tab);

Lines ShownTabs(const frmVantor& window);
std::vector<int> ShownTabNumbers(const frmVantor& window);

Lines Headers(HWND list);
std::vector<ShownRow> Rows(HWND list);
Lines ListBoxEntries(HWND listBox);
std::wstring Panel(const frmVantor& window, int place);

// A menu's entries, each as its text; "-" is a separator, " (greyed)" follows a greyed one.
Lines MenuEntries(HMENU menu);
// What a list's context menu offers when the menu key opens it; it is closed again.
Lines ContextMenu(HWND list);
HMENU ActionMenu(const frmVantor& window);
bool ActionMenuEnabled(const frmVantor& window);
// What WM_COMMAND carries when the operator chooses a menu entry, or presses a button of a page.
void Choose(const frmVantor& window, int command);
void Press(const frmVantor& window, int tab, int button);

// Handles messages until the condition holds; false when it does not within the limit.
bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds = 10000);

}  // namespace quillon::test
