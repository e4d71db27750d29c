// Calls that an action makes to the host, as places at which something else is let happen.
#pragma once

#include <string>
#include <vector>

#include "support/host_session.h"

namespace quillon::test {

struct HostCall {
    std::wstring member;
    long nth = 1;  // of the calls of this member
};

// Every call of a log, in its order.
std::vector<HostCall> CallsOf(const Lines& log);

// Those to be tried: of each member's the first, the one in the middle and the last; in a full run
// all, which takes three times as long.
std::vector<HostCall> Tried(const std::vector<HostCall>& calls);

}  // namespace quillon::test
