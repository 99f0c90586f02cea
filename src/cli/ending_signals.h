// Signals that ask the program to end: Ctrl-C, SIGTERM and SIGHUP; on Windows Ctrl-C, Ctrl-Break and the closing of the
// console. At most times they end it at once. While a run could leave something half made behind they ask it to stop,
// and wait for its end. Either way the exit code is 128 and the signal's number.
#pragma once

#include "core/stop_request.h"

#include <functional>

namespace torvane {

constexpr int signalExit = 128;

// Once, at the start of the program. A signal that the program was started to ignore stays ignored, and a file that
// grows beyond the limit of the process is a write that fails.
void catchEndingSignals();

// Does the work with the signals waiting: its exit code, or that of the signal which came meanwhile.
int runHeld(const std::function<int()>& work);

// Whether the present work, if it is held, is better given up.
bool isSignalWaiting();

// By which that work is asked to end of itself.
const StopRequest& signalStop();

// Of the platform's handler: a signal has come. Safe in a signal handler and on any thread.
void endBySignal(int signal);

} // namespace torvane
