#include <stdexcept>
#include <string>

#include "com/module.h"
#include "measures.h"
#include "model/frmCPDownload.h"
#include "model/frmCPDownload_ids.h"
#include "plugin/MMain.h"
#include "plugin/whole_file.h"
#include "support/plugin_window.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 9;
constexpr int kEntries = 5'000;
// The system looks for every key from the start of the file, so that reading them all takes many
// seconds. Reading every 20th, spread evenly, tells as much.
constexpr int kStride = 20;

std::string FileOfParameters() {
    std::string text = "[GEN_INFO]\r\nProgramId=9FFFFF0512040410\r\n\r\n[NCIs]\r\nTotalNumber=" +
                       std::to_string(kEntries) + "\r\n";
    for (int n = 0; n < kEntries; ++n) {
        const std::string number = std::to_string(n);
        text.append("\r\n[NCI_").append(number).append("]\r\nIndex=").append(number);
        text.append("\r\nValue=100.0 1\r\nName=nciParameter").append(number);
        text.append("\r\nMark=1\r\n");
    }
    return text + "\r\n[CPs]\r\nTotalNumber=0\r\n";
}

bool IsForm(HWND window) {
    return IsWindowVisible(window) && GetDlgItem(window, IDC_LSTCP_CHOICE);
}

LRESULT g_lines = 0;

// Cancels the dialog as soon as it is shown.
void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    const HWND form = test::FirstThreadWindow(IsForm);
    if (!form) return;
    g_lines = SendMessageW(GetDlgItem(form, IDC_LSTCP_HIDDEN), LB_GETCOUNT, 0, 0);
    PostMessageW(form, WM_COMMAND, IDCANCEL, 0);
}

double SecondsOfSubject(const std::wstring& file) {
    g_lines = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, OnTimer);
    const double seconds = Seconds([&] {
        frmCPDownload form;
        form.SetSourceFile(file);
        form.ShowModal(nullptr);
    });
    KillTimer(nullptr, timer);
    if (g_lines != kEntries) throw std::runtime_error("the dialog did not list every entry");
    return seconds;
}

// Of reading all keys, by those of every 20th entry.
double SecondsOfFloor(const std::wstring& file) {
    std::size_t characters = 0;
    const double seconds = Seconds([&] {
        for (int n = kStride / 2; n < kEntries; n += kStride) {
            const std::wstring section = L"NCI_" + std::to_wstring(n);
            for (const wchar_t* key : {L"Index", L"Value", L"Name", L"Mark"})
                characters += ReadIniValue(file, section, key).size();
        }
    });
    if (characters < std::size_t{kEntries} / kStride * 4)
        throw std::runtime_error("the file was not read");
    return seconds * kStride;
}

}  // namespace

void MeasureParameters(const Session& session, Table& table) {
    const std::wstring file = (session.Folder() / L"parameters.cps").wstring();
    if (!WriteWholeFile(file, FileOfParameters()))
        throw std::runtime_error("the parameter file could not be written");
    table.AddRatio(
        "opening the parameter dialog with 5,000 entries, an entry",
        "reading the keys of the same entries one by one, by every 20th of them", 1.3,
        Compare(
            kRounds, [&] { return SecondsOfSubject(file); }, [&] { return SecondsOfFloor(file); }),
        kEntries);
}

}  // namespace quillon::benchmarks
