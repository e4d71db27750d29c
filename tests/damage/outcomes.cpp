#include "damage/outcomes.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>

namespace quillon::test {

namespace {

using Counts = std::map<std::string, int>;

int Sum(const Counts& counts) {
    int sum = 0;
    for (const auto& [name, count] : counts) sum += count;
    return sum;
}

class Table : public ::testing::Environment {
public:
    void Count(const std::string& kind, const std::string& mutation, const std::string& outcome) {
        ++m_outcomes[kind][outcome];
        ++m_mutations[mutation][kind];
    }

    void TearDown() override {
        if (m_outcomes.empty()) return;
        std::printf("\n| files | outcome | count |\n|---|---|---|\n");
        int all = 0;
        for (const auto& [kind, outcomes] : m_outcomes) {
            all += Sum(outcomes);
            for (const auto& [outcome, count] : outcomes)
                std::printf("| %s | %s | %d |\n", kind.c_str(), outcome.c_str(), count);
        }
        PrintMutations();
        std::printf("\n%d damaged files\n", all);
    }

private:
    void PrintMutations() const {
        std::printf("\n| first damage |");
        for (const auto& [kind, outcomes] : m_outcomes) std::printf(" %s |", kind.c_str());
        std::printf("\n|---|");
        for (std::size_t i = 0; i < m_outcomes.size(); ++i) std::printf("---|");
        for (const auto& [mutation, kinds] : m_mutations) {
            std::printf("\n| %s |", mutation.c_str());
            for (const auto& [kind, outcomes] : m_outcomes) {
                const auto found = kinds.find(kind);
                std::printf(" %d |", found == kinds.end() ? 0 : found->second);
            }
        }
        std::printf("\n");
    }

    std::map<std::string, Counts> m_outcomes;
    std::map<std::string, Counts> m_mutations;
};

// GoogleTest owns it.
Table* const g_table =
    static_cast<Table*>(::testing::AddGlobalTestEnvironment(std::make_unique<Table>().release()));

}  // namespace

void CountDamaged(const std::string& kind, const std::string& mutation,
                  const std::string& outcome) {
    g_table->Count(kind, mutation, outcome);
}

}  // namespace quillon::test
