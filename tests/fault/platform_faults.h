// Makes calls that the plug-in makes of the system fail: files, settings, registry, windows, COM
// and memory. The system is asked for everything else, so the simulated host and the test itself
// are not concerned.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace quillon::test {

class PlatformFaults {
public:
    // Stands between the module and the system until the module is unloaded.
    explicit PlatformFaults(HMODULE module);
    PlatformFaults(const PlatformFaults&) = delete;
    PlatformFaults& operator=(const PlatformFaults&) = delete;
    ~PlatformFaults();

    static constexpr const char* kMemory = "malloc";

    // The functions called since StartCount, in the order of the calls; allocations of memory are
    // only counted.
    void StartCount();
    std::vector<std::string> Calls() const;
    long Allocations() const;

    // The nth call of the function from now fails once, or with all after it.
    void Fail(const std::string& function, long nth, bool forGood);
    void Restore();
};

}  // namespace quillon::test
