// What the three passes gather from files made byte by byte.
#include "figures.h"
#include "fit/fit_builder.h"
#include "fit/fit_passes.h"

#include <tuple>

namespace torvane {

namespace {

struct Gathered {
    StatusCode code = fitOk;
    FitContents contents = {};
    RecordDefinitions recordDefinitions;
    std::vector<SessionLapEntry> sessions, laps;
};

Gathered gather(const FitBuilder& builder)
{
    Gathered all;
    FitImage image = imageOf(builder.data);
    const FitInventory& inventory = all.contents.inventory;
    all.code = scanFitMessages(image, all.contents, all.recordDefinitions);
    if (all.code != fitOk)
        return all;
    all.sessions.resize(inventory.sessionCount + 1);
    all.laps.resize(inventory.lapCount + 1);
    all.code = extractFitMessages(image, all.contents, all.sessions, all.laps);
    summariseFitMessages(all.contents, all.sessions, all.laps);
    return all;
}

FitSummary summaryOf(const FitBuilder& builder)
{
    return gather(builder).contents.summary;
}

} // namespace

TEST(FitPasses, counts)
{
    FitBuilder builder;
    builder.define(0, messageFileId, {{3, 4}, {0, 1}, {0, 1}}).message(0, {9, 4, 6});
    builder.define(1, messageRecord, {{253, 4}, {0, 4}, {1, 4}})
        .message(1, {1000, -11, 21})
        .compressed(1, 3, {1002, -12, 22});
    builder.define(2, messageRecord, {{253, 4}}).message(2, {1003});
    builder.define(3, messageLap, {{25, 1}}).message(3, {1}).message(3, {2});
    builder.define(3, messageSession, {{5, 1}}).message(3, {17});
    builder.define(3, messageActivity, {{0, 4}}).message(3, {77000});
    builder.define(3, 4711, {{0, 1}}).message(3, {1});
    Gathered all = gather(builder);
    ASSERT_EQ(all.code, fitOk);
    const FitInventory& found = all.contents.inventory;
    // The file type is in the first field 0.
    expectFigures({found.fileType, found.definitionCount, found.normalDataCount, found.compressedTimestampCount,
                   found.recordDefinitionCount, found.recordCount, found.activityCount},
                  {4, 7, 8, 1, 2, 3, 1});
    EXPECT_EQ(found.sessionSport, (std::vector<uint8_t>{17}));
    EXPECT_EQ(found.lapSport, (std::vector<uint8_t>{1, 2}));
    ASSERT_EQ(all.recordDefinitions.size(), 2u);
    EXPECT_EQ(all.recordDefinitions[0].size(), 3u);
    const FitSummary& s = all.contents.summary; // the last record has no position
    expectFigures({s.sessionTotal, s.lapTotal, s.startTimestamp, s.endTimestamp, s.recordInterval, s.firstLatitude,
                   s.lastLatitude, s.firstLongitude, s.lastLongitude, s.totalTimer},
                  {1, 2, 1000, 1003, 1, -11, -12, 21, 22, 77000});
}

TEST(FitPasses, recordInterval)
{
    // The smallest step counts, 3600 where there is none; a step backwards changes nothing, a second ends the search.
    const std::tuple<std::vector<int64_t>, uint32_t, int32_t> cases[] = {
        {{}, 3600, 0},
        {{50}, 3600, 0},
        {{100, 105, 108, 120}, 3, 120},
        {{100, 9000}, 3600, 9000},
        {{100, 110, 50, 58}, 8, 58},
        {{100, 110, 110, 111}, 0, 111},
        {{100, 101, 101}, 1, 101},
        {{0xFFFFFFFE, 3}, 5, 3},
    };
    for (const auto& [timestamps, interval, end] : cases) {
        FitBuilder builder = FitBuilder().define(0, messageRecord, {{253, 4}});
        for (int64_t timestamp : timestamps)
            builder.message(0, {timestamp});
        FitSummary summary = summaryOf(builder);
        EXPECT_EQ(summary.recordInterval, interval) << testing::PrintToString(timestamps);
        EXPECT_EQ(summary.endTimestamp, end) << testing::PrintToString(timestamps);
    }
}

namespace {

// Two summaries of 3 and 1 records, and one record behind: a divisor of 5.
FitBuilder twoSummaries(uint16_t message, const std::vector<FitBuilder::Field>& fields,
                        const std::vector<int64_t>& first, const std::vector<int64_t>& second)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}}).define(1, message, fields);
    builder.message(0, {0}).message(0, {0}).message(0, {0}).message(1, first);
    return builder.message(0, {0}).message(1, second).message(0, {0});
}

} // namespace

