// Timing two things in turns, so that what disturbs the machine disturbs both.
#pragma once

#include <functional>
#include <vector>

namespace quillon::benchmarks {

// A point of time in seconds, of use for differences alone.
double Now();

// Seconds that one run takes.
template <class F>
double Seconds(F&& run) {
    const double start = Now();
    run();
    return Now() - start;
}

// The middle one of an odd number of values, the mean of the middle two of an even number. There
// must be at least one.
double Median(std::vector<double> values);

// What the rounds gave. The ratio is the median of the ratios within each round, which a machine
// that grows slower meanwhile does not shift; the quartiles show how restless it was.
struct Comparison {
    double subject = 0;  // median, in seconds
    double floor = 0;
    double ratio = 0;
    double lowerQuartile = 0;  // of the ratios
    double upperQuartile = 0;
};

// Runs subject, floor, subject, floor, ...; each says how many seconds it took, so that what it
// prepares and clears up need not count. The first round of both warms up and is dropped.
Comparison Compare(int rounds, const std::function<double()>& subject,
                   const std::function<double()>& floor);

}  // namespace quillon::benchmarks
