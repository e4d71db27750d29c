// quillon_benchmarks [MEASURE...]: takes the named measures, or all, and prints their table.
// Exit code 0 when they were taken, whatever they say; 1 when one could not be; 2: wrong arguments.
#include <cstdio>
#include <exception>
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
    {L"memory", MeasureMemory},     {L"forwarding", MeasureForwarding},
    {L"profile", MeasureProfile},   {L"export", MeasureExport},
    {L"download", MeasureDownload}, {L"module", MeasureModuleFile},
    {L"editors", MeasureEditors},
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

void Complain(const std::string& what) {
    std::fputs(("quillon_benchmarks: " + what + "\n").c_str(), stderr);
}

bool Asked(const Measure& measure, int count, wchar_t** names) {
    for (int i = 1; i < count; ++i)
        if (measure.name == names[i]) return true;
    return count <= 1;
}

int Run(int count, wchar_t** names) {
    try {
        const Session session;
        Table table;
        for (const Measure& measure : kMeasures)
            if (Asked(measure, count, names)) measure.take(session, table);
        std::fputs(table.Text().c_str(), stdout);
        return 0;
    } catch (const com::Error& error) {
        Complain("a COM call failed with " + HexText(error.Result()));
    } catch (const std::exception& error) {
        Complain(error.what());
    }
    return 1;
}

}  // namespace

int wmain(int count, wchar_t** names) {
    for (int i = 1; i < count; ++i) {
        if (Find(names[i])) continue;
        Complain("the measures are memory, forwarding, profile, export, download, module, editors");
        return 2;
    }
    return Run(count, names);
}
