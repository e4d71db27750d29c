// The enumeration editor.
#pragma once

#include <optional>
#include <string>

#include "editors/ValueEditor.h"
#include "editors/enumeration.h"

namespace quillon {

class frmCPModif3 final : public ValueEditor {
public:
    frmCPModif3();

private:
    void Load() override;
    bool OnInit() override;
    bool OnCommand(int id, int code, HWND control) override;
    std::optional<std::wstring> TextToWrite() override;

    void FillEntries() const;
    // The entry that the box shows.
    std::optional<std::size_t> Shown() const;

    std::optional<Enumeration> m_enumeration;
    std::wstring m_name;
};

}  // namespace quillon
