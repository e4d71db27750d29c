#include "heap.h"

#include <windows.h>
//
#include <psapi.h>

#include <vector>

#include "com/error.h"

namespace quillon::benchmarks {

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

std::size_t PrivateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        throw com::Error(HRESULT_FROM_WIN32(GetLastError()));
    return counters.PagefileUsage;
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

}  // namespace quillon::benchmarks
