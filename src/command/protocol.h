// The two-entry protocol between the front end's thread and the one worker thread, without any window.
// A long command enters twice: from the user by handleCommand, and from the worker that has finished by endRun.
#pragma once

#include "command/command_table.h"
#include "core/parameter_block.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <span>
#include <string_view>
#include <thread>

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
    std::atomic<int> busy; // from the worker's taking up of a command to the end of endRun, whatever ActiveCommand says
};

// What the protocol asks of a front end; all calls but sendCompletion come on the front end's thread.
struct FrontEnd {
    bool (*runEntry)(const Command& command); // dialog, sheet or prompt; true when confirmed, for a sheet always
    void (*closeGraph)();
    void (*openGraph)();
    void (*enableCommand)(int id, bool enabled); // menu entries
    void (*focusPane)(bool lower);               // takes the focus and scrolls to its top
    void (*showWaiting)(std::string_view text);  // status line while commands wait; empty: none waits any more
    // Worker thread: call endRun on the front end's thread, return when that has returned.
    void (*sendCompletion)();
    // Have openWaiting called once the front end's thread is back at its messages.
    void (*postOpenWaiting)();
    void (*runFrontEndCommand)(const Command& command); // Work::frontEnd
    // Called again and again while the front end's thread closes and waits for the worker: let through what the worker
    // still sends, or it would never end; wait a moment when there is nothing.
    void (*serveWorker)();
};

// The protocol between one front end and one session, which outlive it. All operations come on the front end's thread.
class Protocol {
public:
    // Starts the worker on a list of commands (the program's own, unless a test brings others).
    void startWorker(const FrontEnd& frontEnd, Session& session, std::span<const Command> commands = commandTable());
    // The handler of all commands, by its id. An unknown id does nothing.
    // While a command runs, a press on any long command counts as its second entry and does not stop the worker; a
    // graph follows the end of the run, once there is something to show. A command whose dialog, sheet or prompt would
    // write what the running one still reads waits, in the order of the presses: one that changes profile, condition or
    // preference, and any long command behind such a second entry. The front end's thread goes on meanwhile.
    void handleCommand(int id);
    // The end of the worker's run: the second entry, where no press was that before.
    void endRun();
    // Opens the commands that wait, one after the other, unless the worker is busy or a dialog is open.
    void openWaiting();
    // The close message: false while a command runs or waits, and nothing happens; else the worker has ended.
    bool stopWorker();

    WorkerBlock workerBlock = {};

private:
    const Command* findListed(int id) const;
    const Command* findLong(int id) const;
    bool graphIsDue(GraphWhen when, ResultStatus status) const;
    void takeResults(const Command& command);
    void endPressedRun();
    void showWaiting();
    void letWait(const Command& command);
    void firstEntry(const Command& command);
    void leaveActiveCommand();
    void secondEntry(const Command& command);
    void enterLong(const Command& command);
    void enterReport(const Command& command);
    void enterSettings(const Command& command);
    void dispatch(const Command& command);
    void enter(const Command& command);
    const Command* takeUpCommand();
    void runActiveCommand();
    void workerLoop();

    FrontEnd front = {};
    Session* session = nullptr;
    std::span<const Command> commandList;
    ManualResetEvent threadEvent; // set at every entry, never reset: after the first command the loop polls
    ManualResetEvent workerEnded;
    std::thread worker;
    bool workerRunning = false;            // from the first entry of a command to its second
    const Command* pressedInRun = nullptr; // the worker's run is not over, and it needs the results
    std::mutex takingUp;                   // either the worker takes a command up, or a press withdraws it before
    std::deque<const Command*> waiting;    // behind the present command, in the order of the presses
    int entered = 0;                       // entries that are not over: a dialog of theirs may be open
};

} // namespace torvane
