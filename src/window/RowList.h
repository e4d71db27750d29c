// A list view of the device window: columns "Item" and "Value", filled from row records.
#pragma once

#include <windows.h>
//
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "window/list_rows.h"

namespace quillon {

// Drives a list-view control that its dialog owns. Each item carries its record's place by lParam,
// so two equal records are two rows. Places count from 0.
class RowList {
public:
    // Sets up columns and styles of an empty control.
    void Attach(HWND control);
    void SetImages(HIMAGELIST images);

    void Clear();
    // Adds rows at the end, with redraw off.
    void Append(std::vector<ListRow> rows);
    const std::vector<ListRow>& Rows() const { return m_rows; }

    // Rewrites one cell, and only when its text differs. True when it was rewritten.
    bool SetValue(std::size_t place, const std::wstring& value);
    // A stale row's value is shown greyed.
    void SetStale(std::size_t place, bool stale);
    void SetAllStale();
    // The row with a key; nullopt when there is none.
    std::optional<std::size_t> PlaceOf(std::wstring_view key) const;
    // The selected row that has the focus, else the first selected one.
    std::optional<std::size_t> Selected() const;
    void SelectNone() const;

    // Ctrl+C and Ctrl+A.
    void CopySelected() const;
    void SelectAll() const;

    // Column "Value" takes what "Item" leaves of the width.
    void FitColumns() const;
    // Answers NM_CUSTOMDRAW for greyed values.
    LRESULT CustomDraw(const NMLVCUSTOMDRAW& draw) const;

    HWND Control() const { return m_control; }

private:
    std::vector<ListRow> SelectedRows() const;

    HWND m_control = nullptr;
    std::vector<ListRow> m_rows;
    std::vector<char> m_stale;  // of each row; marking one takes no memory
};

}  // namespace quillon
