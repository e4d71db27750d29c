#include "ui/file_dialog.h"

#include <commdlg.h>

#include <algorithm>

#include "ui/activation.h"

namespace quillon::ui {

namespace {

constexpr std::size_t kLongestPath = 32768;

struct Question {
    std::wstring filter;
    std::wstring file = std::wstring(kLongestPath, L'\0');
    OPENFILENAMEW dialog{};

    Question(HWND owner, const wchar_t* title, const FileFilter& files) {
        filter = std::wstring(files.label) + L'\0' + files.pattern + L'\0' + L'\0';
        dialog.lStructSize = sizeof dialog;
        dialog.hwndOwner = owner;
        dialog.lpstrFilter = filter.c_str();
        dialog.lpstrFile = file.data();
        dialog.nMaxFile = static_cast<DWORD>(file.size());
        dialog.lpstrTitle = title;
        // The host's current folder is its own affair.
        dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    }

    std::optional<std::wstring> Answer(BOOL accepted) const {
        if (!accepted) return std::nullopt;
        return file.substr(0, file.find(L'\0'));
    }
};

// What a device calls itself may hold characters that no file name can.
std::wstring FileName(std::wstring name) {
    std::replace_if(
        name.begin(), name.end(),
        [](wchar_t one) {
            return one < L' ' ||
                   std::wstring_view(L"\\/:*?\"<>|").find(one) != std::wstring_view::npos;
        },
        L'_');
    return name;
}

}  // namespace

std::optional<std::wstring> AskOpenFile(HWND owner, const wchar_t* title,
                                        const FileFilter& filter) {
    const ActivationScope controls;
    Question question(owner, title, filter);
    question.dialog.Flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    return question.Answer(GetOpenFileNameW(&question.dialog));
}

std::optional<std::wstring> AskSaveFile(HWND owner, const wchar_t* title, const FileFilter& filter,
                                        const std::wstring& proposedName,
                                        const wchar_t* extension) {
    const ActivationScope controls;
    Question question(owner, title, filter);
    std::wstring proposed = FileName(proposedName);
    if (extension) proposed.append(L".").append(extension);
    proposed.copy(question.file.data(), kLongestPath - 1);
    question.dialog.lpstrDefExt = extension;
    question.dialog.Flags |= OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    return question.Answer(GetSaveFileNameW(&question.dialog));
}

}  // namespace quillon::ui
