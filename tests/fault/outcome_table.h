// What became of the runs of a sweep, counted, and printed at the end of the program: by operation
// and fault, and by operation alone as docs/reliability.md has it.
#pragma once

#include <string>

namespace quillon::test {

enum class OutcomeKind {
    kUntouched,  // as without the fault
    kQuiet,      // ended early, success
    kTold,       // a message box, or a report to the host
    kCode,       // a failing result
};

void CountOutcome(const std::string& operation, const std::string& fault, long calls,
                  OutcomeKind outcome);

}  // namespace quillon::test
