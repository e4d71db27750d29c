#include "ui/layout.h"

namespace quillon::ui {

namespace {

SIZE ClientSize(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

// One axis: the far edge follows when anchored there, the near edge only when not anchored itself.
void Move(LONG& nearEdge, LONG& farEdge, LONG growth, bool toNear, bool toFar) {
    if (!toFar) return;
    farEdge += growth;
    if (!toNear) nearEdge += growth;
    if (farEdge < nearEdge) farEdge = nearEdge;
}

}  // namespace

void Layout::Start(HWND window) {
    m_window = window;
    m_size = ClientSize(window);
    m_places.clear();
}

void Layout::Add(int id, unsigned anchors) {
    const HWND control = GetDlgItem(m_window, id);
    if (!control) return;
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&rect), 2);
    m_places.push_back({control, rect, anchors});
}

void Layout::Apply() const {
    if (!m_window) return;
    const SIZE now = ClientSize(m_window);
    HDWP moves = BeginDeferWindowPos(static_cast<int>(m_places.size()));
    for (const Place& place : m_places) {
        RECT rect = place.rect;
        Move(rect.left, rect.right, now.cx - m_size.cx, (place.anchors & kLeft) != 0,
             (place.anchors & kRight) != 0);
        Move(rect.top, rect.bottom, now.cy - m_size.cy, (place.anchors & kTop) != 0,
             (place.anchors & kBottom) != 0);
        if (moves)
            moves = DeferWindowPos(moves, place.control, nullptr, rect.left, rect.top,
                                   rect.right - rect.left, rect.bottom - rect.top,
                                   // A neighbour that moved first may cover what would be copied.
                                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    if (moves) EndDeferWindowPos(moves);
}

}  // namespace quillon::ui
