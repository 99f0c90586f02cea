// Presses while the worker runs, as an impatient user makes them: every long command of the program, each with presses
// of any commands during its run. The test's own thread plays the window thread, a second one the user. What the
// threads share without order shows under the thread sanitizer; that nothing was spoilt shows in a quiet run
// afterwards.
#include "command/protocol.h"

#include "command/fill.h"
#include "command/gps_load_command.h"
#include "command/session.h"
#include "command/settings_command.h"
#include "core/screens.h"
#include "fit/fit_builder.h"
#include "fit/fit_tools.h"
#include "forms/form.h"
#include "gps/gps_load.h"
#include "model/model_fixture.h"

#include <deque>
#include <functional>
#include <random>
#include <thread>

namespace torvane {

namespace {

using namespace std::chrono_literals;

constexpr auto longEnough = 10s;

Protocol protocol;
ManualResetEvent runBegan, runMayGoOn; // the worker wants to show something; the user has pressed

// What waits for the window thread: what the worker sends, which is held until it was served, and what was posted, such
// as presses. As a window does, it serves the first before the second.
class WindowMail {
public:
    bool isWindow() const
    {
        return std::this_thread::get_id() == window;
    }
    void send(const std::function<void()>& work)
    {
        if (isWindow())
            return work();
        runBegan.set();
        runMayGoOn.waitFor(longEnough);
        served.reset();
        std::unique_lock lock(guard);
        waiting.push_front([&] {
            work();
            served.set();
        });
        lock.unlock();
        served.wait();
    }
    void post(const std::function<void()>& work)
    {
        std::lock_guard lock(guard);
        waiting.push_back(work);
    }
    void press(int id)
    {
        post([this, id] {
            pressesDuringRuns += protocol.workerBlock.busy;
            protocol.handleCommand(id);
        });
    }
    void serve()
    {
        std::unique_lock lock(guard);
        if (waiting.empty()) {
            lock.unlock();
            return std::this_thread::sleep_for(100us);
        }
        std::function<void()> work = waiting.front();
        waiting.pop_front();
        ++inHand;
        lock.unlock();
        work();
        --inHand;
    }
    bool isEmpty()
    {
        std::lock_guard lock(guard);
        return inHand == 0 && waiting.empty();
    }
    std::atomic<int> pressesDuringRuns = 0;

private:
    std::mutex guard;
    std::deque<std::function<void()>> waiting;
    std::atomic<int> inHand = 0;
    ManualResetEvent served;
    std::thread::id window = std::this_thread::get_id(); // that of main, which runs the tests
};

WindowMail mail;
std::atomic<bool> somethingWaits = false;
std::string folder;
Session session;
std::string lowerText, statusText; // of the window thread
std::string gathered;              // of the worker, for the lower pane

const Screens windowScreens = {
    .setText =
        [](Pane pane, std::string_view text) {
            if (pane == Pane::upper || mail.isWindow())
                return;
            gathered.clear();
            mail.send([text] { lowerText = text; });
        },
    .appendText =
        [](Pane pane, std::string_view text) {
            if (pane == Pane::lower && !mail.isWindow())
                gathered += text;
        },
    .setStatus = [](std::string_view text) { mail.send([text] { statusText = text; }); },
    .showProgress = [](bool) { mail.send([] {}); },
    .setProgress = [](int) { mail.send([] {}); },
    .showMessage = [](std::string_view, std::string_view) { mail.send([] {}); },
};

// The dialog as it stands, but for what a tool cannot do without.
bool fill(const Command& command)
{
    const std::vector<Assignment> entries = {{"addLap", "1"}, {"excludeActivity", "1"}, {"minutes", "5"}};
    RunFiles files = {{folder + "half-1.fit", folder + "half-2.fit"}, folder + "out.fit"};
    if (command.id == commandAddMessages || command.id == commandDivide)
        files.sources = {folder + (command.id == commandDivide ? "hills.fit" : "no-laps.fit")};
    Filling filling = {session, command, entries, files};
    return fillDialog(filling);
}

void accept(const Form& page)
{
    FormState state;
    openForm(state, page, session.saved, session.working, session.model);
    confirmPage(session, state);
}

// What the menu greys without a ride, or after a tool, finds one here.
void loadFor(int id)
{
    if (id < 902 || id > 904)
        return;
    session.chosenRide = folder + "half-1.fit";
    loadGpsFile(session);
}

bool runEntry(const Command& command)
{
    loadFor(command.id);
    switch (command.entry) {
    case Entry::immediate:
        session.inputs.files[0].path = session.inputs.files[1].path = folder + "half-1.fit";
        return true;
    case Entry::dialog:
        return fill(command);
    case Entry::sheet:
        for (const Form* page : sheetPages(command.sheet))
            accept(*page);
        return true;
    case Entry::openProfile:
    case Entry::saveProfile:
        session.profilePath = folder + "rider.pro";
        return true;
    case Entry::openFit:
        session.chosenRide = folder + "half-1.fit";
        return true;
    }
    return false;
}

constexpr FrontEnd window = {
    .runEntry = runEntry,
    .closeGraph = [] {},
    .openGraph = [] { session.graph.reset(); },
    .enableCommand = [](int, bool) {},
    .focusPane = [](bool) {},
    .showWaiting = [](std::string_view text) { somethingWaits = !text.empty(); },
    .sendCompletion =
        [] {
            mail.send([text = std::exchange(gathered, {})] { lowerText += text; });
            mail.send([] { protocol.endRun(); });
        },
    .postOpenWaiting = [] { mail.post([] { protocol.openWaiting(); }); },
    .runFrontEndCommand = [](const Command&) {},
    .serveWorker = [] { mail.serve(); },
};

bool isIdle()
{
    return mail.isEmpty() && protocol.workerBlock.ActiveCommand == 0 && protocol.workerBlock.busy == 0 &&
           !somethingWaits;
}

int anyCommand(std::mt19937& random)
{
    return commandTable()[random() % commandTable().size()].id;
}

// Starts the command again and again, and presses on while it runs.
void pressDuringRuns(int id)
{
    std::mt19937 random(static_cast<unsigned>(id));
    for (int round = 0; round < 3; ++round) {
        runBegan.reset();
        runMayGoOn.reset();
        mail.press(id);
        runBegan.waitFor(longEnough);
        mail.press(id);
        while (!mail.isEmpty())
            std::this_thread::sleep_for(1ms);
        runMayGoOn.set();
        for (int press = 0; press < 6; ++press) {
            mail.press(press == 0 ? id : anyCommand(random));
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 1000));
        }
        while (!isIdle())
            std::this_thread::sleep_for(1ms);
    }
}

