// How a front end asks what runs to stop.
#pragma once

#include <atomic>

namespace torvane {

// A run that goes by this ends at its next report of progress. Of any thread, and safe in a signal handler.
class StopRequest {
public:
    constexpr StopRequest() = default;
    // Asked as well where the wider one is, which outlives it.
    constexpr explicit StopRequest(const StopRequest* asWell) : wider(asWell) {}

    void ask()
    {
        asked = true;
    }
    void withdraw()
    {
        asked = false;
    }
    bool isAsked() const
    {
        return asked.load(std::memory_order_relaxed) || (wider != nullptr && wider->isAsked());
    }

private:
    std::atomic<bool> asked = false;
    const StopRequest* wider = nullptr;
    static_assert(std::atomic<bool>::is_always_lock_free);
};

} // namespace torvane
