// Works the dialogs of a plug-in from outside: by keys and by their buttons, as a person does.
#pragma once

#include <deque>
#include <string>

#include "output.h"
#include "script_reader.h"

namespace quorvex::bench {

// One thing that a person does in the dialog in front.
struct Step {
    enum class Kind { kType, kKey, kChoose, kPress, kShows };
    Kind kind = Kind::kKey;
    std::wstring text;  // what to type, to choose, or to find
    int number = 0;     // virtual key, or button
};

// The steps that words say: "type TEXT", "key NAME", "choose TEXT", "shows TEXT", "invalid", "ok",
// "cancel". Throws Failure.
std::deque<Step> ReadSteps(const Words& words);

// Runs steps one by one while the thread handles its messages: each in the dialog that is then in
// front, the first one after a dialog has come up. At most one at a time in a process.
class EditorSteps {
public:
    explicit EditorSteps(std::deque<Step> steps);
    EditorSteps(const EditorSteps&) = delete;
    EditorSteps& operator=(const EditorSteps&) = delete;
    ~EditorSteps();

    // Handles the messages of this thread, among them one that opens a dialog. Throws Failure when
    // a step could not be done or a dialog was left open for half a minute, which cancels it, and
    // when steps are left.
    void Finish();

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
    void RunNext();
    void Do(HWND dialog, const Step& step);

    UINT_PTR m_timer = 0;
    std::deque<Step> m_steps;
    std::wstring m_trouble;
    HWND m_inFront = nullptr;  // at the last tick
    ULONGLONG m_lastStep = 0;
};

}  // namespace quorvex::bench
