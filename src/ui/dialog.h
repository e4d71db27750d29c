// A dialog made of a DIALOGEX resource of our module: modeless, modal, or a page inside another.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

namespace quillon::ui {

// The window procedure is a gate: what a handler throws ends there. While a message is handled
// KeepAlive() is held, so a handler may close the window and let go of the object.
class Dialog {
public:
    Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog();

    // Null before creation and after the window is gone.
    HWND Handle() const { return m_handle; }
    HWND Item(int id) const { return GetDlgItem(m_handle, id); }
    std::wstring ItemText(int id) const;
    // Writes only when the text differs, so that nothing flickers.
    void SetItemText(int id, const std::wstring& text) const;

protected:
    // Create the window, hidden; false when it could not be made.
    bool CreateModeless(int resource, HWND owner);
    bool CreatePage(int resource, HWND parent);
    // Runs the window until End; the result given there, or -1 when it could not be made.
    INT_PTR RunModal(int resource, HWND owner);
    void End(INT_PTR result);
    // Destroys a modeless window or a page. Does nothing when there is none.
    void Destroy();

    // WM_INITDIALOG. False: the handler has set the focus itself. When it throws there is no
    // window.
    virtual bool OnInit() { return true; }
    // Every other message; nullopt: default handling.
    virtual std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // WM_COMMAND of a control, menu item or access key; true: handled.
    virtual bool OnCommand(int, int, HWND) { return false; }
    virtual void OnDestroyed() {}
    virtual std::shared_ptr<void> KeepAlive() { return nullptr; }

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInitFailed();

    HWND m_handle = nullptr;
    bool m_modal = false;
    bool m_initFailed = false;
};

}  // namespace quillon::ui
