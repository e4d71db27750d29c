// The structure editor.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editors/ValueEditor.h"
#include "editors/structure_copy.h"

namespace quillon {

class frmCPModif4 final : public ValueEditor {
public:
    frmCPModif4();

private:
    void Load() override;
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<std::wstring> TextToWrite() override;

    void FillRows() const;
    // Throws com::Error; empty when the host has no such field any more.
    DataPoint FieldOf(const std::wstring& key) const;
    // Opens the editor of the selected row's field.
    void EditField();
    void RefreshRow(std::size_t place, const DataPoint& field);

    com::Ptr<IDispatch> m_fields;
    std::vector<FieldRow> m_rows;
    std::wstring m_name;
};

}  // namespace quillon
