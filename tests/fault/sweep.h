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
    std::string printed;
    Lines oldShown;  // once polling had the time to go round: what the window shows as current
    std::vector<std::string> platformCalls;
    long allocations = 0;

    bool SameOutcome(const Seen& other) const {
        return result == other.result && changes == other.changes && reports == other.reports &&
               boxes == other.boxes && files == other.files && printed == other.printed;
    }
};

// One fault: how it is set up just before the operation runs.
struct Fault {
    std::string name;  // "IFile.ValueText.get, call 3"
    std::function<void(Stage&)> arm;
    std::optional<std::size_t> call;  // its place in the log of a run without faults
    bool ofSettings = false;          // settings are read as empty ones
};

// The rules that a kind of fault leaves in force.
struct Rules {
    bool successPromised = true;  // where the operation promises it
    bool mayStopWriting = true;   // nothing is written behind the failing call
    bool misuseIsWrong = true;
    bool sameContent = true;  // what is written is what is written without a fault
    bool mayLeaveOut = true;  // where the operation leaves out what it cannot read
    bool wholeOrTold = true;  // success is reported of the whole alone
    bool nothingOld = true;   // the window shows no value as current that is not
};

// Of what there is no memory for nothing may be missing in silence.
inline constexpr Rules kWithoutMemory{
    .successPromised = false, .mayStopWriting = false, .mayLeaveOut = false};

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
    // One fault for each allocation; where there are more than so many, spread evenly.
    std::vector<Fault> AtAllocations(const Seen& good, std::size_t most);

    PlatformFaults& Platform() { return *m_platform; }

private:
    void OpenWindow(Stage& stage);
    void Collect(Seen& seen, std::size_t boxesBefore);
    Lines FileNames() const;
    void ClearFolder() const;
    void ExpectAllReleased();

    std::optional<PlatformFaults> m_platform;
    const Operation* m_operation = nullptr;
};

// What stands in the place of a file that an operation writes, before it does.
inline constexpr const char* kOldFile = "what stood here before";

// How a run went, for the table.
OutcomeKind KindOf(const Seen& good, const Seen& seen);

// Fails the running test where the run breaks a rule.
void Judge(const Operation& operation, const Fault& fault, const Rules& rules, const Seen& good,
           const Seen& seen);

}  // namespace quillon::test
