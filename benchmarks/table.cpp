#include "table.h"

#include <charconv>
#include <iterator>

namespace quillon::benchmarks {

namespace {

struct Unit {
    double seconds;
    const char* name;
};

constexpr Unit kUnits[] = {{1, " s"}, {1e-3, " ms"}, {1e-6, " µs"}, {1e-9, " ns"}};

// More than any reader wants, so that rounding decides nothing.
constexpr int kSampleDigits = 6;

std::string SampleTexts(const std::vector<double>& samples) {
    std::string text;
    for (const double sample : samples)
        text += (text.empty() ? "" : " ") + Decimals(sample, kSampleDigits);
    return text;
}

}  // namespace

std::string TimeText(double seconds) {
    const Unit* unit = kUnits;
    while (unit + 1 != std::end(kUnits) && seconds < unit->seconds) ++unit;
    const double number = seconds / unit->seconds;
    return Decimals(number, number < 10 ? 2 : number < 100 ? 1 : 0) + unit->name;
}

std::string Decimals(double number, int digits) {
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, digits);
    return end.ec == std::errc() ? std::string(text, end.ptr) : std::string("?");
}

void Table::AddRatio(std::string what, std::string against, double limit,
                     const Comparison& measured, int pieces) {
    Add({std::move(what), std::move(against), measured.ratios, "×", limit,
         TimeText(measured.subject / pieces) + " to " + TimeText(measured.floor / pieces)});
}

std::string Table::Text() const {
    std::string text =
        "| what | against | samples | unit | at most | detail |\n|---|---|---|---|---|---|\n";
    for (const Figure& row : m_figures)
        text += "| " + row.what + " | " + row.against + " | " + SampleTexts(row.samples) + " | " +
                row.unit + " | " + (row.limit ? Decimals(*row.limit, 2) : "") + " | " + row.detail +
                " |\n";
    for (const std::string& part : m_parts) text += "\n" + part;
    return text;
}

}  // namespace quillon::benchmarks
