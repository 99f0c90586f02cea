// The two-entry protocol against a fake front end: the test's own thread plays the window thread, with a queue for what
// the worker sends. Fake commands stand in for the real ones, so that a run lasts exactly as long as a case wants.
#include "command/protocol.h"

#include "command/menu_rules.h"
#include "command/session.h"
#include "gps/gps_record.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace torvane {
namespace {

Protocol protocol;
bool opensWaiting = false; // posted

// What the worker sends to the window thread, one at a time; the worker is held until it was served.
struct Mail {
    ManualResetEvent sent, served;

    void send()
    {
        served.reset();
        sent.set();
        served.wait();
    }

    // Serves one piece of mail if it comes within the time; tells whether it did.
    bool serve(std::chrono::milliseconds limit)
    {
        if (!sent.waitFor(limit))
            return false;
        sent.reset();
        protocol.endRun();
        if (std::exchange(opensWaiting, false))
            protocol.openWaiting();
        served.set();
        return true;
    }
};

constexpr std::chrono::seconds longEnough{10};

Mail mail;
Session session;
std::string waitingLine;
std::vector<std::string> journal; // calls on the window thread, in order
bool confirms = true;
bool boxOutlastsRun = false;
ManualResetEvent operationMayEnd, operationStarted;
ResultStatus operationResult = 0;
std::atomic<int> operationRuns = 0;

ResultStatus fakeOperation(Session&)
{
    ++operationRuns;
    operationStarted.set();
    operationMayEnd.wait();
    return operationResult;
}

ResultStatus fakeReport(Session&)
{
    journal.push_back("report");
    return 0;
}

void fakeCommit(ParameterBlock&, ParameterBlock&)
{
    journal.push_back("commit");
}

constexpr Command ride(int id, GraphWhen graph)
{
    Command command{.id = id, .label = "ride", .entry = Entry::dialog, .work = Work::worker, .commit = fakeCommit};
    command.operation = fakeOperation;
    command.family = Family::ride;
    command.member = id - commandPowerAndVelocity;
    command.graph = graph;
    command.showsLower = true;
    return command;
}

constexpr Command tool()
{
    Command command{.id = 905, .label = "tool", .entry = Entry::dialog, .work = Work::worker};
    command.operation = fakeOperation;
    command.menu = MenuAfter::toolRan;
    return command;
}

// A box that is open while the worker's run ends.
void runFrontEnd(const Command& command)
{
    journal.push_back("front end " + std::to_string(command.id));
    if (!boxOutlastsRun)
        return;
    operationMayEnd.set();
    mail.serve(longEnough);
    journal.push_back("box closed");
}

constexpr Command fakeCommands[] = {
    {.id = 303, .label = "front end"},
    {.id = 325,
     .label = "settings",
     .entry = Entry::sheet,
     .work = Work::settings,
     .operation = [](Session&) -> ResultStatus { return 0; }},
    {.id = 501, .label = "report", .work = Work::report, .operation = fakeReport},
    ride(801, GraphWhen::bandPowerVelocity),
    ride(802, GraphWhen::express),
    tool(),
};

constexpr FrontEnd fakeFrontEnd = {
    .runEntry =
        [](const Command& command) {
            journal.push_back("entry " + std::to_string(command.id));
            return confirms;
        },
    .closeGraph = [] { journal.push_back("close graph"); },
    .openGraph = [] { journal.push_back("open graph"); },
    .enableCommand = [](int id, bool on) { journal.push_back((on ? "enable " : "grey ") + std::to_string(id)); },
    .focusPane = [](bool lower) { journal.push_back(lower ? "focus lower" : "focus upper"); },
    .showWaiting = [](std::string_view text) { waitingLine = text; },
    .sendCompletion = [] { mail.send(); },
    .postOpenWaiting = [] { opensWaiting = true; },
    .runFrontEndCommand = runFrontEnd,
    .serveWorker = [] { mail.serve(std::chrono::milliseconds(1)); },
};

using Calls = std::vector<std::string>;

class ProtocolTest : public testing::Test {
protected:
    void SetUp() override
    {
        session.saved = session.working = defaultBlock();
        journal.clear();
        confirms = true;
        boxOutlastsRun = false;
        operationMayEnd.reset();
        operationStarted.reset();
        operationResult = 0;
        operationRuns = 0;
        protocol.startWorker(fakeFrontEnd, session, fakeCommands);
    }

