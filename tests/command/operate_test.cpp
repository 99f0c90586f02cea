// Runs that are asked to stop: whatever the command, they end with a status of their own and leave no file.
#include "command/operate.h"

#include "captured_screens.h"
#include "cli/console_fixture.h"
#include "command/fill.h"
#include "command/settings_command.h"
#include "fit/fit_codes.h"

namespace torvane {
namespace {

struct StoppedRun {
    const char* command;
    std::vector<Assignment> entries = {};
    bool takesFiles = true;
    bool writes = true;
};

const StoppedRun stoppedRuns[] = {
    {"convert", {{"fitFormat", "legacy"}}},
    {"add", {{"addLap", "on"}}},
    {"timestamp", {{"hours", "1"}}},
    {"dump"},
    {"prepare"},
    {"at-one-stroke"},
    {"ride"},
    {"plan", {{"effort", "normalised"}}},
    {"load", {}, true, false},
    {"calibrate", {}, true, false},
    {"compare", {}, true, false},
    {"acceleration", {}, false, false},
    {"inclination-and-velocity", {}, false, false},
};

using OperateTest = ConsoleTest;

TEST_F(OperateTest, whatIsAskedToStopDoesAndWritesNothing)
{
    std::string source = put("ride.fit", plainRide(5000)), destination = in + "out.fit";
    for (const StoppedRun& run : stoppedRuns)
        for (int atPercent : {0, 40}) {
            SCOPED_TRACE(testing::Message() << run.command << " at " << atPercent << " %");
            CapturedScreens shown;
            StopRequest stop;
            Session session = {shown.screens};
            session.screens.stop = &stop;
            session.screens.setProgress = [&](int percent) {
                if (percent >= atPercent)
                    stop.ask();
            };
            const Command* command = findCommand(run.command);
            ASSERT_TRUE(command);
            RunFiles files;
            if (run.takesFiles)
                files = {{source}, run.writes ? destination : ""};
            Filling filling = {session, *command, run.entries, files};
            session.chosenRide = source;
            session.inputs.files[0].path = session.inputs.files[1].path = source;
            chooseCalculator(*command, session.working);
            ASSERT_TRUE(command->form == 0 || fillDialog(filling))
                << (filling.boxes.empty() ? "" : filling.boxes[0].text);
            if (command->commit)
                command->commit(session.saved, session.working);
            EXPECT_EQ(operate(*command, session), statusStopped);
            EXPECT_EQ(shown.status, "status : stopped");
            EXPECT_EQ(session.figures.values.size(), 0u);
            EXPECT_EQ(session.ride.path, "");
            EXPECT_FALSE(std::filesystem::exists(destination));
            EXPECT_EQ(std::distance(std::filesystem::directory_iterator(in), {}), 1);
        }
}

// More parts than one walk fills: the second walk moves its progress behind the first files.
TEST_F(OperateTest, aDivisionThatHasBegunToWriteWritesAllParts)
{
    constexpr int laps = 200;
    FitBuilder fit;
    fit.define(0, 0, {{0, 1, 0}}).message(0, {4}).define(1, 20, {{253, 4, 0x86}}).define(2, 19, {{253, 4, 0x86}});
    for (int lap = 0; lap < laps; ++lap)
        fit.message(1, {1'000'000'000 + lap}).message(2, {1'000'000'000 + lap});
    std::string source = put("ride.fit", fit.file());
    StopRequest stop;
    Session session;
    session.screens.stop = &stop;
    session.screens.setProgress = [&](int) {
        if (std::distance(std::filesystem::directory_iterator(in), {}) > 1)
            stop.ask();
    };
    const Command* divide = findCommand("divide");
    Filling filling = {session, *divide, {}, {{source}, in + "part.fit"}};
    ASSERT_TRUE(fillDialog(filling));
    EXPECT_EQ(operate(*divide, session), fitDivided);
    EXPECT_TRUE(stop.isAsked());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(in), {}), 1 + laps);
}

} // namespace
} // namespace torvane
