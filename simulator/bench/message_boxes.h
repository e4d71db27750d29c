// Presses the buttons of message boxes that come up on this thread; prints and remembers what they
// said.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/platform.h"

namespace quorvex::bench {

struct Box {
    std::wstring title;
    std::wstring text;
    std::wstring pressed;  // "yes", "ok", ...
    std::wstring trouble;  // why it could not be answered as queued; empty: it was
    bool seen = false;     // an expectation has looked at it
};

// "yes" and so on as a button's command number; nullopt for another word.
std::optional<int> ButtonOf(std::wstring_view answer);

// At most one at a time in a process. A box for which no answer is queued, or which lacks the
// queued button, is dismissed the most harmless way it offers.
class MessageBoxes {
public:
    MessageBoxes();
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    ~MessageBoxes();

    // While a person is there, boxes are left to that person, and not remembered.
    void SetAttended(bool attended) { m_attended = attended; }

    void Queue(int button) { m_answers.push_back(button); }
    std::size_t Queued() const { return m_answers.size(); }
    std::vector<Box>& Seen() { return m_boxes; }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnActivate(HWND window);
    void OnDestroy(HWND window);
    void AnswerBox(HWND window);

    bool m_attended = false;
    HHOOK m_hook = nullptr;
    HWND m_window = nullptr;  // gets posted to itself which box to answer
    std::deque<int> m_answers;
    std::vector<Box> m_boxes;
    std::vector<HWND> m_open;  // dialogs met and not gone yet
};

}  // namespace quorvex::bench
