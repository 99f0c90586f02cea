// Added messages, byte for byte; their values come from hand arithmetic over a few records.
#include "fit/running_set.h"
#include "tool_fixture.h"

namespace torvane {

namespace {

using Fields = std::vector<FitBuilder::Field>;
using Values = std::vector<int64_t>;

const Fields recordFields = {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85},  {2, 2, 0x84}, {3, 1, 2},
                             {4, 1, 2},      {5, 4, 0x86}, {6, 2, 0x84},  {7, 2, 0x84}, {13, 1, 1},
                             {18, 1, 2},     {31, 1, 2},   {33, 2, 0x84}, {99, 1, 2}};

// Five records, the third one below the threshold of 10 kph or 2777 mm/s by one.
const Values records[] = {
    {1000, 100, 200, 2600, 120, 80, 1000, 5000, 200, -3, 3, 4, 1, 0, 7},
    {1002, 110, 210, 2590, 130, 0, 1900, 4000, 0, -5, 2, 6, 2, 0, 7},
    {1003, 999, 999, 9999, 200, 200, 9999, 2776, 999, 99, 99, 99, 999, 0, 7},
    {1003, 120, 190, 2611, 110, 91, 2500, 2777, 301, -9, 1, 2, 0, 0, 7},
    {1010, 130, -220, 2599, 100, 0, 4000, 6000, 0, -2, 0, 0, 5, 0, 7},
};

// Steps of 2, 1 and 7 s: 2 and 1 were the smallest so far when they came, so the timer is 3 s. 30 m in 3 s.
// The maximum of temperatures starts from 0.
const Fields lapFields = {{253, 4, 0x86}, {2, 4, 0x86},  {7, 4, 0x86},  {8, 4, 0x86},  {3, 4, 0x85},  {5, 4, 0x85},
                          {4, 4, 0x85},   {6, 4, 0x85},  {42, 2, 0x84}, {62, 2, 0x84}, {43, 2, 0x84}, {15, 1, 2},
                          {63, 1, 2},     {16, 1, 2},    {17, 1, 2},    {18, 1, 2},    {9, 4, 0x86},  {13, 2, 0x84},
                          {14, 2, 0x84},  {19, 2, 0x84}, {20, 2, 0x84}, {50, 1, 1},    {51, 1, 1},    {10, 4, 6},
                          {44, 1, 2},     {11, 2, 0x84}, {25, 1, 2}};
const Values lapValues = {1010, 1000, 10,   3000,  0,    130, 0,   -220, 2600, 2590, 2611, 115, 100, 130,
                          85,   91,   3000, 10000, 6000, 250, 301, -4,   0,    6,    3,    8,   1};
const Fields sessionFields = {{253, 4, 0x86}, {2, 4, 0x86},  {7, 4, 0x86},  {8, 4, 0x86},  {3, 4, 0x85},
                              {4, 4, 0x85},   {49, 2, 0x84}, {71, 2, 0x84}, {50, 2, 0x84}, {16, 1, 2},
                              {64, 1, 2},     {17, 1, 2},    {18, 1, 2},    {19, 1, 2},    {9, 4, 0x86},
                              {14, 2, 0x84},  {15, 2, 0x84}, {20, 2, 0x84}, {21, 2, 0x84}, {57, 1, 1},
                              {58, 1, 1},     {10, 4, 6},    {51, 1, 2},    {11, 2, 0x84}, {5, 1, 2}};
const Values sessionValues = {1010, 1000, 10,    3000, 0,   0,   2600, 2590, 2611, 115, 100, 130, 85,
                              91,   3000, 10000, 6000, 250, 301, -4,   0,    6,    3,   8,   1};

void addRide(FitBuilder& file, bool bigEndian)
{
    file.define(3, 21, {{253, 4}}, bigEndian).message(3, {999});
    file.define(1, 20, recordFields, bigEndian, {{0, 1}});
    for (const Values& record : records)
        file.message(1, record);
}

class AddMessages : public BothByteOrders {
protected:
    FitBuilder source = fitFile(bigEndian);
    FitBuilder expected = fitFile(bigEndian, 4, marked);

