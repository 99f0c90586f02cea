// The protocol itself: entries on the front end's thread, the loop on the worker's.
#include "command/protocol.h"

#include "command/menu_rules.h"
#include "command/operate.h"
#include "command/session.h"
#include "command/settings_command.h"
#include "forms/form.h"

#include <algorithm>
#include <string>
#include <utility>

namespace torvane {

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

// A graph, or a ride in place of the loaded one: not there before the run is over.
bool needsResults(const Command& command)
{
    return command.graph != GraphWhen::never || command.hasPage || command.menu == MenuAfter::oneStroke;
}

} // namespace

const Command* Protocol::findListed(int id) const
{
    for (const Command& command : commandList)
        if (command.id == id)
            return &command;
    return nullptr;
}

const Command* Protocol::findLong(int id) const
{
    const Command* command = findListed(id);
    return command != nullptr && command->work == Work::worker ? command : nullptr;
}

bool Protocol::graphIsDue(GraphWhen when, ResultStatus status) const
{
    switch (when) {
    case GraphWhen::never:
        return false;
    case GraphWhen::bandPowerVelocity:
        return session->working.bandGraphPowerVelocity != 0;
    case GraphWhen::express:
        return session->working.expressGraph != 0 && !isFatal(status);
    case GraphWhen::bandCornering:
        return session->working.bandGraphCornering != 0;
    case GraphWhen::curves:
        return session->working.expressGraph != 0 && session->graph.has_value();
    }
    return false;
}

void Protocol::takeResults(const Command& command)
{
    ResultStatus status = workerBlock.resultStatus;
    if (status == statusStopped) // all is as it was
        return;
    if (graphIsDue(command.graph, status))
        front.openGraph();
    adjustMenu(command.menu, status, session->readiness, front.enableCommand);
    if (session->wantsPage)
        front.enableCommand(commandPage, !session->page.empty());
}

// The end of a run during which there was a press.
void Protocol::endPressedRun()
{
    if (const Command* command = std::exchange(pressedInRun, nullptr))
        takeResults(*command);
}

void Protocol::showWaiting()
{
    std::string text;
    for (const Command* command : waiting)
        text += (text.empty() ? "status : waiting for the present command : " : ", ") + std::string(command->label);
    front.showWaiting(text);
}

void Protocol::letWait(const Command& command)
{
    if (std::ranges::find(waiting, &command) == waiting.end())
        waiting.push_back(&command);
    showWaiting();
}

// Behind a press during a run the worker goes on, and still reads what the entry would write.
void Protocol::firstEntry(const Command& command)
{
    if (workerBlock.busy != 0)
        return letWait(command);
    chooseCalculator(command, session->working);
    if (!front.runEntry(command))
        return;
    if (command.commit != nullptr)
        command.commit(session->saved, session->working);
    front.closeGraph();
    if (session->wantsPage)
        front.enableCommand(commandPage, false); // the worker makes another one
    workerBlock.ActiveCommand = command.id;
    threadEvent.set();
    workerRunning = true;
}

void Protocol::leaveActiveCommand()
{
    std::lock_guard lock(takingUp);
    workerBlock.ActiveCommand = 0;
}

void Protocol::secondEntry(const Command& command)
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

void Protocol::enterLong(const Command& command)
{
    if (workerBlock.ActiveCommand == 0)
        firstEntry(command);
    else
        secondEntry(command);
}

void Protocol::enterReport(const Command& command)
{
    command.operation(*session);
    front.focusPane(false);
}

void Protocol::enterSettings(const Command& command)
{
    if (workerBlock.ActiveCommand != 0 || workerBlock.busy != 0)
        return letWait(command);
    if (!front.runEntry(command))
        return;
    bool reports = session->formMarks.profile || session->formMarks.condition;
    command.operation(*session);
    if (reports)
        front.focusPane(false);
}

void Protocol::dispatch(const Command& command)
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

void Protocol::enter(const Command& command)
{
    ++entered;
    dispatch(command);
    --entered;
}

const Command* Protocol::takeUpCommand()
{
    std::lock_guard lock(takingUp);
    const Command* command = findLong(workerBlock.ActiveCommand);
    workerBlock.busy = command != nullptr;
    return command;
}

void Protocol::runActiveCommand()
{
    const Command* command = takeUpCommand();
    if (command == nullptr)
        return;
    session->figures = {};
    workerBlock.resultStatus = operate(*command, *session);
    front.sendCompletion();
}

void Protocol::workerLoop()
{
    while (workerBlock.quit == 0) {
        std::this_thread::sleep_for(pollInterval);
        runActiveCommand();
        threadEvent.wait();
    }
    workerEnded.set();
}

void Protocol::startWorker(const FrontEnd& frontEnd, Session& ofFrontEnd, std::span<const Command> commands)
{
    front = frontEnd;
    session = &ofFrontEnd;
    commandList = commands;
    workerBlock.quit = 0;
    workerBlock.ActiveCommand = 0;
    workerRunning = false;
    pressedInRun = nullptr;
    waiting.clear();
    threadEvent.reset();
    workerEnded.reset();
    worker = std::thread(&Protocol::workerLoop, this);
}

void Protocol::handleCommand(int id)
{
    const Command* command = findListed(id);
    if (command == nullptr)
        return;
    enter(*command);
    openWaiting();
}

void Protocol::endRun()
{
    workerBlock.busy = 0;
    if (const Command* command = findLong(workerBlock.ActiveCommand))
        secondEntry(*command);
    else
        endPressedRun();
    if (!waiting.empty())
        front.postOpenWaiting();
}

void Protocol::openWaiting()
{
    while (entered == 0 && !waiting.empty() && workerBlock.ActiveCommand == 0 && workerBlock.busy == 0) {
        const Command& command = *waiting.front();
        waiting.pop_front();
        showWaiting();
        enter(command);
    }
}

bool Protocol::stopWorker()
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
