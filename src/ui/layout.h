// Controls that keep their distance to the edges of a resizable window.
#pragma once

#include <windows.h>

#include <vector>

namespace quillon::ui {

// Which edges a control follows. Left and top alone: it stays; right without left: it moves; both:
// it grows.
enum Anchor : unsigned {
    kLeft = 1,
    kTop = 2,
    kRight = 4,
    kBottom = 8,
    kFill = kLeft | kTop | kRight | kBottom,
};

// Remembers where controls stand when they are added; Apply moves them with the window's client
// area.
class Layout {
public:
    // Call when the window has its designed size.
    void Start(HWND window);
    void Add(int id, unsigned anchors);
    void Apply() const;
    // The client size at Start, in pixels.
    SIZE DesignedSize() const { return m_size; }

private:
    struct Place {
        HWND control;
        RECT rect;
        unsigned anchors;
    };

    HWND m_window = nullptr;
    SIZE m_size{};
    std::vector<Place> m_places;
};

}  // namespace quillon::ui
