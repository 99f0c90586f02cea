// The two-entry protocol between the front end's thread and the one worker thread, without any window.
// A long command enters handleCommand twice under one id: from the user, and from the worker that has finished.
#pragma once

#include "command/command_table.h"
#include "core/parameter_block.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <span>

namespace torvane {

// Manual-reset event: once set it stays set until reset.
class ManualResetEvent {
public:
    void set();
    void reset();
    void wait();
    bool waitFor(std::chrono::milliseconds limit); // whether it was set in that time

private:
    std::mutex guard;
    std::condition_variable changed;
    bool signalled = false;
};

// What the worker and the main thread share. Plain words without locks: the protocol keeps the sides apart.
struct WorkerBlock {
    std::atomic<int> quit;
    std::atomic<int> ActiveCommand; // long command in progress, 0 when idle
    std::atomic<ResultStatus> resultStatus;
    std::atomic<int> busy; // the worker is inside an operation or looks for one, whatever ActiveCommand says
};

// What the protocol asks of a front end; all calls but sendCompletion come on the front end's thread.
struct FrontEnd {
    bool (*runEntry)(const Command& command); // dialog, sheet or prompt; true when confirmed, for a sheet always
    void (*closeGraph)();
    void (*openGraph)();
    void (*enableCommand)(int id, bool enabled); // menu entries
    void (*focusPane)(bool lower);               // takes the focus and scrolls to its top
    // Worker thread: bring the id to the front end's thread, call handleCommand there, return when that has returned.
    void (*sendCompletion)(int id);
    void (*runFrontEndCommand)(const Command& command); // Work::frontEnd
    // Called again and again while the front end's thread waits for the worker: let through what the worker still
    // sends, or it would never end; wait a moment when there is nothing.
    void (*serveWorker)();
};

extern WorkerBlock workerBlock;

// Starts the worker for a session on a list of commands (the program's own, unless a test brings others).
void startWorker(const FrontEnd& frontEnd, Session& session, std::span<const Command> commands = commandTable());
// The handler of all commands, on the front end's thread. An unknown id does nothing.
// While a command runs, a press on any long command counts as its second entry and does not stop the worker, whose
// completion is a 0 then; a graph follows that, once there is something to show. Commands that change profile,
// condition or preference are not taken meanwhile, since the worker reads what they would write. For the same reason
// what is pressed next, behind such a second entry, opens once the worker's run is over.
void handleCommand(int id);
// The close message: false while a command runs, and nothing happens; else the worker has ended.
bool stopWorker();

} // namespace torvane
