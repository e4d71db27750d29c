// A day of eight windows, as fast as their messages are handled; a part of it by default.
#include "soak/soak_test.h"
#include "support/full_run.h"
#include "support/watchdog.h"

namespace quillon::test {
namespace {

constexpr long kDay = 864'000;  // tenths of a second
constexpr long kPart = 5'000;

class Soak : public SoakTest {};

TEST_F(Soak, NothingGrowsAndNoEventIsLost) {
    const long end = FullRun() ? kDay : kPart;
    const long between = end / (FullRun() ? 40 : 10);
    ResourceCurve curve;
    for (long tenth = 0; tenth < end; ++tenth) {
        if (tenth % 600 == 0) WatchRound("minute " + std::to_string(tenth / 600));
        Pass(tenth);
        if ((tenth + 1) % between != 0) continue;
        CalmAll();
        ExpectCurrent();
        Gap().Forget();
        curve.Add(static_cast<double>(tenth + 1) / static_cast<double>(end), LeftBySystem());
        Gap().Forget();
        if (HasFatalFailure() || HasNonfatalFailure()) break;
    }
    Print();
    curve.Print();
    curve.ExpectFlat();
    for (const Told* told : {&Points(), &Names(), &States()}) {
        EXPECT_GT(told->changes, 0);
        EXPECT_EQ(told->shown, told->changes) << "a change was told and is not shown";
    }
    EXPECT_GT(Edits(), 0);
}

}  // namespace
}  // namespace quillon::test
