// What this process holds of the window system.
#pragma once

#include <ostream>

namespace quillon::test {

struct GuiObjects {
    int windows = 0;  // of this thread, at every level
    int menus = 0;
    int icons = 0;
    int drawing = 0;  // bitmaps, brushes, pens, fonts, memory device contexts

    bool operator==(const GuiObjects&) const = default;
};

GuiObjects CountGuiObjects();

// True when nothing has come since `before`, but for a few drawing objects: the system makes some
// when a thing is painted for the first time, and keeps them.
bool NothingLeftSince(const GuiObjects& before);

std::ostream& operator<<(std::ostream& out, const GuiObjects& objects);

}  // namespace quillon::test
