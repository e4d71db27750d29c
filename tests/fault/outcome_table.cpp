#include "fault/outcome_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <memory>
#include <numeric>
#include <vector>

namespace quillon::test {

namespace {

constexpr const char* kOutcomes = "runs | as without | quiet | told | code |";
constexpr const char* kOffers[] = {"host call, once", "wrong answer", "platform call, once",
                                   "no memory"};

struct Row {
    std::string operation;
    std::string fault;
    long calls = 0;
    std::array<int, 4> outcomes{};
};

int RunsOf(const Row& row) {
    return std::accumulate(row.outcomes.begin(), row.outcomes.end(), 0);
}

void PrintOutcomes(const Row& row) {
    std::printf(" %d |", RunsOf(row));
    for (const int count : row.outcomes) std::printf(" %d |", count);
    std::printf("\n");
}

// All that was done to one operation, and how many faults of the kinds that differ it offered.
struct Sum {
    Row row;
    std::array<long, std::size(kOffers)> offers{};

    void Add(const Row& other) {
        for (std::size_t i = 0; i < row.outcomes.size(); ++i) row.outcomes[i] += other.outcomes[i];
        const auto offer = std::ranges::find(kOffers, other.fault);
        if (offer != std::end(kOffers)) offers[offer - kOffers] = other.calls;
    }
};

class Table : public ::testing::Environment {
public:
    void TearDown() override {
        if (m_rows.empty()) return;
        PrintByFault();
        PrintByOperation();
    }

    Row& RowOf(const std::string& operation, const std::string& fault) {
        for (Row& row : m_rows)
            if (row.operation == operation && row.fault == fault) return row;
        return m_rows.emplace_back(Row{operation, fault, 0, {}});
    }

private:
    void PrintByFault() const {
        std::printf("\n| operation | fault | offered | %s\n", kOutcomes);
        std::printf("|---|---|---|---|---|---|---|---|\n");
        for (const Row& row : m_rows) {
            std::printf("| %s | %s | %ld |", row.operation.c_str(), row.fault.c_str(), row.calls);
            PrintOutcomes(row);
        }
    }

    void PrintByOperation() const {
        std::vector<Sum> sums;
        Sum all{{"all", {}}};
        for (const Row& row : m_rows) {
            if (sums.empty() || sums.back().row.operation != row.operation)
                sums.push_back({{row.operation, {}}});
            sums.back().Add(row);
            all.Add(row);
        }
        std::printf(
            "\n| operation | host calls | wrong answers | platform calls | allocations | %s\n",
            kOutcomes);
        std::printf("|---|---|---|---|---|---|---|---|---|---|\n");
        for (const Sum& sum : sums) {
            std::printf("| %s |", sum.row.operation.c_str());
            for (const long offer : sum.offers) std::printf(" %ld |", offer);
            PrintOutcomes(sum.row);
        }
        std::printf("\n%d runs with a fault\n", RunsOf(all.row));
    }

    std::vector<Row> m_rows;
};

// GoogleTest owns it.
Table* const g_table =
    static_cast<Table*>(::testing::AddGlobalTestEnvironment(std::make_unique<Table>().release()));

}  // namespace

void CountOutcome(const std::string& operation, const std::string& fault, long calls,
                  OutcomeKind outcome) {
    Row& row = g_table->RowOf(operation, fault);
    row.calls = calls;
    ++row.outcomes[static_cast<std::size_t>(outcome)];
}

}  // namespace quillon::test
