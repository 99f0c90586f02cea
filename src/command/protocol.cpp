// The protocol itself: entries on the front end's thread, the loop on the worker's.
#include "command/protocol.h"

#include "command/menu_rules.h"
#include "command/session.h"
#include "command/settings_command.h"
#include "forms/form.h"

#include <algorithm>
#include <deque>
#include <string>
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
std::mutex takingUp;                   // either the worker takes a command up, or a press withdraws it before
std::deque<const Command*> waiting;    // behind the present command, in the order of the presses
int entered = 0;                       // entries that are not over: a dialog of theirs may be open

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
        return sessionOfWorker->working.bandGraphPowerVelocity != 0;
    case GraphWhen::express:
        return sessionOfWorker->working.expressGraph != 0 && !isFatal(status);
    case GraphWhen::bandCornering:
        return sessionOfWorker->working.bandGraphCornering != 0;
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
    adjustMenu(command.menu, status, sessionOfWorker->readiness, front.enableCommand);
}

// The end of a run during which there was a press.
void endPressedRun()
{
    if (const Command* command = std::exchange(pressedInRun, nullptr))
        takeResults(*command);
}

void showWaiting()
{
    std::string text;
    for (const Command* command : waiting)
        text += (text.empty() ? "status : waiting for the present command : " : ", ") + std::string(command->label);
    front.showWaiting(text);
}

void letWait(const Command& command)
{
    if (std::ranges::find(waiting, &command) == waiting.end())
        waiting.push_back(&command);
    showWaiting();
}

// Behind a press during a run the worker goes on, and still reads what the entry would write.
void firstEntry(const Command& command)
{
    if (workerBlock.busy != 0)
        return letWait(command);
    chooseCalculator(command, sessionOfWorker->working);
    if (!front.runEntry(command))
        return;
    if (command.commit != nullptr)
        command.commit(sessionOfWorker->saved, sessionOfWorker->working);
    front.closeGraph();
    workerBlock.ActiveCommand = command.id;
    threadEvent.set();
    workerRunning = true;
}

void leaveActiveCommand()
{
    std::lock_guard lock(takingUp);
    workerBlock.ActiveCommand = 0;
}

void secondEntry(const Command& command)
{
    leaveActiveCommand();
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
    if (workerBlock.ActiveCommand != 0 || workerBlock.busy != 0)
        return letWait(command);
    if (!front.runEntry(command))
        return;
    bool reports = sessionOfWorker->formMarks.profile || sessionOfWorker->formMarks.condition;
    command.operation(*sessionOfWorker);
    if (reports)
        front.focusPane(false);
}

void dispatch(const Command& command)
{
    switch (command.work) {
    case Work::frontEnd:
        return front.runFrontEndCommand(command);
    case Work::report:
        return enterReport(command);
    case Work::settings:
        return enterSettings(command);
    case Work::worker:
        return enterLong(command);
    }
}

void enter(const Command& command)
{
    ++entered;
    dispatch(command);
    --entered;
}

const Command* takeUpCommand()
{
    std::lock_guard lock(takingUp);
    const Command* command = findLong(workerBlock.ActiveCommand);
    workerBlock.busy = command != nullptr;
    return command;
}

void runActiveCommand()
{
    const Command* command = takeUpCommand();
    if (command == nullptr)
        return;
    workerBlock.resultStatus = command->operation(*sessionOfWorker);
    front.sendCompletion();
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
    waiting.clear();
    threadEvent.reset();
    workerEnded.reset();
    worker = std::thread(workerLoop);
}

void handleCommand(int id)
{
    const Command* command = findListed(id);
    if (command == nullptr)
        return;
    enter(*command);
    openWaiting();
}

void endRun()
{
    workerBlock.busy = 0;
    if (const Command* command = findLong(workerBlock.ActiveCommand))
        secondEntry(*command);
    else
        endPressedRun();
    if (!waiting.empty())
        front.postOpenWaiting();
}

void openWaiting()
{
    while (entered == 0 && !waiting.empty() && workerBlock.ActiveCommand == 0 && workerBlock.busy == 0) {
        const Command& command = *waiting.front();
        waiting.pop_front();
        showWaiting();
        enter(command);
    }
}

bool stopWorker()
{
    if (workerBlock.ActiveCommand != 0 || !waiting.empty())
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
