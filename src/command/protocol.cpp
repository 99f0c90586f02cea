// The protocol itself: entries on the front end's thread, the loop on the worker's.
#include "command/protocol.h"

#include "command/menu_rules.h"
#include "command/settings_command.h"
#include "forms/form.h"

#include <thread>
#include <utility>

namespace torvane {

WorkerBlock workerBlock;

void ManualResetEvent::set()
{
    std::lock_guard lock(guard);
    signalled = true;
    changed.notify_all();
}

void ManualResetEvent::reset()
{
    std::lock_guard lock(guard);
    signalled = false;
}

void ManualResetEvent::wait()
{
    std::unique_lock lock(guard);
    changed.wait(lock, [this] { return signalled; });
}

bool ManualResetEvent::waitFor(std::chrono::milliseconds limit)
{
    std::unique_lock lock(guard);
    return changed.wait_for(lock, limit, [this] { return signalled; });
}

namespace {

constexpr std::chrono::milliseconds pollInterval{100};

FrontEnd front;
Session* sessionOfWorker = nullptr;
std::span<const Command> commandList;
ManualResetEvent threadEvent; // set at every entry, never reset: after the first command the loop polls
ManualResetEvent workerEnded;
std::thread worker;
bool workerRunning = false;            // from the first entry of a command to its second
const Command* pressedInRun = nullptr; // the worker's run is not over, and it needs the results

const Command* findListed(int id)
{
    for (const Command& command : commandList)
        if (command.id == id)
            return &command;
    return nullptr;
}

const Command* findLong(int id)
{
    const Command* command = findListed(id);
    return command != nullptr && command->work == Work::worker ? command : nullptr;
}

bool graphIsDue(GraphWhen when, ResultStatus status)
{
    switch (when) {
    case GraphWhen::never:
        return false;
    case GraphWhen::bandPowerVelocity:
        return workingBlock.bandGraphPowerVelocity != 0;
    case GraphWhen::express:
        return workingBlock.expressGraph != 0 && !isFatal(status);
    case GraphWhen::bandCornering:
        return workingBlock.bandGraphCornering != 0;
    }
    return false;
}

// A graph, or a ride in place of the loaded one: not there before the run is over.
bool needsResults(const Command& command)
{
    return command.graph != GraphWhen::never || command.menu == MenuAfter::oneStroke;
}

void takeResults(const Command& command)
{
    ResultStatus status = workerBlock.resultStatus;
    if (graphIsDue(command.graph, status))
        front.openGraph();
    adjustMenu(command.menu, status, front.enableCommand);
}

// The completion of a run during which there was a press carries no command any more.
void endPressedRun()
{
    if (const Command* command = std::exchange(pressedInRun, nullptr))
        takeResults(*command);
}

// Behind a press during a run the worker goes on. What the window thread then wants to write, its run still reads.
void awaitWorker()
{
    while (workerBlock.busy != 0)
        front.serveWorker();
    endPressedRun(); // its completion may still be on its way
}

void firstEntry(const Command& command)
{
    awaitWorker();
    chooseCalculator(command, workingBlock);
    if (!front.runEntry(command))
        return;
    if (command.commit != nullptr)
        command.commit(savedBlock, workingBlock);
    front.closeGraph();
    workerBlock.ActiveCommand = command.id;
    threadEvent.set();
    workerRunning = true;
}

void secondEntry(const Command& command)
{
    workerBlock.ActiveCommand = 0;
    threadEvent.set();
    workerRunning = false;
    if (workerBlock.busy != 0 && needsResults(command))
        pressedInRun = &command;
    else
        takeResults(command);
    if (command.showsLower)
        front.focusPane(true);
}

void enterLong(const Command& command)
{
    if (workerBlock.ActiveCommand == 0)
        firstEntry(command);
    else
        secondEntry(command);
}

void enterReport(const Command& command)
{
    command.operation(*sessionOfWorker);
    front.focusPane(false);
}

void enterSettings(const Command& command)
{
    if (workerBlock.ActiveCommand != 0)
        return;
    awaitWorker();
    if (!front.runEntry(command))
        return;
    bool reports = formMarks.profile || formMarks.condition;
    finishSettings(*sessionOfWorker, command);
    if (reports)
        front.focusPane(false);
}

void runActiveCommand()
{
    workerBlock.busy = 1; // before the look at what to run: a press in between is either seen or sees this
    const Command* command = findLong(workerBlock.ActiveCommand);
    if (command != nullptr)
        workerBlock.resultStatus = command->operation(*sessionOfWorker);
    // Read again: after a press during the run it is 0, and the handler passes over it.
    int completed = workerBlock.ActiveCommand;
    workerBlock.busy = 0;
    if (command != nullptr)
        front.sendCompletion(completed);
}

void workerLoop()
{
    while (workerBlock.quit == 0) {
        std::this_thread::sleep_for(pollInterval);
        runActiveCommand();
        threadEvent.wait();
    }
    workerEnded.set();
}

} // namespace

void startWorker(const FrontEnd& frontEnd, Session& session, std::span<const Command> commands)
{
    front = frontEnd;
    sessionOfWorker = &session;
    commandList = commands;
    workerBlock.quit = 0;
    workerBlock.ActiveCommand = 0;
    workerRunning = false;
    pressedInRun = nullptr;
    threadEvent.reset();
    workerEnded.reset();
    worker = std::thread(workerLoop);
}

void handleCommand(int id)
{
    if (id == 0)
        return endPressedRun();
    const Command* command = findListed(id);
    if (command == nullptr)
        return;
    switch (command->work) {
    case Work::frontEnd:
        front.runFrontEndCommand(*command);
        break;
    case Work::report:
        enterReport(*command);
        break;
    case Work::settings:
        enterSettings(*command);
        break;
    case Work::worker:
        enterLong(*command);
        break;
    }
}

bool stopWorker()
{
    if (workerBlock.ActiveCommand != 0)
        return false;
    if (!workerRunning)
        threadEvent.set();
    workerBlock.quit = 1;
    pressedInRun = nullptr;
    // A press during a run leaves the worker busy behind an ActiveCommand of 0: what it still sends must get through.
    while (!workerEnded.waitFor(std::chrono::milliseconds(0)))
        front.serveWorker();
    worker.join();
    return true;
}

} // namespace torvane
