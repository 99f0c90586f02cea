#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace torvane {

void inParallel(size_t count, size_t threads, const std::function<void(size_t piece)>& run)
{
    std::atomic<size_t> next = 0;
    auto work = [&] {
        for (size_t piece = next++; piece < count; piece = next++)
            run(piece);
    };
    std::vector<std::jthread> others;
    try {
        while (others.size() + 1 < std::min(threads, count))
            others.emplace_back(work);
    } catch (const std::system_error&) { // no more of them to be had
    }
    work();
}

} // namespace torvane
