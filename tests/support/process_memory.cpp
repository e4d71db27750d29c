#include "support/process_memory.h"

#include <windows.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "com/error.h"

namespace quillon::test {

namespace {

// All is gathered first: a list that grew while a heap is walked would change that heap.
void AddHeap(HANDLE heap, Memory& memory) {
    if (!HeapLock(heap)) throw com::Error(HRESULT_FROM_WIN32(GetLastError()));
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
        if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
        memory.heapBytes += entry.cbData;
        ++memory.heapBlocks;
    }
    const DWORD ended = GetLastError();
    HeapUnlock(heap);
    if (ended != ERROR_NO_MORE_ITEMS) throw com::Error(HRESULT_FROM_WIN32(ended));
}

// By the process's own map, for the process's counters hold what an emulating system needs as well.
std::size_t PrivateBytes() {
    std::size_t bytes = 0;
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    const char* place = static_cast<const char*>(system.lpMinimumApplicationAddress);
    MEMORY_BASIC_INFORMATION region{};
    while (place < system.lpMaximumApplicationAddress &&
           VirtualQuery(place, &region, sizeof region) != 0) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
        place = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return bytes;
}

}  // namespace

Memory MemoryInUse() {
    std::vector<HANDLE> heaps(64);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    Memory memory;
    for (HANDLE heap : heaps) AddHeap(heap, memory);
    memory.privateBytes = PrivateBytes();
    return memory;
}

// Wine does not count them, but tells of each number whether it is a handle.
int KernelHandles() {
    DWORD counted = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &counted) && counted != 0)
        return static_cast<int>(counted);
    constexpr std::uintptr_t kLast = 0x8000;
    int handles = 0;
    DWORD flags = 0;
    for (std::uintptr_t number = 4; number <= kLast; number += 4)
        if (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags)) ++handles;
    if (handles == 0) throw std::runtime_error("the process's handles cannot be counted");
    return handles;
}

}  // namespace quillon::test
