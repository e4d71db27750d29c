// Runs an operation again and again, each time with another call failing, and judges every run.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fault/operations.h"
#include "fault/outcome_table.h"
#include "fault/platform_faults.h"

namespace quillon::test {

// What is to be seen of one run.
struct Seen {
    HRESULT result = S_OK;
    Lines log;
    Lines changes;
    Lines reports;
    Lines boxes;
    Lines misuse;
    std::map<std::wstring, std::string> files;
    std::vector<std::string> platformCalls;
    long allocations = 0;

    bool SameOutcome(const Seen& other) const {
        return result == other.result && changes == other.changes && reports == other.reports &&
               boxes == other.boxes && files == other.files;
    }
};

// One fault: how it is set up just before the operation runs.
struct Fault {
    std::string name;  // "IFile.ValueText.get, call 3"
    std::function<void(Stage&)> arm;
    std::optional<std::size_t> call;  // its place in the log of a run without faults
};

// The rules that a kind of fault leaves in force.
struct Rules {
    bool successPromised = true;  // where the operation promises it
    bool mayStopWriting = true;   // nothing is written behind the failing call
    bool misuseIsWrong = true;
    bool sameContent = true;  // what is written is what is written without a fault
};

class SweepTest : public HostTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // The operation without a fault, after one that primes what is kept by the process.
    Seen Prime(const Operation& operation);
    // Each fault once, each followed by a run without; or, unless all are wanted, one of them.
    void Sweep(const Operation& operation, const char* kind, const Seen& good,
               const std::vector<Fault>& faults, const Rules& rules);
    // A run without a fault still gives the same.
    void ExpectWorks(const Operation& operation, const Seen& good);
    Seen Run(const Operation& operation, const std::function<void(Stage&)>& arm = {});

    PlatformFaults& Platform() { return *m_platform; }

private:
    void Judge(const Operation& operation, const Fault& fault, const Rules& rules, const Seen& good,
               const Seen& seen);
    void Collect(Seen& seen, std::size_t boxesBefore);
    static void JudgeContent(const Operation& operation, const Seen& good, const Seen& seen);
    Lines FileNames() const;
    void ClearFolder() const;
    void ExpectAllReleased();

    std::optional<PlatformFaults> m_platform;
};

// True when every fault is wanted, not a sample of them.
bool FullSweep();

}  // namespace quillon::test
