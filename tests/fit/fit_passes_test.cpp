// What the three passes gather from files made byte by byte.
#include "figures.h"
#include "fit/fit_builder.h"
#include "fit/fit_passes.h"
#include "fit/fit_survey.h"

#include <cstddef>
#include <cstring>
#include <tuple>
#include <utility>

namespace torvane {

namespace {

struct Gathered {
    StatusCode code = fitOk;
    RecordDefinitions recordDefinitions;
    std::vector<SessionLapEntry> sessions, laps;
};

Gathered gather(const FitBuilder& builder)
{
    Gathered all;
    FitImage image;
    image.data = builder.data;
    clearFitBlocks();
    all.code = scanFitMessages(image, all.recordDefinitions);
    if (all.code != fitOk)
        return all;
    all.sessions.resize(fitInventory.sessionCount + 1);
    all.laps.resize(fitInventory.lapCount + 1);
    all.code = extractFitMessages(image, all.sessions, all.laps);
    summariseFitMessages(all.sessions, all.laps);
    return all;
}

FitBuilder records(const std::vector<int64_t>& timestamps)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{253, 4}});
    for (int64_t timestamp : timestamps)
        builder.message(0, {timestamp});
    return builder;
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
    const FitInventory& found = fitInventory;
    EXPECT_EQ(found.fileType, 4); // the first field 0
    EXPECT_EQ((std::vector<uint32_t>{found.definitionCount, found.normalDataCount, found.compressedTimestampCount,
                                     found.recordDefinitionCount, found.recordCount, found.activityCount}),
              (std::vector<uint32_t>{7, 8, 1, 2, 3, 1}));
    EXPECT_EQ(found.sessionSport, (std::vector<uint8_t>{17}));
    EXPECT_EQ(found.lapSport, (std::vector<uint8_t>{1, 2}));
    ASSERT_EQ(all.recordDefinitions.size(), 2u);
    EXPECT_EQ(all.recordDefinitions[0].size(), 3u);
    const FitSummary& s = fitSummary;
    EXPECT_EQ(std::make_pair(s.sessionTotal, s.lapTotal), std::make_pair(uint16_t{1}, uint16_t{2}));
    EXPECT_EQ(std::make_pair(s.startTimestamp, s.endTimestamp), std::make_pair(1000, 1003));
    EXPECT_EQ(s.recordInterval, 1u);
    EXPECT_EQ((std::vector{s.firstLatitude, s.lastLatitude, s.firstLongitude, s.lastLongitude}),
              (std::vector{-11, -12, 21, 22})); // the last record has none
    EXPECT_EQ(s.totalTimer, 77000u);
}

// Of a field that a definition has twice the last one counts, but for the file type.
TEST(FitPasses, repeatedFields)
{
    FitBuilder builder;
    builder.define(0, messageFileId, {{0, 1}, {0, 1}}).message(0, {4, 6});
    builder.define(1, messageRecord, {{253, 4}, {253, 4}}).message(1, {900, 1000}).message(1, {901, 1005});
    builder.define(2, messageSession, {{5, 1}, {8, 4}, {5, 1}, {8, 4}}).message(2, {1, 10, 2, 20});
    builder.define(3, messageActivity, {{0, 4}, {0, 4}}).message(3, {70, 80});
    ASSERT_EQ(gather(builder).code, fitOk);
    EXPECT_EQ(fitInventory.fileType, 4);
    EXPECT_EQ(fitInventory.sessionSport, (std::vector<uint8_t>{2}));
    EXPECT_EQ(fitSummary.totalTimer, 80u);

    FitImage image;
    image.data = builder.data;
    SourceFileInfo info;
    ASSERT_EQ(surveyFitMessages(image, info), fitOk);
    expectFigures({info.fileType, info.startTimestamp, info.endTimestamp, info.recordInterval, info.activityTimer},
                  {4, 1000, 1005, 5, 80});
}

TEST(FitPasses, recordInterval)
{
    const std::tuple<const char*, std::vector<int64_t>, uint32_t, int32_t> cases[] = {
        {"no record", {}, 3600, 0},
        {"one record", {50}, 3600, 0},
        {"smallest step", {100, 105, 108, 120}, 3, 120},
        {"a longer step behind it", {100, 103, 107}, 3, 107},
        {"longer than an hour", {100, 9000}, 3600, 9000},
        {"backwards changes nothing", {100, 110, 50, 58}, 8, 58},
        {"equal timestamps", {100, 110, 110, 111}, 0, 111},
        {"a second ends the search", {100, 101, 101}, 1, 101},
        {"across the wrap of 32 bits", {0xFFFFFFFE, 3}, 5, 3},
    };
    for (const auto& [name, timestamps, interval, end] : cases) {
        ASSERT_EQ(gather(records(timestamps)).code, fitOk) << name;
        EXPECT_EQ(fitSummary.recordInterval, interval) << name;
        EXPECT_EQ(fitSummary.endTimestamp, end) << name;
    }
}

