// The choice of the entries of a parameter file that are downloaded.
#pragma once

#include <optional>
#include <string>

#include "model/parameter_subset.h"
#include "ui/dialog.h"
#include "ui/layout.h"

namespace quillon {

class ParameterSource;

// Set the source file, show, read the result file. While loading and writing pending messages are
// handled, so the owner, and with it the dialog, may be gone meanwhile.
class frmCPDownload final : public ui::Dialog {
public:
    void SetSourceFile(std::wstring file) { m_sourceFile = std::move(file); }
    // The plug-in's temporary file with the chosen entries. Empty after anything but OK, and when
    // the file of an earlier time could not be deleted or this one not be written: what is
    // downloaded is always the choice just made.
    const std::wstring& ResultFile() const { return m_resultFile; }
    void ShowModal(HWND owner);

private:
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCommand(int id, int code, HWND control) override;

    void LoadLists();
    void LoadKind(const ParameterSource& source, const ParameterKind& kind);
    void AddLine(const ParameterLine& line);
    void CopySelection() const;
    bool OnListKey(int key) const;
    void Accept();
    std::optional<ParameterSubset> CollectChosen();

    ui::Layout m_layout;
    SIZE m_smallest{};
    std::wstring m_sourceFile;
    std::wstring m_programId;
    std::wstring m_resultFile;
    bool m_busy = false;  // loading, or writing
    bool m_cancelled = false;
    bool m_accepted = false;
};

}  // namespace quillon
