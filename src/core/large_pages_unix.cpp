#include "core/large_pages.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace torvane {

// Only whole large pages within the memory become such: none of it is taken that would not be otherwise.
void expectAllTouched([[maybe_unused]] void* memory, [[maybe_unused]] size_t bytes)
{
#ifdef MADV_HUGEPAGE
    size_t page = static_cast<size_t>(::sysconf(_SC_PAGESIZE));
    size_t before = (page - reinterpret_cast<uintptr_t>(memory) % page) % page;
    if (bytes >= before + page) // refused, pages stay small
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
