#include "timing.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillon::benchmarks {

namespace {

double Frequency() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(frequency.QuadPart);
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
    Comparison measured;
    const int roundsOfSample = (rounds + kSamples - 1) / kSamples;
    for (int sample = 0; sample < kSamples; ++sample) {
        std::vector<double> ratios;
        std::vector<double> differences;
        for (int round = 0; round < roundsOfSample; ++round) {
            subjects.push_back(subject());
            floors.push_back(floor());
            ratios.push_back(subjects.back() / floors.back());
            differences.push_back(subjects.back() - floors.back());
        }
        measured.ratios.push_back(Median(std::move(ratios)));
        measured.differences.push_back(Median(std::move(differences)));
    }
    measured.subject = Median(std::move(subjects));
    measured.floor = Median(std::move(floors));
    return measured;
}

}  // namespace quillon::benchmarks
