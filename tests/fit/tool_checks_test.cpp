// Every refusal of every tool, in its order: each test starts with all faults at once and mends one after the other.
#include "figures.h"
#include "tool_fixture.h"

namespace torvane {

namespace {

const Bytes noFit = {14, 0x10, 0, 0, 0, 0, 0, 0, 'G', 'P', 'X', '!', 0, 0};

FitBuilder ride(std::vector<int64_t> times, std::vector<FitBuilder::Field> moreFields = {})
{
    FitBuilder file = fitFile();
    std::vector<FitBuilder::Field> fields = {{253, 4, 0x86}};
    fields.insert(fields.end(), moreFields.begin(), moreFields.end());
    file.define(1, 20, fields);
    std::vector<int64_t> values(fields.size());
    for (int64_t time : times) {
        values[0] = time;
        file.message(1, values);
    }
    return file;
}

Bytes withBrokenCrc(Bytes file)
{
    file.back() ^= 0xFF;
    return file;
}

TEST(ToolChecks, Destination)
{
    ToolBench bench;
    // Behind the folder: a path, and what it becomes or which box it brings.
    constexpr std::pair<const char*, const char*> cases[] = {
        {"ride.fit", "ride.fit"},
        {"ride.FIT", "ride.FIT"},
        {"ride.Fit", "ride.Fit.fit"},
        {"ride", "ride.fit"},
        {"", "not existing filename for a destination file"},
        {"none/ride.fit", "not existing directory for a destination file"},
    };
    for (auto [name, result] : cases) {
        std::string path = bench.folder.path + name;
        Verdict verdict;
        bool passed = checkDestinationPath(path, verdict);
        EXPECT_EQ(passed ? path : verdict.boxes[0].text, passed ? bench.folder.path + result : result) << name;
    }
    Verdict verdict;
    std::string bare = "ride.fit";
    for (auto [name, result] : {std::pair("dump.fit", "/dump.fit.csv"), std::pair("DUMP.CSV", "/DUMP.CSV")}) {
        EXPECT_TRUE(checkDumpDestination(bench.to(name).inputs, verdict)) << name;
        EXPECT_TRUE(bench.inputs.files[toolDestination].path.ends_with(result)) << name;
    }
    EXPECT_FALSE(checkDestinationPath(bare, verdict));
}

TEST(ToolChecks, Combine)
{
    ToolBench bench;
    auto refusal = [&] { return bench.boxes(checkCombine); };
    std::string& first = bench.inputs.files[0].path;
    first = bench.folder.path + "missing.fit";
    bench.from(withBrokenCrc(ride({100, 101}).file()), 2).to("none/out.fit");
    EXPECT_EQ(refusal(), "error: found an invalid fullpath of a source file");
    first = bench.inputs.files[2].path;
    EXPECT_EQ(refusal(), "error: too few source file for combine fit files");
    EXPECT_EQ(bench.inputs.files[2].path, "") << "the same file twice counts once";
    first = bench.write("course.fit", fitFile(false, 6).file());
    bench.inputs.files[2].path = bench.folder.path + "in2.fit";
    EXPECT_EQ(refusal(), "error: not existing directory for a destination file");
    bench.to("");
    EXPECT_EQ(refusal(), "error: not existing filename for a destination file");
    bench.to("out");
    EXPECT_EQ(refusal(), "error: failed to read a source file which might be invalid structure");
    bench.from(ride({2000, 500}, {{13, 1}}).file(), 2);
    EXPECT_EQ(refusal(), "error: found an invalid file id type of a source file");
    first = bench.write("ride.fit", ride({1000, 1001}).file());
    EXPECT_EQ(refusal(), "error: found timestamp duplication between source files");
    bench.from(ride({900, 905}, {{13, 1}}).file(), 2); // overlaps, which is no fault
    EXPECT_EQ(refusal(), "error: found different condition about existings of remarkable fields between source files");
    bench.from(ride({900, 905}).file(), 2);
    EXPECT_EQ(refusal(), "error: found different recording time-intervals between source files");
    bench.from(ride({900, 901}).file(), 2);
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(bench.inputs.files[toolDestination].path, bench.folder.path + "out.fit");
}

// The conversion and the shift share their check but not their options.
TEST(ToolChecks, ConvertAndTimestamp)
{
    for (Check check : {checkConvert, checkTimestamp}) {
        ToolBench bench;
        auto refusal = [&] { return bench.boxes(check); };
        OutputChoice& output = check == checkConvert ? bench.options.convertOutput : bench.options.timestampOutput;
        output.convertEnabled = 1;
        bench.to("none/out.fit");
        EXPECT_EQ(refusal(), "error: not existing a source file");
        EXPECT_EQ(bench.from(noFit).boxes(check), "error: detect an invalid source file structure");
        bench.from(withBrokenCrc(ride({}).file(12))); // only the header is looked at
        EXPECT_EQ(refusal(), "warning: no need to convert cause the source file is formated as legacy format");
        output.fitFormat = 1;
        EXPECT_EQ(refusal(), "error: not existing directory for a destination file");
        bench.from(ride({}).file(14));
        EXPECT_EQ(refusal(), "warning: no need to convert cause the source file is formated as modern format");
        bench.from(ride({}).file(13));
        EXPECT_EQ(refusal(), "error: detected an invalid source file structure");
        output.convertEnabled = 0;
        EXPECT_EQ(refusal(), "error: not existing directory for a destination file");
        EXPECT_EQ(bench.to("out.fit").boxes(check), "");
    }
}

// The steps that adding, dividing and excluding begin with. Leaves a good header and CRC, and a course.
void checkActivityRefusals(ToolBench& bench, Check check, const char* surveyRefusal)
{
    bench.to("none/out.fit");
    EXPECT_EQ(bench.boxes(check), "error: not existing a source file");
    EXPECT_EQ(bench.from(noFit).boxes(check), "error: detect an invalid source file structure");
    Bytes course = fitFile(false, 6).file();
    EXPECT_EQ(bench.from(withBrokenCrc(course)).boxes(check), surveyRefusal);
    FitBuilder cut = fitFile();
    cut.put(0x40); // the definition ends with the block
    EXPECT_EQ(bench.from(cut.file()).boxes(check), surveyRefusal);
    EXPECT_EQ(bench.from(course).boxes(check), "error: found an invalid file id type of a source file");
}

TEST(ToolChecks, AddMessages)
{
    ToolBench bench;
    bench.options.addLap = bench.options.addSession = bench.options.addActivity = 1;
    checkActivityRefusals(bench, checkAddMessages,
                          "error: failed to read a source file which might be an invalid structure");
    EXPECT_EQ(bench.from(fitFile().file()).boxes(checkAddMessages), "error: not existing record message");
    FitBuilder summaries = fitFile();
    summaries.define(5, 34, {}).define(2, 18, {}).define(9, 19, {});
    EXPECT_EQ(bench.from(summaries.file()).boxes(checkAddMessages),
              "warning: session message is already existing in a source file\n"
              "warning: activity message is already existing in a source file\n"
              "warning: lap message is already existing in a source file\nerror: not existing record message");
    expectFigures({bench.options.addLap, bench.options.addSession, bench.options.addActivity}, {0, 0, 0});
    FitBuilder sessions = ride({100});
    sessions.define(2, 18, {}).message(2, {}).message(2, {});
    for (int local = 3; local < 16; ++local)
        sessions.define(local, 200, {});
    bench.from(sessions.file());
    bench.options.addLap = bench.options.addActivity = 1;
    EXPECT_EQ(bench.boxes(checkAddMessages),
              "warning: lap message could not be added to a fit file with much session messages than record "
              "definitions.\nthat might be a rare case strange architecture in guessing.\n"
              "error: no free local message type in a source file");
    EXPECT_EQ(bench.options.addLap, 0);
    bench.options.addActivity = 0;
    EXPECT_EQ(bench.boxes(checkAddMessages), "error: not existing directory for a destination file");
    bench.options.addActivity = 1;
    EXPECT_EQ(bench.to("out.fit").from(ride({100}).file()).boxes(checkAddMessages), "");
}

TEST(ToolChecks, Divide)
{
    ToolBench bench;
    checkActivityRefusals(bench, checkDivide, "error: failed to read a source file which might be invalid structure");
    FitBuilder single = ride({100});
    single.define(2, 18, {}).message(2, {}).define(3, 19, {}).message(3, {});
    EXPECT_EQ(bench.from(single.file()).boxes(checkDivide), "error: found no condition for divide a source file");
    single.message(3, {});
    EXPECT_EQ(bench.from(single.file()).boxes(checkDivide), "error: not existing directory for a destination file");
    EXPECT_EQ(bench.to("out.fit").boxes(checkDivide), "");
    EXPECT_EQ(bench.from(ride({100}).define(2, 20, {}).file()).boxes(checkDivide), "");
    for (int lap = 2; lap <= 10'000; ++lap) {
        single.message(3, {});
    }
    EXPECT_EQ(bench.from(single.file()).boxes(checkDivide), "error: found too many parts for divide a source file");
}

TEST(ToolChecks, Exclude)
{
    ToolBench bench;
    ParameterBlock& options = bench.options;
    options.excludeLap = options.excludeSession = options.excludeActivity = 1;
    checkActivityRefusals(bench, checkExclude,
                          "error: failed to read a source file which might be an invalid structure");
    FitBuilder redefined = fitFile();
    redefined.define(2, 19, {}).message(2, {}).define(2, 20, {}); // the lap's local type is a record's at the end
    bench.from(redefined.file());
    for (std::string kind : {"lap", "session", "activity"})
        EXPECT_EQ(bench.boxes(checkExclude), "warning: " + kind + " message is not existing in a source file");
    expectFigures({options.excludeLap, options.excludeSession, options.excludeActivity}, {0, 0, 0});
    redefined.define(3, 34, {});
    options.excludeActivity = 1;
    EXPECT_EQ(bench.from(redefined.file()).boxes(checkExclude), "error: not existing directory for a destination file");
    EXPECT_EQ(bench.to("out.fit").boxes(checkExclude), "");
}

} // namespace

} // namespace torvane
