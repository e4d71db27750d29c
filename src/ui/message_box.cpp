#include "ui/message_box.h"

namespace quillon::ui {

int ShowMessage(const std::wstring& text, UINT style, const wchar_t* title) {
    const HWND owner = GetActiveWindow();
    return MessageBoxW(owner, text.c_str(), title, owner ? style : style | MB_TASKMODAL);
}

}  // namespace quillon::ui
