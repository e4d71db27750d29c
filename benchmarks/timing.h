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

// How many samples each timed figure rests on.
inline constexpr int kSamples = 9;

// What the rounds gave: kSamples ratios and as many differences. Each is the median within some
// rounds, which a machine that grows slower meanwhile does not shift.
struct Comparison {
    double subject = 0;  // median, in seconds
    double floor = 0;
    std::vector<double> ratios;
    std::vector<double> differences;  // of the subject's seconds and the floor's
};

// Runs subject, floor, subject, floor, ...; each says how many seconds it took, so that what it
// prepares and clears up need not count. The first round of both warms up and is dropped. `rounds`
// is rounded up to a multiple of kSamples.
Comparison Compare(int rounds, const std::function<double()>& subject,
                   const std::function<double()>& floor);

}  // namespace quillon::benchmarks
