// The numeric editor.
#pragma once

#include <optional>
#include <string>

#include "editors/FieldBox.h"
#include "editors/ValueEditor.h"
#include "editors/numeric_field.h"

namespace quillon {

class frmCPModif1 final : public ValueEditor, private FieldRules {
public:
    frmCPModif1();

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

    void SetInvalid(bool invalid);
    bool Invalid() const;
    void OnInvalidClicked();
    void OnChanged();
    void EnableOk(bool enabled) const;
    void RefuseTooSmall();

    FieldBox m_box;
    std::optional<NumericField> m_field;
    std::wstring m_name;
    std::wstring m_units;
};

}  // namespace quillon
