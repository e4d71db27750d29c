// The table of results, in Markdown.
#pragma once

#include <string>
#include <vector>

#include "timing.h"

namespace quillon::benchmarks {

class Table {
public:
    // A ratio, with its limit and the two times. A time is given for one of `pieces` equal pieces:
    // the calls of a batch, the points of a file.
    void Add(std::string what, std::string against, double limit, const Comparison& measured,
             int pieces);
    // Any other figure, in words; `holds` tells whether it keeps within the limit.
    void Add(std::string what, std::string against, std::string measured, std::string limit,
             bool holds, std::string remark);

    std::string Text() const;

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
};

// "1.27"; the locale has no say.
std::string Decimals(double number, int digits);

}  // namespace quillon::benchmarks
