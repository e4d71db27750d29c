#include "window/staleness.h"

namespace quillon {

bool Staleness::Pass(bool deviceSilent) {
    if (!deviceSilent || Stale()) return false;
    ++m_intervals;
    return Stale();
}

bool Staleness::Read() {
    const bool wasStale = Stale();
    m_intervals = 0;
    return wasStale;
}

bool Staleness::Fail() {
    const bool wasStale = Stale();
    m_intervals = kIntervals;
    return !wasStale;
}

}  // namespace quillon
