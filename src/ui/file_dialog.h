// The platform's file dialogs.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace quillon::ui {

struct FileFilter {
    const wchar_t* label;    // "APP Files (*.app)"
    const wchar_t* pattern;  // "*.app"
};

// Full path of the chosen file; nullopt when the operator cancels. Opening asks for a file that
// exists; saving asks before it replaces one, and adds the extension (without a dot; null: none)
// where none was typed.
std::optional<std::wstring> AskOpenFile(HWND owner, const wchar_t* title, const FileFilter& filter);
std::optional<std::wstring> AskSaveFile(HWND owner, const wchar_t* title, const FileFilter& filter,
                                        const std::wstring& proposedName, const wchar_t* extension);

}  // namespace quillon::ui