TEST(FitPasses, fieldsOfSessionsAndLaps)
{
    struct Row {
        size_t offset;    // in the entry
        int session, lap; // field numbers, -1 none
        size_t size;
    };
#define AT(member) offsetof(SessionLapEntry, member)
    constexpr Row rows[] = {
        {AT(sport), 5, 25, 1},
        {AT(timestamp), 253, 253, 4},
        {AT(startTime), 2, 2, 4},
        {AT(totalElapsed), 7, 7, 4},
        {AT(totalTimer), 8, 8, 4},
        {AT(totalMovingTime), 59, 52, 4},
        {AT(startLatitude), 3, 3, 4},
        {AT(startLongitude), 4, 4, 4},
        {AT(endLatitude), -1, 5, 4},
        {AT(endLongitude), -1, 6, 4},
        {AT(avgAltitude), 49, 42, 2},
        {AT(maxAltitude), 50, 43, 2},
        {AT(minAltitude), 71, 62, 2},
        {AT(totalCycles), 10, 10, 4},
        {AT(totalCalories), 11, -1, 2},
        {AT(totalFatCalories), 13, 12, 2},
        {AT(totalDistance), 9, 9, 4},
        {AT(avgSpeed), 14, 13, 2},
        {AT(maxSpeed), 15, 14, 2},
        {AT(avgHeartRate), 16, 15, 1},
        {AT(maxHeartRate), 17, 16, 1},
        {AT(minHeartRate), 64, 63, 1},
        {AT(avgCadence), 18, 17, 1},
        {AT(maxCadence), 19, 18, 1},
        {AT(avgPower), 20, 19, 2},
        {AT(maxPower), 21, 20, 2},
        {AT(normalizedPower), 34, 33, 2},
        {AT(avgTemperature), 57, 50, 1},
        {AT(maxTemperature), 58, 51, 1},
        {AT(gpsAccuracy), 51, 44, 1},
    };
#undef AT
    for (bool bigEndian : {false, true}) {
        for (bool lap : {false, true}) {
            std::vector<FitBuilder::Field> fields = {{200, 3}}; // unknown, in front
            std::vector<int64_t> values = {0};
            for (const Row& row : rows) {
                if ((lap ? row.lap : row.session) < 0)
                    continue;
                fields.push_back({lap ? row.lap : row.session, static_cast<int>(row.size)});
                values.push_back(row.size == 1 ? -row.session - 2 : row.size == 2 ? 40000 + row.lap : -70000 - row.lap);
            }
            FitBuilder builder;
            builder.define(5, lap ? messageLap : messageSession, fields, bigEndian).message(5, values);
            Gathered all = gather(builder);
            ASSERT_EQ(all.code, fitOk);
            const SessionLapEntry& entry = lap ? all.laps[0] : all.sessions[0];
            size_t next = 1;
            for (const Row& row : rows) {
                bool there = (lap ? row.lap : row.session) >= 0;
                uint32_t value = 0, expected = there ? static_cast<uint32_t>(values[next++]) : 0;
                std::memcpy(&value, reinterpret_cast<const char*>(&entry) + row.offset, row.size);
                EXPECT_EQ(value, expected & (0xFFFFFFFF >> (32 - 8 * row.size))) << row.offset << lap << bigEndian;
            }
        }
    }
}

TEST(FitPasses, lapCaloriesTakeThePlaceOfTheCycles)
{
    const std::tuple<std::vector<FitBuilder::Field>, std::vector<int64_t>, uint32_t> cases[] = {
        {{{10, 4}, {11, 4}}, {1000, 222}, 222}, {{{11, 4}, {10, 4}}, {222, 1000}, 1000}};
    for (const auto& [fields, values, cycles] : cases) {
        Gathered lap = gather(FitBuilder().define(0, messageLap, fields).message(0, values));
        EXPECT_EQ(lap.laps[0].totalCycles, cycles);
        EXPECT_EQ(lap.laps[0].totalCalories, 0);
        Gathered session = gather(FitBuilder().define(0, messageSession, fields).message(0, values));
        EXPECT_EQ(session.sessions[0].totalCycles, 1000u);
        EXPECT_EQ(session.sessions[0].totalCalories, 222);
    }
}

TEST(FitPasses, aFieldIsReadWithItsOwnWidth)
{
    // maxSpeed of one byte picks up its neighbour, and at the end of the payload a zero.
    Gathered all =
        gather(FitBuilder().define(0, messageSession, {{15, 1}, {16, 1}, {8, 2}}).message(0, {1, 2, 0x0403}));
    EXPECT_EQ(all.sessions[0].maxSpeed, 0x0201);
    EXPECT_EQ(all.sessions[0].totalTimer, 0x0403u);
    all = gather(FitBuilder().define(0, messageSession, {{8, 2}}, true).message(0, {0x0102}));
    EXPECT_EQ(all.sessions[0].totalTimer, 0x01020000u);
    // Of a wider one the first bytes count.
    all = gather(FitBuilder().define(0, messageSession, {{15, 4}}).message(0, {0x00050006}));
    EXPECT_EQ(all.sessions[0].maxSpeed, 6);
}

