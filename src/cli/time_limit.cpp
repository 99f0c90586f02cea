#include "cli/time_limit.h"

#include <algorithm>

namespace torvane {

TimeLimit::TimeLimit(double seconds) : limit(seconds)
{
    if (seconds > 0)
        watcher = std::thread(&TimeLimit::watch, this);
}

TimeLimit::~TimeLimit()
{
    {
        std::lock_guard lock(guard);
        over = true;
    }
    changed.notify_one();
    if (watcher.joinable())
        watcher.join();
}

bool TimeLimit::hold(StopRequest& stop, const std::function<void()>& work)
{
    if (!watcher.joinable()) {
        work();
        return false;
    }
    {
        std::lock_guard lock(guard);
        ends[&stop] = Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
    }
    changed.notify_one();
    work();
    std::lock_guard lock(guard);
    return ends.erase(&stop) == 0;
}

void TimeLimit::watch()
{
    std::unique_lock lock(guard);
    while (!over) {
        Clock::time_point next = askThoseOverdue();
        if (ends.empty())
            changed.wait(lock);
        else
            changed.wait_until(lock, next);
    }
}

// When the next one is.
TimeLimit::Clock::time_point TimeLimit::askThoseOverdue()
{
    Clock::time_point now = Clock::now(), next = Clock::time_point::max();
    std::erase_if(ends, [&](const auto& work) {
        if (work.second <= now)
            work.first->ask();
        else
            next = std::min(next, work.second);
        return work.second <= now;
    });
    return next;
}

} // namespace torvane
