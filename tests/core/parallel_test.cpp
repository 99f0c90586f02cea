#include "core/parallel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace torvane {

TEST(Parallel, doesEachPieceOnceInNoMoreThreadsThanItIsGiven)
{
    for (size_t threads : {1U, 2U, 3U}) {
        std::mutex guard;
        std::set<std::thread::id> seen;
        std::vector<int> done(12, 0);
        inParallel(done.size(), threads, [&](size_t piece) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            std::scoped_lock lock(guard);
            ++done[piece];
            seen.insert(std::this_thread::get_id());
        });
        EXPECT_EQ(done, std::vector<int>(12, 1));
        EXPECT_LE(seen.size(), threads);
    }
}

} // namespace torvane
