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

std::ostream& operator<<(std::ostream& out, const GuiObjects& objects);

}  // namespace quillon::test
