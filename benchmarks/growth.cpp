// How the cost of a point grows with the number of points.
#include <string>
#include <vector>

#include "com/error.h"
#include "com/text.h"
#include "loading.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kSizes[] = {10, 100, 1'000, 10'000, 100'000};
constexpr int kRounds = 3;
// Above this size one round has to do, after the one that makes the file.
constexpr int kLargeSize = 10'000;
// No size is begun that would take longer, in seconds, if a point cost twice what it did before.
constexpr double kLongest = 300;

// Median seconds of one action at one size, 0 where it was not taken.
struct Costs {
    double saving = 0;
    double loading = 0;
    double downloading = 0;
};

double SecondsOfDownload(const Room& room, const std::wstring& file) {
    const com::Bstr path(file);
    long ignored = 0;
    return Seconds(
        [&] { com::Check(room.subject.As<IDeviceEx>()->AppDownload(path.Get(), &ignored)); });
}

Costs CostsOf(const Session& session, int points) {
    const Room room = session.OpenRoom({.variables = points, .allConfiguration = true});
    const std::wstring file = session.ExportApplication(room, L"growth.app");
    std::vector<double> saving;
    std::vector<double> loading;
    std::vector<double> downloading;
    for (int round = 0; round < (points > kLargeSize ? 1 : kRounds); ++round) {
        saving.push_back(Seconds([&] { session.ExportApplication(room, L"growth.app"); }));
        loading.push_back(SecondsOfLoading(session, room, file));
        downloading.push_back(SecondsOfDownload(room, file));
    }
    return {Median(saving), Median(loading), Median(downloading)};
}

bool MayTakeTooLong(const Costs& costs, int from, int to) {
    const double seconds = 2 * costs.saving + costs.loading + costs.downloading;
    return 2 * seconds * to / from > kLongest;
}

std::string Cell(double seconds, int points) {
    return Decimals(seconds / points * 1e6, 1) + " µs";
}

}  // namespace

void MeasureGrowth(const Session& session, Table& table) {
    std::string text =
        "| points | export, a point | load, a point | download with its load, a point |\n"
        "|---|---|---|---|\n";
    Costs costs;
    int before = 0;
    for (const int points : kSizes) {
        text += "| " + std::to_string(points) + " | ";
        if (before != 0 && MayTakeTooLong(costs, before, points)) {
            text += "not taken: it might last longer than " + Decimals(kLongest, 0) +
                    " s | not taken | not taken |\n";
            continue;
        }
        costs = CostsOf(session, points);
        before = points;
        text += Cell(costs.saving, points) + " | " + Cell(costs.loading, points) + " | " +
                Cell(costs.downloading, points) + " |\n";
    }
    table.AddPart(std::move(text));
}

}  // namespace quillon::benchmarks
