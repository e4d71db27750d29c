// The figures of all measures, in Markdown.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "timing.h"

namespace quillon::benchmarks {

// One row: what was measured, and what scripts/benchmark_tables.py needs to judge it.
struct Figure {
    std::string what;
    std::string against;
    std::vector<double> samples;  // kSamples of what is timed, one of what is counted
    std::string unit;             // "×", "ms", "µs", "%", "KB"; empty for a count
    std::optional<double> limit;  // the most that is allowed
    std::string detail;
};

class Table {
public:
    void Add(Figure figure) { m_figures.push_back(std::move(figure)); }
    // The ratios of a comparison, with its two times as detail: each for one of `pieces` equal
    // pieces, the calls of a batch or the points of a file.
    void AddRatio(std::string what, std::string against, double limit, const Comparison& measured,
                  int pieces);

    // A table of another kind, in Markdown, printed behind this one.
    void AddPart(std::string text) { m_parts.push_back(std::move(text)); }

    std::string Text() const;

private:
    std::vector<Figure> m_figures;
    std::vector<std::string> m_parts;
};

// "1.27"; the locale has no say.
std::string Decimals(double number, int digits);
// Three digits in the unit that suits.
std::string TimeText(double seconds);

}  // namespace quillon::benchmarks
