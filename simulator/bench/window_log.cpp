#include "window_log.h"

#include <algorithm>
#include <charconv>

#include "com/text.h"
#include "script_reader.h"
#include "text.h"

namespace quorvex::bench {
namespace {

std::wstring TimeText() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::wstring text;
    for (const int part : {int{now.wHour}, int{now.wMinute}, int{now.wSecond}}) {
        if (!text.empty()) text += L':';
        if (part < 10) text += L'0';
        text += std::to_wstring(part);
    }
    return text;
}

void SetCell(HWND list, int row, int column, const std::wstring& text) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int ClientWidth(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client.right;
}

int TextWidth(HWND list, const wchar_t* text) {
    return static_cast<int>(
        SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text)));
}

// The first column as wide as the text, the second takes what it leaves.
void FitTwoColumns(HWND list, const wchar_t* widest) {
    constexpr int kCellMargin = 16;
    const int first = TextWidth(list, widest) + kCellMargin;
    // The room of a scroll bar is left free, so that its coming makes no second one.
    const int second =
        ClientWidth(list) - first -
        ((GetWindowLongW(list, GWL_STYLE) & WS_VSCROLL) ? 0 : GetSystemMetrics(SM_CXVSCROLL));
    ListView_SetColumnWidth(list, 0, first);
    ListView_SetColumnWidth(list, 1, std::max(second, first));
}

}  // namespace

void PrepareList(HWND list, std::initializer_list<const wchar_t*> headers) {
    ListView_SetExtendedListViewStyle(list,
                                      LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    int place = 0;
    for (const wchar_t* const header : headers) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_SUBITEM;
        column.pszText = const_cast<wchar_t*>(header);
        column.iSubItem = place;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place++),
                     reinterpret_cast<LPARAM>(&column));
    }
}

void LogView::Attach(HWND log, HWND calls) {
    m_log = log;
    m_calls = calls;
    PrepareList(m_log, {L"Time", L"Call or event"});
    PrepareList(m_calls, {L"Calls", L"Member"});
    FitColumns();
}

void LogView::FitColumns() const {
    FitTwoColumns(m_log, L"00:00:00");
    FitTwoColumns(m_calls, L"0000000");
}

void LogView::Append(std::wstring text) {
    if (m_lines.size() == kLines) m_lines.pop_front();
    m_lines.push_back({TimeText(), std::move(text)});
}

void LogView::Add(std::wstring text) {
    Append(std::move(text));
    ShowLines();
}

// Goes along with the newest line, unless the reader has scrolled back.
void LogView::ShowLines() {
    const int shown = ListView_GetItemCount(m_log);
    const int top = ListView_GetTopIndex(m_log);
    const bool atEnd = shown == 0 || top + ListView_GetCountPerPage(m_log) >= shown;
    const auto count = static_cast<int>(m_lines.size());
    ListView_SetItemCountEx(m_log, count, LVSICF_NOSCROLL);
    if (atEnd && count > 0) ListView_EnsureVisible(m_log, count - 1, FALSE);
}

void LogView::Refresh() {
    com::Bstr lines;
    com::Check(m_simulator.LogFrom(m_next, lines.Out()));
    com::Check(m_simulator.get_Logged(&m_next));
    bool more = false;
    for (auto& line : SplitLines(lines.View())) {
        if (line.empty()) continue;
        Append(std::move(line));
        more = true;
    }
    com::Check(m_simulator.WrittenFrom(m_nextWrite, lines.Out()));
    com::Check(m_simulator.get_Written(&m_nextWrite));
    for (const auto& line : SplitLines(lines.View())) {
        if (line.empty()) continue;
        Append(L"Written: " + line);
        more = true;
    }
    if (more) ShowLines();
    RefreshCounts();
}

std::map<std::wstring, long> LogView::Counts() const {
    com::Bstr lines;
    com::Check(m_simulator.get_Counts(lines.Out()));
    std::map<std::wstring, long> counts;
    for (const auto& line : SplitLines(lines.View())) {
        const auto blank = line.find(L' ');
        if (blank == std::wstring::npos) continue;
        const std::string digits = Utf8FromWide(line.substr(0, blank));
        long count = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), count);
        counts[line.substr(blank + 1)] = count;
    }
    return counts;
}

void LogView::RefreshCounts() {
    std::map<std::wstring, long> counts = Counts();
    for (const auto& [member, before] : m_before) counts[member] -= before;
    std::erase_if(counts, [](const auto& entry) { return entry.second <= 0; });
    if (counts == m_shown) return;
    const bool sameMembers =
        counts.size() == m_shown.size() &&
        std::equal(counts.begin(), counts.end(), m_shown.begin(),
                   [](const auto& a, const auto& b) { return a.first == b.first; });
    if (!sameMembers) {
        SendMessageW(m_calls, WM_SETREDRAW, FALSE, 0);
        ListView_DeleteAllItems(m_calls);
    }
    int row = 0;
    for (const auto& [member, count] : counts) {
        if (!sameMembers) {
            LVITEMW item{};
            item.iItem = row;
            SendMessageW(m_calls, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            SetCell(m_calls, row, 1, member);
        }
        if (!sameMembers || m_shown[member] != count)
            SetCell(m_calls, row, 0, std::to_wstring(count));
        ++row;
    }
    if (!sameMembers) SendMessageW(m_calls, WM_SETREDRAW, TRUE, 0);
    m_shown = std::move(counts);
    FitColumns();
}

void LogView::Empty() {
    com::Check(m_simulator.get_Logged(&m_next));
    com::Check(m_simulator.get_Written(&m_nextWrite));
    m_before = Counts();
    m_lines.clear();
    ShowLines();
    RefreshCounts();
}

void LogView::Answer(LVITEMW& item) const {
    if (!(item.mask & LVIF_TEXT) || item.iItem < 0 || item.cchTextMax <= 0 ||
        static_cast<std::size_t>(item.iItem) >= m_lines.size())
        return;
    const Line& line = m_lines[static_cast<std::size_t>(item.iItem)];
    const std::wstring& text = item.iSubItem == 0 ? line.time : line.text;
    const auto length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::copy_n(text.begin(), length, item.pszText);
    item.pszText[length] = L'\0';
}

}  // namespace quorvex::bench
