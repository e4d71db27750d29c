#include "model/frmCPDownload.h"

#include <utility>

#include "com/error.h"
#include "com/module.h"
#include "model/ParameterSource.h"
#include "model/frmCPDownload_ids.h"
#include "plugin/code_page.h"
#include "plugin/whole_file.h"
#include "ui/pump.h"

namespace quillon {

namespace {

const wchar_t* const kTemporaryFile = L"\\temp.cps";

LRESULT Tell(HWND list, UINT message, std::int32_t line) {
    return SendMessageW(list, message, static_cast<WPARAM>(line), 0);
}

std::int32_t LineCount(HWND list) {
    return static_cast<std::int32_t>(Tell(list, LB_GETCOUNT, 0));
}

bool IsSelected(HWND list, std::int32_t line) {
    return Tell(list, LB_GETSEL, line) > 0;
}

void Select(HWND list, std::int32_t line, bool selected) {
    SendMessageW(list, LB_SETSEL, selected ? TRUE : FALSE, line);
}

std::wstring LineText(HWND list, std::int32_t line) {
    const LRESULT length = Tell(list, LB_GETTEXTLEN, line);
    if (length == LB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(line),
                 reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

std::int32_t Append(HWND list, const std::wstring& text) {
    return static_cast<std::int32_t>(
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
}

}  // namespace

void frmCPDownload::ShowModal(HWND owner) {
    RunModal(IDD_CPDOWNLOAD, owner);
    // Its loop also ends when the owner goes or the host quits, with any result.
    if (!m_accepted) m_resultFile.clear();
}

bool frmCPDownload::OnInit() {
    m_layout.Start(Handle());
    m_layout.Add(IDC_LSTCP_CHOICE, ui::kFill);
    for (const int id : {IDOK, IDCANCEL}) m_layout.Add(id, ui::kRight | ui::kBottom);
    RECT whole{};
    GetWindowRect(Handle(), &whole);
    m_smallest = {whole.right - whole.left, whole.bottom - whole.top};
    m_busy = true;
    SendMessageW(Item(IDC_LSTCP_CHOICE), WM_SETREDRAW, FALSE, 0);
    // A list that lacks lines for want of memory would be downloaded for the whole one: then there
    // is no dialog.
    com::InFull([&] { com::Quietly([&] { LoadLists(); }); });
    SendMessageW(Item(IDC_LSTCP_CHOICE), WM_SETREDRAW, TRUE, 0);
    Tell(Item(IDC_LSTCP_CHOICE), LB_SETCARETINDEX, 0);
    m_busy = false;
    return true;
}

void frmCPDownload::LoadLists() {
    m_resultFile = com::ModuleFolder() + kTemporaryFile;
    if (!DeleteWholeFile(m_resultFile)) m_resultFile.clear();
    const ParameterSource source(m_sourceFile);
    m_programId = source.Value(kGeneralSection, kProgramIdKey);
    for (const ParameterKind* kind : kParameterKinds) LoadKind(source, *kind);
}

void frmCPDownload::LoadKind(const ParameterSource& source, const ParameterKind& kind) {
    const auto read = [&](const std::wstring& section, const std::wstring& key) {
        return source.Value(section, key);
    };
    const std::int32_t count =
        EntryCount(source.Value(kind.list, kTotalNumber), source.Sections(), kind);
    for (std::int32_t n = 0; n < count; ++n) {
        ui::PumpMessages();
        if (!Handle() || m_cancelled) return;
        AddLine(ReadParameter(read, kind, n));
    }
}

void frmCPDownload::AddLine(const ParameterLine& line) {
    const HWND choice = Item(IDC_LSTCP_CHOICE);
    const HWND hidden = Item(IDC_LSTCP_HIDDEN);
    const std::int32_t shown = Append(choice, line.name);
    const std::int32_t kept = Append(hidden, line.hidden);
    // Both or none: the lists go line by line.
    if (shown < 0 || kept < 0) {
        if (shown >= 0) Tell(choice, LB_DELETESTRING, shown);
        if (kept >= 0) Tell(hidden, LB_DELETESTRING, kept);
        return;
    }
    if (!line.selected) return;
    Select(choice, shown, true);
    Select(hidden, kept, true);
}

std::optional<INT_PTR> frmCPDownload::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            m_layout.Apply();
            return TRUE;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {m_smallest.cx, m_smallest.cy};
            return TRUE;
        case WM_VKEYTOITEM:
            return OnListKey(LOWORD(wParam)) ? -2 : -1;
        default:
            return Dialog::OnMessage(message, wParam, lParam);
    }
}

bool frmCPDownload::OnCommand(int id, int code, HWND) {
    switch (id) {
        case IDC_LSTCP_CHOICE:
            if (code == LBN_SELCHANGE) CopySelection();
            return true;
        case IDOK:
            if (!m_busy) Accept();
            return true;
        case IDCANCEL:
            m_cancelled = true;
            End(IDCANCEL);
            return true;
        default:
            return false;
    }
}

void frmCPDownload::CopySelection() const {
    const HWND choice = Item(IDC_LSTCP_CHOICE);
    const HWND hidden = Item(IDC_LSTCP_HIDDEN);
    const std::int32_t lines = LineCount(choice);
    for (std::int32_t line = 0; line < lines; ++line) {
        const bool selected = IsSelected(choice, line);
        if (selected != IsSelected(hidden, line)) Select(hidden, line, selected);
    }
}

// True when the key is used up. Not every list box tells when the space bar has turned a line.
bool frmCPDownload::OnListKey(int key) const {
    const HWND choice = Item(IDC_LSTCP_CHOICE);
    const auto line = static_cast<std::int32_t>(Tell(choice, LB_GETCARETINDEX, 0));
    if (key == 'A' && GetKeyState(VK_CONTROL) < 0)
        Select(choice, -1, true);
    else if (key == VK_SPACE && line < LineCount(choice))
        Select(choice, line, !IsSelected(choice, line));
    else
        return false;
    CopySelection();
    return true;
}

void frmCPDownload::Accept() {
    m_busy = true;
    const std::wstring file = std::exchange(m_resultFile, {});
    com::Quietly([&] {
        const auto chosen = CollectChosen();
        if (chosen && !file.empty() && WriteWholeFile(file, Narrow(chosen->Text())))
            m_resultFile = file;
    });
    m_busy = false;
    if (!Handle() || m_cancelled) return;
    m_accepted = true;
    End(IDOK);
}

// nullopt when the dialog was cancelled, or went, meanwhile.
std::optional<ParameterSubset> frmCPDownload::CollectChosen() {
    ParameterSubset chosen(m_programId);
    const HWND hidden = Item(IDC_LSTCP_HIDDEN);
    const std::int32_t lines = LineCount(hidden);
    for (std::int32_t line = 0; line < lines; ++line) {
        ui::PumpMessages();
        if (!Handle() || m_cancelled) return std::nullopt;
        if (IsSelected(hidden, line)) chosen.Add(LineText(hidden, line));
    }
    return chosen;
}

}  // namespace quillon
