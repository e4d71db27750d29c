#include "ui/dialog.h"

#include "ui/activation.h"
#include "ui/module.h"

namespace quillon::ui {

Dialog::~Dialog() {
    Destroy();
}

std::wstring Dialog::ItemText(int id) const {
    const HWND item = Item(id);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
    const int length = GetWindowTextW(item, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void Dialog::SetItemText(int id, const std::wstring& text) const {
    const HWND item = Item(id);
    // Room for one character more, so that a longer text is seen to be another.
    std::wstring shown(text.size() + 2, L'\0');
    const int length = GetWindowTextW(item, shown.data(), static_cast<int>(shown.size()));
    shown.resize(static_cast<std::size_t>(length));
    if (shown != text) SetWindowTextW(item, text.c_str());
}

bool Dialog::CreateModeless(int resource, HWND owner) {
    const ActivationScope controls;
    m_initFailed = false;
    CreateDialogParamW(OwnModule(), MAKEINTRESOURCEW(resource), owner, Procedure,
                       reinterpret_cast<LPARAM>(this));
    if (m_initFailed) Destroy();
    return m_handle != nullptr;
}

bool Dialog::CreatePage(int resource, HWND parent) {
    return CreateModeless(resource, parent);
}

INT_PTR Dialog::RunModal(int resource, HWND owner) {
    const ActivationScope controls;
    m_modal = true;
    return DialogBoxParamW(OwnModule(), MAKEINTRESOURCEW(resource), owner, Procedure,
                           reinterpret_cast<LPARAM>(this));
}

void Dialog::End(INT_PTR result) {
    EndDialog(m_handle, result);
}

void Dialog::Destroy() {
    if (m_handle) DestroyWindow(m_handle);
}

std::optional<INT_PTR> Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COMMAND) return std::nullopt;
    const bool handled = OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
    return handled ? std::optional<INT_PTR>(TRUE) : std::nullopt;
}

INT_PTR Dialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<void> hold = KeepAlive();
    if (message == WM_INITDIALOG) return OnInit() ? TRUE : FALSE;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(m_handle, DWLP_USER, 0);
        m_handle = nullptr;
        OnDestroyed();
        return FALSE;
    }
    return OnMessage(message, wParam, lParam).value_or(FALSE);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam,
                                   LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<Dialog*>(lParam)->m_handle = window;
    }
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog) return FALSE;
    try {
        return dialog->Dispatch(message, wParam, lParam);
    } catch (...) {
        if (message == WM_INITDIALOG) dialog->OnInitFailed();
        return FALSE;
    }
}

// A window that is set up in part is none: it would be worked on as a whole one.
void Dialog::OnInitFailed() {
    m_initFailed = true;
    if (m_modal) EndDialog(m_handle, -1);
}

}  // namespace quillon::ui
