#include "core/large_pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace torvane {

// Only whole large pages within the memory become such: none of it is taken that would not be otherwise.
void expectAllTouched([[maybe_unused]] void* memory, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_HUGEPAGE
    const uintptr_t page = static_cast<uintptr_t>(::sysconf(_SC_PAGESIZE));
    const uintptr_t start = reinterpret_cast<uintptr_t>(memory), end = (start + bytes) / page * page;
    const uintptr_t first = (start + page - 1) / page * page;
    if (first < end)
        ::madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE); // refused, pages stay small
#endif
}

} // namespace torvane
