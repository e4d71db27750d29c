#include "window/gui_objects.h"

#include <windows.h>

#include <cstdint>

#include "support/plugin_window.h"

namespace quillon::test {
namespace {

int CountWindows() {
    std::size_t count = 0;
    for (const HWND window : ThreadWindows())
        if (!IsSystemWindow(window)) count += 1 + ControlsBelow(window).size();
    return static_cast<int>(count);
}

bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) return false;
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    return true;
}

// Regions and window device contexts come and go with the system's own work.
bool IsDrawingObject(HGDIOBJ object) {
    switch (GetObjectType(object)) {
        case OBJ_PEN:
        case OBJ_BRUSH:
        case OBJ_FONT:
        case OBJ_BITMAP:
        case OBJ_MEMDC:
            return true;
        default:
            return false;
    }
}

template <class Handle>
Handle HandleOf(std::uintptr_t place) {
    return reinterpret_cast<Handle>(place);
}

// Wine answers no counts, but takes a handle whose upper half is zero for the object at that place
// of its table.
void CountByHandle(GuiObjects& objects) {
    for (std::uintptr_t place = 1; place <= 0xFFFF; ++place) {
        if (IsDrawingObject(HandleOf<HGDIOBJ>(place))) ++objects.drawing;
        if (place % 2 != 0) continue;
        if (IsMenu(HandleOf<HMENU>(place))) ++objects.menus;
        if (IsIcon(HandleOf<HICON>(place))) ++objects.icons;
    }
}

}  // namespace

GuiObjects CountGuiObjects() {
    GuiObjects objects;
    objects.windows = CountWindows();
    objects.drawing = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    if (objects.drawing != 0)
        objects.menus = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    else
        CountByHandle(objects);
    return objects;
}

bool NothingLeftSince(const GuiObjects& before) {
    constexpr int kKeptBySystem = 8;
    const GuiObjects now = CountGuiObjects();
    return now.windows == before.windows && now.menus == before.menus &&
           now.icons == before.icons && now.drawing <= before.drawing + kKeptBySystem;
}

std::ostream& operator<<(std::ostream& out, const GuiObjects& objects) {
    return out << objects.windows << " windows, " << objects.menus << " menus, " << objects.icons
               << " icons, " << objects.drawing << " drawing objects";
}

}  // namespace quillon::test
