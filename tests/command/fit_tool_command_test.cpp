// What the FIT tools leave in the panes and on the status line, and real rides through them where there are any.
#include "captured_screens.h"
#include "command/fit_tool_command.h"
#include "fit/tool_fixture.h"
#include "gps/gps_load.h"

namespace torvane {

namespace {

// The tool on the global records that a command reads.
class FitToolCommand : public testing::Test {
protected:
    ToolBench bench;
    CapturedScreens captured;
    ParameterBlock before = workingBlock;

    ~FitToolCommand() override
    {
        workingBlock = before;
        clearToolInputs(toolInputs);
    }
    ResultStatus run(Check check, ResultStatus (*command)())
    {
        EXPECT_EQ(bench.boxes(check), std::vector<std::string>());
        toolInputs = bench.inputs;
        workingBlock = bench.options;
        return command();
    }
};

Bytes wholeRide(int64_t start)
{
    FitBuilder file = fitFile();
    file.define(1, 20, {{253, 4}}).message(1, {start}).message(1, {start + 1});
    file.define(2, 19, {{25, 1}}).message(2, {2}).message(1, {start + 2}).message(2, {2});
    return file.file();
}

TEST_F(FitToolCommand, SuccessIsTold)
{
    struct Case {
        Check check;
        ResultStatus (*command)();
        ResultStatus code;
        const char* status;
    };
    const Case cases[] = {
        {checkCombine, combineCommand, 0x7FF3, "status : success to combine source fit files to 'out.fit'"},
        {checkConvert, convertCommand, 0x7FF4, "status : success to convert a fit file to 'out.fit'"},
        {checkAddMessages, addMessagesCommand, 0x7FF5, "status : success to add messages to 'out.fit'"},
        {checkDivide, divideCommand, 0x7FF6, "status : success to divide a fit file to 'out_000.fit, out_001.fit'"},
        {checkExclude, excludeCommand, 0x7FF5, "status : success to add messages to 'out.fit'"},
        {checkTimestamp, increaseTimestampCommand, 0x7FF4, "status : success to convert a fit file to 'out.fit'"},
    };
    bench.options.addSession = bench.options.excludeLap = 1;
    bench.from(wholeRide(1000)).from(wholeRide(2000), 1);
    for (const Case& c : cases) {
        captured.lower = "kept";
        EXPECT_EQ(run(c.check, c.command), c.code);
        EXPECT_EQ(captured.status, c.status);
        EXPECT_EQ(captured.lower, "kept");
    }
    captured.status = "kept";
    EXPECT_EQ(run(checkFieldDump, fieldDumpCommand), 0u);
    EXPECT_EQ(captured.status, "kept");
    EXPECT_TRUE(captured.messages.empty());
}

TEST_F(FitToolCommand, FailureNamesTheSourceOrTheCombinedFile)
{
    struct Case {
        Check check;
        ResultStatus (*command)();
        const char* text; // behind "status : " and in the lower pane
    };
    const Case cases[] = {
        {checkCombine, combineCommand, "failed to combine fit files to 'out.fit'"},
        {checkConvert, convertCommand, "failed to convert a fit file 'in0.fit'"},
        {checkAddMessages, addMessagesCommand, "failed to add messages to a fit file 'in0.fit'"},
        {checkDivide, divideCommand, "failed to divide a fit file 'in0.fit'"},
        {checkExclude, excludeCommand, "failed to add messages to a fit file 'in0.fit'"},
        {checkTimestamp, increaseTimestampCommand, "failed to convert a fit file 'in0.fit'"},
    };
    bench.options.addSession = bench.options.excludeLap = 1;
    bench.from(wholeRide(1000)).from(wholeRide(2000), 1);
    for (const char* folder : {"out.fit", "out_001.fit", "out.csv"}) // in the way of the outputs
        std::filesystem::create_directory(bench.folder.path + folder);
    for (const Case& c : cases) {
        run(c.check, c.command);
        EXPECT_EQ(captured.status, std::string("status : ") + c.text);
        EXPECT_EQ(captured.lower, std::string("\n\t") + c.text);
    }
    EXPECT_TRUE(std::filesystem::exists(bench.folder.path + "out_000.fit")) << "parts written before stay";
    bench.to("out.csv");
    EXPECT_NE(run(checkFieldDump, fieldDumpCommand), 0u);
    ASSERT_EQ(captured.messages.size(), 1u);
    EXPECT_EQ(captured.messages[0], (std::pair<std::string, std::string>("error", "failed to create a file")));
}

StatusCode load(const std::string& path)
{
    clearFitBlocks();
    FitImage image = {};
    StatusCode code = loadFitImage(image, path);
    return code != fitOk ? code : gatherActivity(image);
}

// Only where the folder of recorded rides stands beside the checkout.
TEST_F(FitToolCommand, EachPartOfARideOfSevenSportsLoads)
{
    const std::string ride = TORVANE_CHECKOUT "/../shared/rides/multisport-7-sessions.fit";
    if (!std::filesystem::exists(ride))
        GTEST_SKIP() << "no " << ride;
    EXPECT_EQ(load(ride), fitSessionSportsDiffer);
    bench.inputs.files[0].path = ride;
    ASSERT_EQ(run(checkDivide, divideCommand), fitDivided);
    for (int part = 0; part < 7; part++) {
        std::string path = bench.folder.path + "out_00" + std::to_string(part) + ".fit";
        EXPECT_EQ(load(path), fitOk) << path;
        EXPECT_EQ(fitInventory.sessionCount, 1u);
    }
    EXPECT_FALSE(std::filesystem::exists(bench.folder.path + "out_007.fit"));
}

} // namespace

} // namespace torvane
