// The system tells on a thread of its own, and ends the process when that returns from the news of an end.
#include "cli/ending_signals.h"

#include <windows.h>

namespace torvane {

namespace {

constexpr int hangUp = 1, interrupt = 2, breakKey = 21; // the numbers of signals

BOOL WINAPI onControl(DWORD event)
{
    switch (event) {
    case CTRL_C_EVENT:
        endBySignal(interrupt);
        return TRUE;
    case CTRL_BREAK_EVENT:
        endBySignal(breakKey);
        return TRUE;
    default: // the console closes, or the session ends
        endBySignal(hangUp);
        Sleep(INFINITE);
        return TRUE;
    }
}

} // namespace

void catchEndingSignals()
{
    SetConsoleCtrlHandler(onControl, TRUE);
}

} // namespace torvane
