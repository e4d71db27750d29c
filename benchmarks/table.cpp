#include "table.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace quillon::benchmarks {

namespace {

struct Unit {
    double seconds;
    const char* name;
};

constexpr Unit kUnits[] = {{1, " s"}, {1e-3, " ms"}, {1e-6, " µs"}, {1e-9, " ns"}};

// Three digits in the unit that suits.
std::string TimeText(double seconds) {
    const Unit* unit = kUnits;
    while (unit + 1 != std::end(kUnits) && seconds < unit->seconds) ++unit;
    const double number = seconds / unit->seconds;
    return Decimals(number, number < 10 ? 2 : number < 100 ? 1 : 0) + unit->name;
}

}  // namespace

std::string Decimals(double number, int digits) {
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, digits);
    return end.ec == std::errc() ? std::string(text, end.ptr) : std::string("?");
}

void Table::Add(std::string what, std::string against, double limit, const Comparison& measured,
                int pieces) {
    Add(std::move(what), std::move(against),
        Decimals(measured.ratio, 2) + " × ± " + Decimals(measured.deviation, 2),
        Decimals(limit, 1) + " ×", !measured.Breaks(limit),
        TimeText(measured.subject / pieces) + " to " + TimeText(measured.floor / pieces));
}

void Table::Add(std::string what, std::string against, std::string measured, std::string limit,
                bool holds, std::string remark) {
    m_rows.push_back({std::move(what), std::move(against), std::move(measured), std::move(limit),
                      holds, std::move(remark)});
}

std::string Table::Text() const {
    std::string text =
        "| what | against | measured | at most | | detail |\n|---|---|---|---|---|---|\n";
    for (const Row& row : m_rows)
        text += "| " + row.what + " | " + row.against + " | " + row.measured + " | " + row.limit +
                " | " + (row.holds ? "ok" : "**over**") + " | " + row.remark + " |\n";
    for (const std::string& part : m_parts) text += "\n" + part;
    return text;
}

bool Table::Holds() const {
    return std::all_of(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.holds; });
}

}  // namespace quillon::benchmarks