class PressesTest : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        folder = ownFolder.path;
        for (const char* name : {"half-1.fit", "half-2.fit", "hills.fit", "no-laps.fit"})
            std::filesystem::copy_file(std::string(TORVANE_CHECKOUT "/samples/rides/") + name, folder + name);
        startFrom(session, defaultBlock());
        session.working.expressGraph = session.working.bandGraphPowerVelocity = session.working.bandGraphCornering = 1;
        session.screens = windowScreens;
        mail.pressesDuringRuns = 0;
        runMayGoOn.set();
        session.profilePath = folder + "rider.pro";
        findCommand("save-profile")->operation(session);
        protocol.startWorker(window, session);
    }
    void TearDown() override
    {
        ASSERT_TRUE(protocol.stopWorker());
    }
    // What a command shows that nobody disturbs.
    static std::string run(int id)
    {
        lowerText.clear();
        statusText.clear();
        protocol.handleCommand(id);
        EXPECT_EQ(protocol.workerBlock.ActiveCommand, id);
        while (!isIdle())
            mail.serve();
        return statusText + "\n" + lowerText;
    }

private:
    TestFolder ownFolder;
};

TEST_P(PressesTest, spoilNothing)
{
    int id = GetParam();
    std::string quiet = run(id);
    std::atomic<bool> pressing = true;
    std::thread user([&] {
        pressDuringRuns(id);
        pressing = false;
    });
    while (pressing)
        mail.serve();
    user.join();
    EXPECT_GE(mail.pressesDuringRuns, 3);
    EXPECT_EQ(run(id), quiet);
}

std::vector<int> longCommands()
{
    std::vector<int> found;
    for (const Command& command : commandTable())
        if (command.work == Work::worker)
            found.push_back(command.id);
    return found;
}

INSTANTIATE_TEST_SUITE_P(Commands, PressesTest, testing::ValuesIn(longCommands()), testing::PrintToStringParamName());

} // namespace
} // namespace torvane
