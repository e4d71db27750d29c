#include "timing.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace quillon::benchmarks {

namespace {

double Frequency() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(frequency.QuadPart);
}

// `values` sorted; `part` 0.25 is the lower quartile.
double Quantile(const std::vector<double>& values, double part) {
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1) + 0.5)];
}

}  // namespace

double Now() {
    static const double frequency = Frequency();
    LARGE_INTEGER count;
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / frequency;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

Comparison Compare(int rounds, const std::function<double()>& subject,
                   const std::function<double()>& floor) {
    subject();
    floor();
    std::vector<double> subjects;
    std::vector<double> floors;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        subjects.push_back(subject());
        floors.push_back(floor());
        ratios.push_back(subjects.back() / floors.back());
    }
    std::sort(ratios.begin(), ratios.end());
    return {Median(subjects), Median(floors), Median(ratios), Quantile(ratios, 0.25),
            Quantile(ratios, 0.75)};
}

}  // namespace quillon::benchmarks
