// What an operator does with the dialogs that a command of a window brings up.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "output.h"

namespace quorvex::bench {

// One dialog: recognised by its title and by a control that it must have, then acted on once. The
// action runs inside the dialog's own message loop and has to make the dialog end; it may throw
// Failure, and the dialog is then cancelled.
struct DialogStep {
    std::wstring title;
    int control = 0;  // 0: none in particular
    std::function<void(HWND dialog)> act;
};

// The platform's file dialog: the name is typed and accepted. The file for saving must not exist,
// or an answer for the question about it must be queued.
DialogStep NameFile(std::wstring title, std::wstring file);
// The platform's file dialog is cancelled.
DialogStep CancelFile(std::wstring title);

// Runs the command, which returns when its modal dialogs are gone, and takes the steps in order
// meanwhile. A dialog that matches no step, and is no message box, is cancelled after a while.
// Throws Failure for it, for what a step throws, and for a step whose dialog never came up. Not to
// be nested.
void DriveDialogs(std::vector<DialogStep> steps, const std::function<void()>& command);

// Chooses an entry of the window's menu bar by its captions, without "&" and what follows a tab:
// {"Action", "Parameters", "Download"}. Returns when the command has run. Throws Failure when there
// is no such entry or it is greyed.
void ChooseMenu(HWND window, const std::vector<std::wstring_view>& captions);
// Presses the button with this caption ("OK"). Throws Failure when there is none to press.
void PressButton(HWND dialog, std::wstring_view caption);
// Clicks a line of a list box, as the mouse does.
void ClickLine(HWND listBox, int line);

// The window's text and class; a caption without its access key.
std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);
std::wstring PlainCaption(std::wstring_view caption);

}  // namespace quorvex::bench
