// Works the plug-in's modal dialogs, for an operator who changes what each shows and presses OK.
#pragma once

#include <windows.h>

#include <set>

namespace quillon::test {

// While it lives, every dialog that comes up on this thread is worked from its own message loop: a
// text is typed over, the second entry or option chosen, a structure's first field
// edited; then OK is pressed, and Cancel where OK leaves the dialog up. At most one at a time.
class DialogOperator {
public:
    DialogOperator();
    DialogOperator(const DialogOperator&) = delete;
    DialogOperator& operator=(const DialogOperator&) = delete;
    ~DialogOperator();

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
    void Look();
    bool CanWork(HWND window) const;

    UINT_PTR m_timer = 0;
    std::set<HWND> m_atWork;
};

}  // namespace quillon::test