namespace {

// Two summaries of 3 and 1 records, and one record behind: a divisor of 5.
FitBuilder twoSummaries(uint16_t message, const std::vector<FitBuilder::Field>& fields,
                        const std::vector<int64_t>& first, const std::vector<int64_t>& second)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}}).define(1, message, fields);
    return builder.message(0, {0})
        .message(0, {0})
        .message(0, {0})
        .message(1, first)
        .message(0, {0})
        .message(1, second)
        .message(0, {0});
}

} // namespace

TEST(FitPasses, sumsExtremesAndMeans)
{
    const std::vector<FitBuilder::Field> fields = {{7, 4},  {8, 4},  {9, 4},  {11, 2}, {13, 2}, {14, 2}, {15, 2},
                                                   {16, 1}, {17, 1}, {64, 1}, {20, 2}, {21, 2}, {49, 2}, {71, 2},
                                                   {57, 1}, {58, 1}, {51, 1}, {34, 2}, {5, 1}};
    gather(
        twoSummaries(messageSession, fields,
                     {1000, 2000, 3000000, 40000, 5, 6000, 9000, 150, 160, 80, 200, 700, 2600, 2500, 20, -4, 3, 1, 2},
                     {1, 2000, 3, 40000, 6, 7000, 8000, 100, 170, 60, 100, 300, 3000, 2400, 21, -3, 5, 1, 2}));
    const FitSummary& s = fitSummary;
    EXPECT_EQ(s.totalElapsed, 1001u);
    EXPECT_EQ(s.totalTimer, 4000u); // no activity message
    EXPECT_EQ(s.totalDistance, 3000003u);
    EXPECT_EQ(s.totalCalories, 80000 - 65536);
    EXPECT_EQ(s.totalFatCalories, 11);
    EXPECT_EQ(s.avgSpeed, static_cast<uint16_t>(7500007)); // 30000.03 m in 4 s, in mm/s, low 16 bits
    EXPECT_EQ(s.maxSpeed, 9000);
    EXPECT_EQ(s.avgHeartRate, 110); // (3 x 150 + 100) / 5
    expectFigures({s.maxHeartRate, s.minHeartRate, s.avgPower, s.maxPower, s.avgAltitude, s.minAltitude},
                  {170, 60, 140, 700, 2160, 2400});
    EXPECT_EQ(s.avgTemperature, 16); // 81 / 5
    EXPECT_EQ(s.maxTemperature, -3);
    EXPECT_EQ(s.gpsAccuracy, 2); // 14 / 5
    EXPECT_EQ(s.normalizedPower, 0);
}

TEST(FitPasses, meansOfTheEntries)
{
    // Below zero a temperature has no meaning: 3 x -2 in 32 bits is 4294967290; divided by the 5 records 858993458, of
    // which the low byte stays.
    gather(twoSummaries(messageLap, {{50, 1}}, {-2}, {0}));
    EXPECT_EQ(static_cast<uint8_t>(fitSummary.avgTemperature), 858993458 & 0xFF);
    gather(twoSummaries(messageLap, {{13, 2}, {9, 4}}, {5000, 100}, {9000, 100}));
    EXPECT_EQ(fitSummary.avgSpeed, 4800); // without a timer the mean of the entries, 24000 / 5
}

TEST(FitPasses, sessionsComeBeforeLapsAndActivityKeepsTheTimer)
{
    FitBuilder builder = twoSummaries(messageLap, {{8, 4}, {9, 4}}, {10, 20}, {30, 40});
    gather(builder);
    EXPECT_EQ(fitSummary.totalTimer, 40u);
    EXPECT_EQ(fitSummary.totalDistance, 60u);
    builder.define(2, messageSession, {{8, 4}, {9, 4}}).message(2, {500, 700});
    builder.define(3, messageActivity, {{0, 4}}).message(3, {999});
    gather(builder);
    EXPECT_EQ(fitSummary.totalTimer, 999u);
    EXPECT_EQ(fitSummary.totalDistance, 700u);
}

TEST(FitPasses, withoutRecordsMeansStayZero)
{
    Gathered all = gather(FitBuilder().define(0, messageSession, {{16, 1}, {14, 2}, {7, 4}}).message(0, {99, 5000, 7}));
    EXPECT_EQ(all.code, fitOk);
    expectFigures({fitSummary.avgHeartRate, fitSummary.avgSpeed, fitSummary.totalElapsed}, {0, 0, 7});
}

} // namespace torvane
