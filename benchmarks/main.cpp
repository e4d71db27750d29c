// quillon_benchmarks [MEASURE...]: takes the named measures, or all, and prints their figures.
// quillon_benchmarks file PATH: writes the application file that `profile` loads.
// Judging the figures is left to scripts/benchmark_tables.py.
// Exit code 0: done; 1: something could not be done; 2: wrong arguments.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "com/error.h"
#include "measures.h"

namespace {

namespace com = quillon::com;
using namespace quillon::benchmarks;

struct Measure {
    std::wstring_view name;
    void (*take)(const Session& session, Table& table);
};

// Memory first: what the others leave in the heaps would hide a small leak.
constexpr Measure kMeasures[] = {
    {L"memory", MeasureMemory},
    {L"forwarding", MeasureForwarding},
    {L"profile", MeasureProfile},
    {L"export", MeasureExport},
    {L"download", MeasureDownload},
    {L"module", MeasureModuleFile},
    {L"parameters", MeasureParameters},
    {L"editors", MeasureEditors},
    {L"script", MeasureScript},
    {L"growth", MeasureGrowth},
    {L"window-calls", MeasureWindowCalls},
    {L"window-opening", MeasureWindowOpening},
    {L"window-ticks", MeasureWindowTicks},
    {L"window-loops", MeasureWindowLoops},
    {L"window-rounds", MeasureWindowRounds},
};

const Measure* Find(std::wstring_view name) {
    for (const Measure& measure : kMeasures)
        if (measure.name == name) return &measure;
    return nullptr;
}

std::string HexText(HRESULT result) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += kDigits[(static_cast<unsigned long>(result) >> shift) & 0xF];
    return text;
}

void Say(const std::string& what) {
    std::fputs(("quillon_benchmarks: " + what + "\n").c_str(), stderr);
}

bool Asked(const Measure& measure, int count, wchar_t** names) {
    for (int i = 1; i < count; ++i)
        if (measure.name == names[i]) return true;
    return count <= 1;
}

int TakeMeasures(int count, wchar_t** names) {
    const Session session;
    Table table;
    for (const Measure& measure : kMeasures) {
        if (!Asked(measure, count, names)) continue;
        const double seconds = Seconds([&] { measure.take(session, table); });
        Say(std::string(measure.name.begin(), measure.name.end()) + " took " + TimeText(seconds));
    }
    std::fputs(table.Text().c_str(), stdout);
    return 0;
}

int WriteFile(const std::filesystem::path& path) {
    const Session session;
    const Room room = session.OpenRoom(kLoadedRoom);
    std::filesystem::copy_file(session.ExportApplication(room, L"written.app"), path,
                               std::filesystem::copy_options::overwrite_existing);
    return 0;
}

bool AsksForFile(int count, wchar_t** words) {
    return count == 3 && std::wstring_view(words[1]) == L"file";
}

int Run(int count, wchar_t** words) {
    try {
        return AsksForFile(count, words) ? WriteFile(words[2]) : TakeMeasures(count, words);
    } catch (const com::Error& error) {
        Say("a COM call failed with " + HexText(error.Result()));
    } catch (const std::exception& error) {
        Say(error.what());
    }
    return 1;
}

}  // namespace

int wmain(int count, wchar_t** words) {
    for (int i = 1; i < count && !AsksForFile(count, words); ++i) {
        if (Find(words[i])) continue;
        std::string known = "the measures are";
        for (const Measure& measure : kMeasures)
            known += " " + std::string(measure.name.begin(), measure.name.end());
        Say(known);
        return 2;
    }
    return Run(count, words);
}
