// The parameter dialog as its operator meets it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/frmCPDownload.h"
#include "model/frmCPDownload_ids.h"
#include "window/file_dialog.h"
#include "window/window_test.h"

namespace quillon::test {

// Acts on the next parameter dialog, once it is shown; the action has to end it. A dialog that
// never comes up fails the test. One at a time.
class ParameterForm {
public:
    explicit ParameterForm(std::function<void(HWND)> act);
    ParameterForm(const ParameterForm&) = delete;
    ParameterForm& operator=(const ParameterForm&) = delete;
    ~ParameterForm();

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);

    std::function<void(HWND)> m_act;
    UINT_PTR m_timer = 0;
    bool m_seen = false;
};

// The dialog on the screen; null when there is none.
HWND ShownParameterForm();

inline HWND Choice(HWND form) {
    return GetDlgItem(form, IDC_LSTCP_CHOICE);
}
inline HWND Hidden(HWND form) {
    return GetDlgItem(form, IDC_LSTCP_HIDDEN);
}
// Numbers of the selected lines.
std::vector<int> Selected(HWND list);
// Clicks a line with the mouse.
void Click(HWND list, int line);
void PressOk(HWND form);
void PressCancel(HWND form);

class ParameterTest : public WindowTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // The file that is chosen from, and the one that is made.
    const std::wstring& Source() const { return m_source; }
    std::wstring Temporary() const { return InFolder(L"temp.cps"); }
    void WriteSource(const std::string& text) { WriteBytes(m_source, text); }

    // Shows the dialog without a device window; gives its result file.
    std::wstring ShowForm(std::function<void(HWND)> act);
    // The same with a source of this text.
    std::wstring ShowForm(const std::string& source, std::function<void(HWND)> act);

private:
    std::wstring m_source;
};

// A section of a parameter file with its keys.
std::string Entry(const std::string& section, const std::string& value, const std::string& name,
                  const std::string& mark);
// A file of these entries, all of one kind.
std::string FileOfVariables(const std::vector<std::string>& entries);

}  // namespace quillon::test
