#include "timing.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillon::benchmarks {

namespace {

double Frequency() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(frequency.QuadPart);
}

double DeviationFrom(double middle, std::vector<double> values) {
    for (double& value : values) value = std::fabs(value - middle);
    return Median(std::move(values));
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
    std::vector<double> samples;
    const int roundsOfSample = (rounds + kSamples - 1) / kSamples;
    for (int sample = 0; sample < kSamples; ++sample) {
        std::vector<double> ratios;
        for (int round = 0; round < roundsOfSample; ++round) {
            subjects.push_back(subject());
            floors.push_back(floor());
            ratios.push_back(subjects.back() / floors.back());
        }
        samples.push_back(Median(std::move(ratios)));
    }
    const double ratio = Median(samples);
    return {Median(std::move(subjects)), Median(std::move(floors)), ratio,
            DeviationFrom(ratio, std::move(samples))};
}

}  // namespace quillon::benchmarks
