#include "cli/ending_signals.h"

#include <atomic>
#include <cstdlib>

namespace torvane {

namespace {

constexpr int atOnce = -1; // nothing waits

struct Waiting {
    std::atomic<int> signal = atOnce; // else the one that waits, 0 for none
    StopRequest stop;                 // of the work that holds it
};
constinit Waiting waiting;
static_assert(std::atomic<int>::is_always_lock_free);

struct Held {
    Held()
    {
        waiting.signal = 0;
    }
    ~Held()
    {
        waiting.signal = atOnce;
        waiting.stop.withdraw();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
};

} // namespace

int runHeld(const std::function<int()>& work)
{
    Held held;
    int code = work();
    int signal = waiting.signal.exchange(atOnce); // one that comes from here on ends the process itself
    return signal == 0 ? code : signalExit + signal;
}

bool isSignalWaiting()
{
    return waiting.signal > 0;
}

const StopRequest& signalStop()
{
    return waiting.stop;
}

void endBySignal(int signal)
{
    int none = 0;
    if (!waiting.signal.compare_exchange_strong(none, signal) && none == atOnce)
        std::_Exit(signalExit + signal);
    waiting.stop.ask();
}

} // namespace torvane
