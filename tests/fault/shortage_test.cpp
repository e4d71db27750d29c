// Operations that would leave something out in silence, or show what is not so, were a shortage of
// memory taken for a host that gives nothing: allocations fail whether or not the full sweep is
// asked for.
#include <algorithm>

#include "fault/sweep.h"

namespace quillon::test {
namespace {

class Shortage : public SweepTest {
protected:
    void FailEachAllocation(const char* name) {
        const auto operation = std::ranges::find_if(
            Operations(), [&](const Operation& one) { return std::string(name) == one.name; });
        ASSERT_NE(operation, Operations().end());
        const Seen good = Prime(*operation);
        for (const Fault& fault : AtAllocations(good, 60)) {
            SCOPED_TRACE(fault.name);
            Judge(*operation, fault, kWithoutMemory, good, Run(*operation, fault.arm));
        }
    }
};

TEST_F(Shortage, ExportIsWholeOrKeepsTheOldFileAndSaysSo) {
    FailEachAllocation("export");
}

TEST_F(Shortage, DownloadReportsSuccessOfTheWholeAlone) {
    FailEachAllocation("download");
}

TEST_F(Shortage, WindowComesUpWithAllItsSettingsOrNotAtAll) {
    FailEachAllocation("window shown");
}

TEST_F(Shortage, ChangeThatIsToldIsShownOrItsRowGreyed) {
    FailEachAllocation("changes told");
}

}  // namespace
}  // namespace quillon::test
