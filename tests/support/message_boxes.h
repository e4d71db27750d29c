// Presses the buttons of the message boxes that come up on this thread, and keeps what they said.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillon::test {

enum class Icon { kNone, kStop, kQuestion, kExclamation, kInformation };

struct Box {
    std::wstring title;
    std::wstring text;
    std::vector<int> buttons;  // IDOK, ..., ascending
    Icon icon = Icon::kNone;
    bool hadOwner = false;
    int pressed = 0;
};

// At most one at a time in a process. Boxes are answered in the order in which they come up. One
// that nobody expected, or that lacks the button, is dismissed and fails the running test, and so
// does an answer that was never called for.
class MessageBoxes {
public:
    MessageBoxes();
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    ~MessageBoxes();

    // The next box gets this button; `before` runs first, while the box is up.
    void Answer(int button, std::function<void()> before = {});
    // From now on a box for which no answer is waiting gets the button that the function names; 0:
    // it is one that nobody expected.
    void AnswerBy(std::function<int(const Box&)> choose) { m_choose = std::move(choose); }
    const std::vector<Box>& Seen() const { return m_seen; }

private:
    struct Reply {
        int button = 0;
        std::function<void()> before;
    };

    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);
    void OnActivate(HWND window);
    void OnShown(HWND window);
    std::optional<Reply> TakeReply(const Box& box);

    HHOOK m_hook = nullptr;
    std::deque<Reply> m_replies;
    std::function<int(const Box&)> m_choose;
    std::vector<Box> m_seen;
    std::vector<HWND> m_open;     // come up and not gone yet
    std::vector<HWND> m_waiting;  // come up and not answered yet
};

}  // namespace quillon::test