    void TearDown() override
    {
        operationMayEnd.set();
        while (!protocol.stopWorker())
            mail.serve(std::chrono::milliseconds(10));
    }
};

TEST_F(ProtocolTest, runsALongCommandThroughBothEntries)
{
    protocol.handleCommand(802);
    EXPECT_EQ(journal, (Calls{"entry 802", "commit", "close graph"}));
    EXPECT_EQ(protocol.workerBlock.ActiveCommand, 802);

    journal.clear();
    operationMayEnd.set();
    ASSERT_TRUE(mail.serve(longEnough));
    EXPECT_EQ(protocol.workerBlock.ActiveCommand, 0);
    EXPECT_EQ(journal, (Calls{"open graph", "focus lower"}));

    // The event stays set: the next command starts by the poll alone.
    protocol.handleCommand(802);
    ASSERT_TRUE(mail.serve(longEnough));
    EXPECT_EQ(operationRuns, 2);
}

TEST_F(ProtocolTest, cancelStartsNothingButKeepsTheMode)
{
    session.working.rideMode = 0;
    session.working.rideTarget = 1;
    confirms = false;
    protocol.handleCommand(12345);
    protocol.handleCommand(802);
    EXPECT_EQ(journal, (Calls{"entry 802"})); // the unknown id did nothing
    EXPECT_EQ(protocol.workerBlock.ActiveCommand, 0);
    EXPECT_EQ(session.working.rideMode, 1);
    EXPECT_EQ(session.working.rideTarget, 0);

    session.working.rideTarget = 5;
    protocol.handleCommand(802);
    EXPECT_EQ(session.working.rideTarget, 5) << "the same mode again keeps its target";

    confirms = true;
    journal.clear();
    session.formMarks.profile = true; // by a page of the sheet
    protocol.handleCommand(325);
    EXPECT_EQ(journal, (Calls{"entry 325", "focus upper"}));
    session.formMarks = {};
}

TEST_F(ProtocolTest, pressDuringARunIsASecondEntryAndStopsNothing)
{
    protocol.handleCommand(802);
    operationStarted.wait();
    journal.clear();
    protocol.handleCommand(905);
    EXPECT_EQ(journal, (Calls{"grey 902", "grey 903", "grey 904"})) << "the pressed command's own actions";
    EXPECT_EQ(protocol.workerBlock.ActiveCommand, 0);

    journal.clear();
    operationMayEnd.set();
    ASSERT_TRUE(mail.serve(longEnough));
    EXPECT_TRUE(journal.empty()) << "the run was left by the press";
    EXPECT_EQ(operationRuns, 1);
}

// What would write what the worker still reads waits, once each and in order; nobody waits for it.
TEST_F(ProtocolTest, thePressBehindAPressWaitsForTheWorker)
{
    session.working.expressGraph = 1;
    protocol.handleCommand(802);
    operationStarted.wait();
    protocol.handleCommand(325);
    EXPECT_EQ(waitingLine, "status : waiting for the present command : settings");
    journal.clear();
    protocol.handleCommand(802);
    EXPECT_EQ(journal, Calls{"focus lower"}) << "there is no graph yet";
    for (int pressed : {905, 325, 905, 303})
        protocol.handleCommand(pressed);
    EXPECT_EQ(waitingLine, "status : waiting for the present command : settings, tool");
    EXPECT_FALSE(protocol.stopWorker());
    EXPECT_EQ(journal, (Calls{"focus lower", "front end 303"}));

    journal.clear();
    operationMayEnd.set();
    ASSERT_TRUE(mail.serve(longEnough));
    EXPECT_EQ(journal, (Calls{"open graph", "entry 325", "entry 905", "close graph"}));
    EXPECT_EQ(waitingLine, "");
    while (protocol.workerBlock.ActiveCommand != 0)
        mail.serve(longEnough);
    EXPECT_EQ(operationRuns, 2) << "the end of the first run was not taken for its own";
}

TEST_F(ProtocolTest, whatWaitsOpensBehindABoxAndNotOverIt)
{
    protocol.handleCommand(905);
    operationStarted.wait();
    protocol.handleCommand(325);
    journal.clear();
    boxOutlastsRun = true;
    protocol.handleCommand(303);
    EXPECT_EQ(journal, (Calls{"front end 303", "grey 902", "grey 903", "grey 904", "box closed", "entry 325"}));
}

// Withdrawn before the worker has seen it, a command ends at once, and no end of a run will open what waits.
TEST_F(ProtocolTest, aCommandThatNeverRanHoldsNothingUp)
{
    protocol.handleCommand(802);
    protocol.handleCommand(325);
    journal.clear();
    protocol.handleCommand(905);
    EXPECT_EQ(journal.back(), "entry 325");
    EXPECT_EQ(operationRuns, 0);
}

TEST_F(ProtocolTest, shortCommandsDuringARunAreTakenButClosingIsRefused)
{
    protocol.handleCommand(802);
    operationStarted.wait();
    journal.clear();
    protocol.handleCommand(501);
    protocol.handleCommand(303);
    EXPECT_EQ(journal, (Calls{"report", "focus upper", "front end 303"}));
    EXPECT_FALSE(protocol.stopWorker());
    EXPECT_EQ(protocol.workerBlock.quit, 0);
    EXPECT_EQ(protocol.workerBlock.ActiveCommand, 802);
}

// TearDown closes while the worker is busy behind an ActiveCommand of 0: it must let the worker's message through.
TEST_F(ProtocolTest, closeAfterAPressWaitsForTheWorker)
{
    protocol.handleCommand(802);
    operationStarted.wait();
    protocol.handleCommand(802);
    EXPECT_EQ(protocol.workerBlock.busy, 1);
    operationMayEnd.set();
    EXPECT_TRUE(protocol.stopWorker());
    EXPECT_EQ(protocol.workerBlock.busy, 0);
    protocol.startWorker(fakeFrontEnd, session, fakeCommands);
}

TEST_F(ProtocolTest, graphFollowsPreferenceAndStatus)
{
    // Command, both preferences, status; the express graph wants no fatal one, a tool has none.
    constexpr std::tuple<int, int, int, ResultStatus, bool> cases[] = {
        {802, 1, 0, 0, true},   {802, 1, 0, 0x20000, true}, {802, 1, 0, 0x2, false}, {802, 0, 1, 0, false},
        {801, 0, 1, 0x2, true}, {801, 1, 0, 0, false},      {905, 1, 1, 0, false},
    };
    operationMayEnd.set();
    for (const auto& [id, expressGraph, bandGraph, status, opens] : cases) {
        session.working.expressGraph = expressGraph;
        session.working.bandGraphPowerVelocity = bandGraph;
        operationResult = status;
        protocol.handleCommand(id);
        journal.clear();
        ASSERT_TRUE(mail.serve(longEnough));
        EXPECT_EQ(std::count(journal.begin(), journal.end(), "open graph"), opens) << id << " " << status;
    }
}

std::map<int, bool> menuState;

TEST(MenuRulesTest, openAndGreyByStatusAndReadiness)
{
    // Rule, status, readiness; the entries touched.
    const std::map<int, bool> untouched, greyed = {{902, false}, {903, false}, {904, false}};
    const std::map<int, bool> ready = {{902, true}, {903, true}, {904, false}};
    const std::map<int, bool> nothingToDo = {{902, true}, {903, false}, {904, false}};
    const std::tuple<MenuAfter, ResultStatus, int, std::map<int, bool>> cases[] = {
        {MenuAfter::loaded, 0, 0, ready},
        {MenuAfter::loaded, 0, 2, nothingToDo},
        {MenuAfter::loaded, 0, 1, greyed},
        {MenuAfter::loaded, 4, 0, greyed},
        {MenuAfter::expressed, 0, 0, untouched},
        {MenuAfter::expressed, 8, 0, greyed},
        {MenuAfter::analysed, 0, 0, {{904, true}}},
        {MenuAfter::analysed, 0, 2, {{904, false}}},
        {MenuAfter::analysed, 1, 0, {{904, false}}},
        {MenuAfter::none, 0, 0, untouched},
        {MenuAfter::toolRan, 0, 0, greyed},
        {MenuAfter::oneStroke, 0, 2, nothingToDo},
        {MenuAfter::oneStroke, 1, 0, untouched},
    };
    for (const auto& [rule, status, readiness, expected] : cases) {
        menuState.clear();
        adjustMenu(rule, status, static_cast<AnalysisReadiness>(readiness),
                   [](int id, bool enabled) { menuState[id] = enabled; });
        EXPECT_EQ(menuState, expected) << static_cast<int>(rule) << " " << status << " " << readiness;
    }
}

} // namespace
} // namespace torvane
