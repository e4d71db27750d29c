// Ends a test program whose test does not end: a real window can wait for ever, and a run must not.
#pragma once

#include <string>

namespace quillon::test {

// The running test begins one of many rounds, each of which has as long as a test. A round that
// does not end is told by its name.
void WatchRound(const std::string& name);

}  // namespace quillon::test
