// How long a ride of a batch may take.
#pragma once

#include "core/stop_request.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

namespace torvane {

// Asks what takes too long to stop. For many threads at once.
class TimeLimit {
public:
    explicit TimeLimit(double seconds); // 0: none
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    // Does the work, which stops by this request. Whether it was asked to, because its time was over.
    bool hold(StopRequest& stop, const std::function<void()>& work);

private:
    using Clock = std::chrono::steady_clock;

    void watch();
    Clock::time_point askThoseOverdue();

    std::chrono::duration<double> limit;
    std::mutex guard;
    std::condition_variable changed;
    std::map<StopRequest*, Clock::time_point> ends; // of the work that is being done
    bool over = false;
    std::thread watcher;
};

} // namespace torvane
