// The bench window's two lists of what the host was asked: members with their counts, and the calls
// and events one by one.
#pragma once

#include <windows.h>
//
#include <commctrl.h>

#include <deque>
#include <map>
#include <string>

#include "com/ptr.h"
#include "output.h"
#include "quorvexsim_h.h"

namespace quorvex::bench {

class LogView {
public:
    explicit LogView(ISimulator& simulator) : m_simulator(simulator) {}

    // Both are report lists without columns; `log` asks for its texts (LVS_OWNERDATA).
    void Attach(HWND log, HWND calls);
    // The newest kLines are kept.
    void Add(std::wstring text);
    // Takes what the host recorded since the last time, and the counts.
    void Refresh();
    // What was shown so far is forgotten; counts begin at 0.
    void Empty();
    // Columns take the lists' width.
    void FitColumns() const;

    // LVN_GETDISPINFO of the log list.
    void Answer(LVITEMW& item) const;

    static constexpr std::size_t kLines = 5000;

private:
    struct Line {
        std::wstring time;
        std::wstring text;
    };

    void Append(std::wstring text);
    void ShowLines();
    void RefreshCounts();
    std::map<std::wstring, long> Counts() const;

    ISimulator& m_simulator;
    HWND m_log = nullptr;
    HWND m_calls = nullptr;
    std::deque<Line> m_lines;
    long m_next = 0;                        // number of the first call not taken yet
    long m_nextWrite = 0;                   // and of the first write
    std::map<std::wstring, long> m_before;  // counts that were emptied
    std::map<std::wstring, long> m_shown;
};

// Sets up a report list of the window: full rows, and columns with these headers.
void PrepareList(HWND list, std::initializer_list<const wchar_t*> headers);

}  // namespace quorvex::bench
