// The table of results, in Markdown.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "timing.h"

namespace quillon::benchmarks {

class Table {
public:
    // A ratio, with its limit and the two times. It holds unless it breaks the limit by more than
    // three deviations. A time is given for one of `pieces` equal pieces: the calls of a batch, the
    // points of a file.
    void Add(std::string what, std::string against, double limit, const Comparison& measured,
             int pieces);
    // Any other figure, in words; `holds` tells whether it keeps within the limit.
    void Add(std::string what, std::string against, std::string measured, std::string limit,
             bool holds, std::string remark);

    // A table of another kind, in Markdown, printed behind this one.
    void AddPart(std::string text) { m_parts.push_back(std::move(text)); }

    std::string Text() const;
    // Whether every row keeps within its limit.
    bool Holds() const;

private:
    struct Row {
        std::string what;
        std::string against;
        std::string measured;
        std::string limit;
        bool holds;
        std::string remark;
    };
    std::vector<Row> m_rows;
    std::vector<std::string> m_parts;
};

// "1.27"; the locale has no say.
std::string Decimals(double number, int digits);

}  // namespace quillon::benchmarks
