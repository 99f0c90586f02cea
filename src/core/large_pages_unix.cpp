#include "core/large_pages.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace torvane {

// Only whole large pages within the memory become such: none of it is taken that would not be otherwise. What has
// hardly one is not worth the call.
void expectAllTouched([[maybe_unused]] void* memory, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr size_t least = 4 << 20; // two large pages
    if (bytes < least)
        return;
    size_t page = static_cast<size_t>(::sysconf(_SC_PAGESIZE));
    size_t before = (page - reinterpret_cast<uintptr_t>(memory) % page) % page;
    // Refused, pages stay small.
    ::madvise(static_cast<char*>(memory) + before, (bytes - before) / page * page, MADV_HUGEPAGE);
#endif
}

void giveBackFreed()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace torvane