    AddMessages()
    {
        bench.options.thresholdSpeed = 10;
        bench.options.addOutput.sportIndex = 1; // written although sportEnabled is clear
    }
    StatusCode add()
    {
        return bench.from(source.file()).run(checkAddMessages, runAddMessages);
    }
};

INSTANTIATE_TEST_SUITE_P(BigEndian, AddMessages, testing::Bool());

TEST_P(AddMessages, AllThreeBehindTheRecordsOfOneDefinition)
{
    bench.options.addLap = bench.options.addSession = bench.options.addActivity = 1;
    addRide(source, bigEndian);
    ASSERT_EQ(add(), fitAdded);
    addRide(expected, bigEndian);
    expected.define(2, 19, lapFields, bigEndian).message(2, lapValues);
    expected.define(4, 18, sessionFields, bigEndian).message(4, sessionValues);
    expected.define(5, 34, {{253, 4, 0x86}, {0, 4, 0x86}, {5, 4, 0x86}, {1, 2, 4}}, bigEndian);
    expected.message(5, {1010, 3000, 1010, 1});
    EXPECT_TRUE(sameBytes(bench.output(), expected.file()));
}

TEST_P(AddMessages, ExcludingTakesAllOfThemOutAgain)
{
    addRide(source, bigEndian);
    FitBuilder damaged = source;
    damaged.define(4, 19, {{8, 4}}, bigEndian).message(4, {1}).define(5, 18, {{8, 4}}, bigEndian).message(5, {2});
    damaged.define(6, 34, {{0, 4}}, bigEndian).message(6, {3});
    bench.options.excludeLap = bench.options.excludeSession = bench.options.excludeActivity = 1;
    bench.from(damaged.file());
    ASSERT_EQ(bench.run(checkExclude, runExclude), fitAdded);
    EXPECT_TRUE(sameBytes(bench.output(), source.file()));
}

// The source's session gives the timer, its activity moves to the end, and sports are replaced on the way.
TEST_P(AddMessages, LapBesideSessionAndActivityOfTheSource)
{
    bench.options.addLap = 1;
    bench.options.thresholdSpeed = 0;
    bench.options.addOutput.sportEnabled = 1;
    for (FitBuilder* file : {&source, &expected}) {
        file->define(1, 20, {{253, 4, 0x86}, {5, 4, 0x86}}, bigEndian).message(1, {1000, 0}).message(1, {1001, 700});
        file->define(3, 34, {{0, 4}, {1, 2}}, bigEndian);
    }
    source.message(3, {600, 9}).define(2, 18, {{8, 4}, {5, 1}}, bigEndian).message(2, {5000, 2});
    ASSERT_EQ(add(), fitAdded);
    expected.define(2, 18, {{8, 4}, {5, 1}}, bigEndian).message(2, {5000, 1});
    expected.define(4, 19, {{253, 4, 0x86}, {2, 4, 0x86}, {7, 4, 0x86}, {8, 4, 0x86}, {9, 4, 0x86}, {25, 1, 2}},
                    bigEndian);
    expected.message(4, {1001, 1000, 1, 5000, 700, 1}).message(3, {600, 1});
    EXPECT_TRUE(sameBytes(bench.output(), expected.file()));
}

TEST_P(AddMessages, SessionToSegmentsWithLapsAndActivityIsRefusedByTheSize)
{
    bench.options.addSession = 1;
    bench.options.thresholdSpeed = 0;
    for (int segment = 0; segment < 2; ++segment) {
        source.define(1, 20, {{253, 4, 0x86}}, bigEndian).message(1, {1000});
        source.define(2, 19, {{8, 4}}, bigEndian).message(2, {1});
    }
    source.define(3, 34, {{0, 4}}, bigEndian).message(3, {1});
    EXPECT_EQ(add(), fitInvalid);
    EXPECT_EQ(bench.outcome.path, bench.inputs.files[0].path);
    EXPECT_FALSE(std::filesystem::exists(bench.folder.path + "out.fit"));
}

// Local type 0 of the activity means something else in the end: its definition is written again where the laps of the
// source bring it along, behind the first segment.
TEST_P(AddMessages, ActivityWhoseLocalTypeIsDefinedAnew)
{
    Fields time = {{253, 4, 0x86}}, timer = {{0, 4, 0x86}};
    bench.options.thresholdSpeed = 0;
    bench.options.addSession = bench.options.addActivity = 1;
    auto rest = [&](FitBuilder& file) -> FitBuilder& {
        file.define(2, 20, time, bigEndian).message(2, {1200}).define(3, 19, {{25, 1}}, bigEndian).message(3, {2});
        return file.define(0, 34, timer, bigEndian);
    };
    auto session = [&](int64_t at) {
        expected.define(4, 18, {{253, 4, 0x86}, {2, 4, 0x86}, {7, 4, 0x86}, {8, 4, 0x86}, {5, 1, 2}}, bigEndian);
        expected.message(4, {at, at, 0, 0, 1});
    };
    for (FitBuilder* file : {&source, &expected})
        file->define(1, 20, time, bigEndian).message(1, {1000});
    rest(source).message(0, {7777}).define(0, 23, time, bigEndian).message(0, {1100});
    ASSERT_EQ(add(), fitAdded);
    expected.define(0, 34, timer, bigEndian).message(0, {7777});
    session(1000);
    rest(expected).define(0, 23, time, bigEndian).message(0, {1100});
    session(1200);
    expected.define(5, 34, {{253, 4, 0x86}, {0, 4, 0x86}, {5, 4, 0x86}, {1, 2, 4}}, bigEndian);
    expected.message(5, {1200, 0, 1200, 2});
    EXPECT_TRUE(sameBytes(bench.output(), expected.file()));
}

TEST(RunningSet, AverageSpeedWrapsFrom43KilometresOn)
{
    RunningSet set = {};
    set.entry.totalTimer = 5'000'000;
    set.entry.totalDistance = 4'294'967;
    finaliseSessionLap(set);
    EXPECT_EQ(set.entry.avgSpeed, 8589); // 42.94967 km in 5000 s
    set.entry.totalDistance++;
    finaliseSessionLap(set);
    EXPECT_EQ(set.entry.avgSpeed, 0);
}

} // namespace

} // namespace torvane
