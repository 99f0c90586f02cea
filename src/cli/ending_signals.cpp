#include "cli/ending_signals.h"

#include <atomic>
#include <cstdlib>

namespace torvane {

namespace {

constexpr int atOnce = -1; // nothing waits; else the signal that waits, 0 for none
std::atomic<int> waiting = atOnce;
static_assert(std::atomic<int>::is_always_lock_free);

struct Held {
    Held()
    {
        waiting = 0;
    }
    ~Held()
    {
        waiting = atOnce;
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
};

} // namespace

int runHeld(const std::function<int()>& work)
{
    Held held;
    int code = work();
    int signal = waiting;
    return signal == 0 ? code : signalExit + signal;
}

bool isSignalWaiting()
{
    return waiting > 0;
}

void endBySignal(int signal)
{
    int none = 0;
    if (!waiting.compare_exchange_strong(none, signal) && none == atOnce)
        std::_Exit(signalExit + signal);
}

} // namespace torvane
