// What this process holds of the system.
#pragma once

#include <cstddef>

namespace quillon::test {

struct Memory {
    std::size_t heapBytes = 0;     // of the blocks in use in all heaps
    std::size_t heapBlocks = 0;    // how many these are
    std::size_t privateBytes = 0;  // committed, of this process alone
};

// Throws com::Error when a heap cannot be walked.
Memory MemoryInUse();

// How many kernel handles are open. Throws std::runtime_error when that cannot be told.
int KernelHandles();

}  // namespace quillon::test
