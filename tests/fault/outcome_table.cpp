#include "fault/outcome_table.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace quillon::test {

namespace {

struct Row {
    std::string operation;
    std::string fault;
    long calls = 0;
    std::array<int, 4> outcomes{};
};

class Table : public ::testing::Environment {
public:
    void TearDown() override {
        if (m_rows.empty()) return;
        std::printf("\n| operation | fault | calls | runs | as without | quiet | told | code |\n");
        std::printf("|---|---|---|---|---|---|---|---|\n");
        int all = 0;
        for (const Row& row : m_rows) {
            int runs = 0;
            for (const int count : row.outcomes) runs += count;
            all += runs;
            std::printf("| %s | %s | %ld | %d | %d | %d | %d | %d |\n", row.operation.c_str(),
                        row.fault.c_str(), row.calls, runs, row.outcomes[0], row.outcomes[1],
                        row.outcomes[2], row.outcomes[3]);
        }
        std::printf("\n%d runs with a fault\n", all);
    }

    Row& RowOf(const std::string& operation, const std::string& fault) {
        for (Row& row : m_rows)
            if (row.operation == operation && row.fault == fault) return row;
        return m_rows.emplace_back(Row{operation, fault, 0, {}});
    }

private:
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
