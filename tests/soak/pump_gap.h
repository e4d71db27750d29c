// How long window messages wait while the plug-in works.
#pragma once

#include <windows.h>

namespace quillon::test {

// The time from the end of one look into the message queue, the plug-in's own ones included, to the
// next one. One object at a time.
class PumpGap {
public:
    explicit PumpGap(HMODULE module);
    PumpGap(const PumpGap&) = delete;
    PumpGap& operator=(const PumpGap&) = delete;
    ~PumpGap();

    // The queue is looked into, here and by this name until the next call: "tick", "export".
    void Looked(const char* work);
    // What went by until now is nobody's.
    void Forget();
    void Print() const;
};

}  // namespace quillon::test
