#include "cli/ending_signals.h"

#include <csignal>

namespace torvane {

void catchEndingSignals()
{
    struct sigaction handled = {}, before = {};
    handled.sa_handler = endBySignal;
    handled.sa_flags = SA_RESTART;
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(signal, &handled, nullptr);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace torvane
