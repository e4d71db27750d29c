// The text editor.
#pragma once

#include <optional>
#include <string>

#include "editors/FieldBox.h"
#include "editors/ValueEditor.h"

namespace quillon {

class frmCPModif2 final : public ValueEditor, private FieldRules {
public:
    frmCPModif2();

private:
    void Load() override;
    bool OnInit() override;
    bool OnCommand(int id, int code, HWND control) override;
    std::optional<std::wstring> TextToWrite() override;

    KeyAnswer OnKey(std::wstring_view text, Selection selection, wchar_t key) override;
    std::optional<TextEdit> OnPaste(std::wstring_view text, Selection selection,
                                    std::wstring_view pasted) override;
    void OnRestore() override;
    void OnAccept() override { Accept(); }

    void OnChanged();
    // The text, cut with a message where it is too long.
    static std::wstring Allowed(const std::wstring& text);

    FieldBox m_box;
    std::wstring m_name;
};

}  // namespace quillon
