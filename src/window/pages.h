// The pages of the device window, one class for each kind. A page shows; what it shows is the
// frame's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/dialog.h"
#include "ui/layout.h"
#include "window/RowList.h"

namespace quillon {

// What a page asks its frame to do.
struct PageActions {
    std::function<void(int command, HWND control)>
        command;                                            // a button was pressed, an entry chosen
    std::function<void(HWND list)> editRow;                 // Enter, F2 or double click
    std::function<void(HWND list, POINT screen)> listMenu;  // right button or menu key
    std::function<RowList*(HWND control)> listOf;           // the list behind a control
    std::function<void(int label)> editLabel;               // double click on a lblNV
    std::function<std::shared_ptr<void>()> keepAlive;       // held while a page handles a message
};

// A page made of one dialog resource; its controls follow its edges as given.
class Page : public ui::Dialog {
public:
    struct Anchored {
        int id;
        unsigned anchors;
    };

    Page(const PageActions& actions, std::vector<Anchored> anchored)
        : m_actions(actions), m_anchored(std::move(anchored)) {}

    bool Create(int resource, HWND parent) { return CreatePage(resource, parent); }
    using Dialog::Destroy;

    // A value text greyed out, because it is old; the label is a control of this page.
    void SetGreyed(int id, bool greyed);

protected:
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id, int code, HWND control) override;
    // A page is the frame's: what it handles may close the frame and let go of it.
    std::shared_ptr<void> KeepAlive() override { return m_actions.keepAlive(); }

private:
    std::optional<INT_PTR> OnNotify(const NMHDR& header, LPARAM lParam);

    const PageActions& m_actions;
    std::vector<Anchored> m_anchored;
    std::vector<int> m_greyed;
    ui::Layout m_layout;
};

}  // namespace quillon
