#pragma once

namespace quillon {

// How old one shown value is, counted in polling intervals during which the device was silent.
// Intervals in which it answers do not count, for then a value is merely waiting for its turn.
class Staleness {
public:
    static constexpr int kIntervals = 15;

    // One polling interval went by. True when the value became stale by it and is to be shown so.
    bool Pass(bool deviceSilent);

    // The value was read. True when it was stale and is to be shown as usual again.
    bool Read();

    // The value could not be read although it may just have changed: it is stale at once. True when
    // it was not before.
    bool Fail();

    // True from the kIntervals-th silent interval after the last reading on, and after Fail.
    bool Stale() const { return m_intervals >= kIntervals; }

private:
    int m_intervals = 0;
};

}  // namespace quillon
