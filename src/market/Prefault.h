#pragma once

#include <cstddef>
#include <cstdint>

#include <sys/mman.h>

// Maps the whole pages of a large, fresh allocation in one call: faulting
// them in one at a time, as the allocation is filled, costs more than filling
// it. Only a hint: where the system cannot, the pages fault in as usual.
inline void prefaultPages(void *data, size_t bytes)
{
    constexpr size_t kWorthACall = 64 * 1024; // below that, the call costs what the faults do
    if (bytes < kWorthACall)
        return;
    constexpr uintptr_t kPage = 4096;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(data) + kPage - 1) & ~(kPage - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(data) + bytes) & ~(kPage - 1);
#ifdef MADV_POPULATE_WRITE
    if (end > begin)
        madvise(reinterpret_cast<void *>(begin), end - begin, MADV_POPULATE_WRITE);
#else
    (void)begin, (void)end;
#endif
}