// Of sessions, and of laps, whose fields have other numbers.
TEST(FitPasses, sumsExtremesAndMeans)
{
    const std::vector<FitBuilder::Field> fields[] = {
        {{7, 4},  {8, 4},  {9, 4},  {11, 2}, {13, 2}, {14, 2}, {15, 2}, {16, 1}, {17, 1},
         {64, 1}, {20, 2}, {21, 2}, {49, 2}, {50, 2}, {71, 2}, {57, 1}, {58, 1}, {51, 1},
         {34, 2}, {5, 1},  {18, 1}, {19, 1}, {59, 4}, {2, 4},  {3, 4},  {4, 4},  {253, 4}},
        {{7, 4},  {8, 4},  {9, 4},  {10, 4}, {12, 2}, {13, 2}, {14, 2},  {15, 1}, {16, 1}, {63, 1},
         {19, 2}, {20, 2}, {42, 2}, {43, 2}, {62, 2}, {50, 1}, {51, 1},  {44, 1}, {33, 2}, {25, 1},
         {17, 1}, {18, 1}, {52, 4}, {2, 4},  {3, 4},  {4, 4},  {253, 4}, {5, 4},  {6, 4}}};
    std::vector<int64_t> first = {1000, 2000, 3000000, 40000, 5,  6000, 9000, 150, 160, 80,  200,  700, 2600, 2700,
                                  2500, 20,   -4,      3,     71, 2,    80,   110, 900, 901, -902, 903, 904};
    std::vector<int64_t> second = {1,    2000, 3,  40000, 6, 7000, 8000, 100, 170, 60, 100, 300, 3000, 3100,
                                   2400, 21,   -3, 5,     1, 2,    30,   120, 1,   0,  0,   0,   0};
    for (bool lap : {false, true}) {
        SCOPED_TRACE(lap);
        if (lap) {
            first.insert(first.end(), {-905, 906});
            second.insert(second.end(), {0, 0});
        }
        Gathered all = gather(twoSummaries(lap ? messageLap : messageSession, fields[lap], first, second));
        const FitSummary& s = all.contents.summary;
        // Without an activity message the timers add up. A session's calories and the speed, 30000.03 m in 4 s, keep
        // their low 16 bits; means are over the five records: of heart rates (3 x 150 + 100) / 5.
        int calories = lap ? 0 : 80000 - 65536, cycles = lap ? 80000 : 0, speed = 7500007 & 0xFFFF;
        expectFigures({s.totalElapsed, s.totalTimer,     s.totalDistance,  s.totalCalories, s.totalFatCalories,
                       s.avgSpeed,     s.maxSpeed,       s.avgHeartRate,   s.maxHeartRate,  s.minHeartRate,
                       s.avgPower,     s.maxPower,       s.avgAltitude,    s.maxAltitude,   s.minAltitude,
                       s.totalCycles,  s.avgTemperature, s.maxTemperature, s.gpsAccuracy,   s.normalizedPower,
                       s.avgCadence,   s.maxCadence,     s.totalMovingTime},
                      {1001, 4000, 3000003, calories, 11, speed, 9000, 110, 170, 60,  140, 700,
                       2160, 3100, 2400,    cycles,   16, -3,    2,    0,   54,  120, 901});
        const SessionLapEntry& e = lap ? all.laps[0] : all.sessions[0];
        expectFigures({e.normalizedPower, e.sport, e.startTime, e.startLatitude, e.startLongitude, e.timestamp,
                       e.endLatitude, e.endLongitude},
                      {71, 2, 901, -902, 903, 904, lap ? -905 : 0, lap ? 906 : 0});
    }
}

TEST(FitPasses, meansOfTheEntries)
{
    // Below zero a temperature has no meaning: 3 x -2 in 32 bits is 4294967290; divided by the 5 records 858993458, of
    // which the low byte stays.
    FitSummary cold = summaryOf(twoSummaries(messageLap, {{50, 1}}, {-2}, {0}));
    EXPECT_EQ(static_cast<uint8_t>(cold.avgTemperature), 858993458 & 0xFF);
    FitSummary fast = summaryOf(twoSummaries(messageLap, {{13, 2}, {9, 4}}, {5000, 100}, {9000, 100}));
    EXPECT_EQ(fast.avgSpeed, 4800); // without a timer the mean of the entries, 24000 / 5
}

} // namespace torvane
