// What the three passes gather from files made byte by byte.
#include "fit/fit_builder.h"
#include "fit/fit_passes.h"
#include "fit/fit_survey.h"
#include "fit/fit_types.h"

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
    EXPECT_EQ(fitInventory.fileType, 4); // the first field 0
    EXPECT_EQ(fitInventory.definitionCount, 7u);
    EXPECT_EQ(fitInventory.normalDataCount, 8u);
    EXPECT_EQ(fitInventory.compressedTimestampCount, 1u);
    EXPECT_EQ(fitInventory.recordDefinitionCount, 2u);
    EXPECT_EQ(fitInventory.recordCount, 3u);
    EXPECT_EQ(fitInventory.activityCount, 1u);
    EXPECT_EQ(fitInventory.sessionSport, (std::vector<uint8_t>{17}));
    EXPECT_EQ(fitInventory.lapSport, (std::vector<uint8_t>{1, 2}));
    ASSERT_EQ(all.recordDefinitions.size(), 2u);
    EXPECT_EQ(all.recordDefinitions[0].size(), 3u);
    EXPECT_EQ(fitSummary.sessionTotal, 1);
    EXPECT_EQ(fitSummary.lapTotal, 2);
    EXPECT_EQ(fitSummary.startTimestamp, 1000);
    EXPECT_EQ(fitSummary.endTimestamp, 1003);
    EXPECT_EQ(fitSummary.recordInterval, 1u);
    EXPECT_EQ(fitSummary.firstLatitude, -11);
    EXPECT_EQ(fitSummary.lastLatitude, -12); // the last record has none
    EXPECT_EQ(fitSummary.firstLongitude, 21);
    EXPECT_EQ(fitSummary.lastLongitude, 22);
    EXPECT_EQ(fitSummary.totalTimer, 77000u);
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
    EXPECT_EQ(info.fileType, 4);
    EXPECT_EQ(info.startTimestamp, 1000u);
    EXPECT_EQ(info.endTimestamp, 1005u);
    EXPECT_EQ(info.recordInterval, 5u);
    EXPECT_EQ(info.activityTimer, 80u);
}

TEST(FitPasses, recordInterval)
{
    struct Case {
        const char* name;
        std::vector<int64_t> timestamps;
        uint32_t interval;
        int32_t end;
    };
    const Case cases[] = {
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
    for (const Case& c : cases) {
        ASSERT_EQ(gather(records(c.timestamps)).code, fitOk) << c.name;
        EXPECT_EQ(fitSummary.recordInterval, c.interval) << c.name;
        EXPECT_EQ(fitSummary.endTimestamp, c.end) << c.name;
    }
}

TEST(FitPasses, fieldsOfSessionsAndLaps)
{
    struct Row {
        const char* name;
        int session, lap; // field numbers, -1 none
        int size;
        int64_t (*value)(const SessionLapEntry&);
    };
#define ROW(name, session, lap, size)                                                                                  \
    {                                                                                                                  \
#name, session, lap, size, [](const SessionLapEntry& e) -> int64_t { return e.name; }                          \
    }
    constexpr Row rows[] = {
        ROW(sport, 5, 25, 1),
        ROW(timestamp, 253, 253, 4),
        ROW(startTime, 2, 2, 4),
        ROW(totalElapsed, 7, 7, 4),
        ROW(totalTimer, 8, 8, 4),
        ROW(totalMovingTime, 59, 52, 4),
        ROW(startLatitude, 3, 3, 4),
        ROW(startLongitude, 4, 4, 4),
        ROW(endLatitude, -1, 5, 4),
        ROW(endLongitude, -1, 6, 4),
        ROW(avgAltitude, 49, 42, 2),
        ROW(maxAltitude, 50, 43, 2),
        ROW(minAltitude, 71, 62, 2),
        ROW(totalCycles, 10, 10, 4),
        ROW(totalCalories, 11, -1, 2),
        ROW(totalFatCalories, 13, 12, 2),
        ROW(totalDistance, 9, 9, 4),
        ROW(avgSpeed, 14, 13, 2),
        ROW(maxSpeed, 15, 14, 2),
        ROW(avgHeartRate, 16, 15, 1),
        ROW(maxHeartRate, 17, 16, 1),
        ROW(minHeartRate, 64, 63, 1),
        ROW(avgCadence, 18, 17, 1),
        ROW(maxCadence, 19, 18, 1),
        ROW(avgPower, 20, 19, 2),
        ROW(maxPower, 21, 20, 2),
        ROW(normalizedPower, 34, 33, 2),
        ROW(avgTemperature, 57, 50, 1),
        ROW(maxTemperature, 58, 51, 1),
        ROW(gpsAccuracy, 51, 44, 1),
    };
#undef ROW
    for (bool bigEndian : {false, true}) {
        for (bool lap : {false, true}) {
            std::vector<FitBuilder::Field> fields = {{200, 3}}; // unknown, in front
            std::vector<int64_t> values = {0};
            for (const Row& row : rows) {
                if ((lap ? row.lap : row.session) < 0)
                    continue;
                fields.push_back({lap ? row.lap : row.session, row.size});
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
                int64_t expected = there ? values[next++] : 0;
                int64_t mask = row.size == 4 ? 0xFFFFFFFF : row.size == 2 ? 0xFFFF : 0xFF;
                EXPECT_EQ(row.value(entry) & mask, expected & mask) << row.name << lap << bigEndian;
            }
        }
    }
}

TEST(FitPasses, lapCaloriesTakeThePlaceOfTheCycles)
{
    struct Case {
        std::vector<FitBuilder::Field> fields;
        std::vector<int64_t> values;
        uint32_t cycles;
    };
    const Case cases[] = {{{{10, 4}, {11, 4}}, {1000, 222}, 222}, {{{11, 4}, {10, 4}}, {222, 1000}, 1000}};
    for (const Case& c : cases) {
        Gathered lap = gather(FitBuilder().define(0, messageLap, c.fields).message(0, c.values));
        EXPECT_EQ(lap.laps[0].totalCycles, c.cycles);
        EXPECT_EQ(lap.laps[0].totalCalories, 0);
        Gathered session = gather(FitBuilder().define(0, messageSession, c.fields).message(0, c.values));
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

TEST(FitPasses, recordsCountForTheSummaryBehindThem)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}}).define(1, messageLap, {{19, 2}}).define(2, messageSession, {{20, 2}});
    for (int i = 0; i < 5; ++i)
        builder.message(0, {0});
    builder.message(1, {0}).message(0, {0}).message(1, {0}).message(2, {0}).message(0, {0}).message(0, {0});
    Gathered all = gather(builder);
    ASSERT_EQ(all.laps.size(), 3u);
    EXPECT_EQ(all.laps[0].recordCount, 5);
    EXPECT_EQ(all.laps[1].recordCount, 1);
    EXPECT_EQ(all.laps[2].recordCount, 2);
    EXPECT_EQ(all.sessions[0].recordCount, 6);
    EXPECT_EQ(all.sessions[1].recordCount, 2);
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
    gather(
        twoSummaries(messageSession,
                     {{7, 4},
                      {8, 4},
                      {9, 4},
                      {11, 2},
                      {13, 2},
                      {14, 2},
                      {15, 2},
                      {16, 1},
                      {17, 1},
                      {64, 1},
                      {20, 2},
                      {21, 2},
                      {49, 2},
                      {71, 2},
                      {57, 1},
                      {58, 1},
                      {51, 1},
                      {34, 2},
                      {5, 1}},
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
    EXPECT_EQ(s.maxHeartRate, 170);
    EXPECT_EQ(s.minHeartRate, 60);
    EXPECT_EQ(s.avgPower, 140);
    EXPECT_EQ(s.maxPower, 700);
    EXPECT_EQ(s.avgAltitude, 2160);
    EXPECT_EQ(s.minAltitude, 2400);
    EXPECT_EQ(s.avgTemperature, 16); // 81 / 5
    EXPECT_EQ(s.maxTemperature, -3);
    EXPECT_EQ(s.gpsAccuracy, 2); // 14 / 5
    EXPECT_EQ(s.normalizedPower, 0);
}

TEST(FitPasses, averageSpeedWithoutATimerIsTheMeanOfTheEntries)
{
    gather(twoSummaries(messageLap, {{13, 2}, {9, 4}}, {5000, 100}, {9000, 100}));
    EXPECT_EQ(fitSummary.avgSpeed, 4800); // 24000 / 5
}

TEST(FitPasses, averageTemperatureBelowZeroHasNoMeaning)
{
    // 3 x -2 in 32 bits is 4294967290; divided by the 5 records 858993458, of which the low byte stays.
    gather(twoSummaries(messageLap, {{50, 1}}, {-2}, {0}));
    EXPECT_EQ(static_cast<uint8_t>(fitSummary.avgTemperature), 858993458 & 0xFF);
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
    EXPECT_EQ(fitSummary.avgHeartRate, 0);
    EXPECT_EQ(fitSummary.avgSpeed, 0);
    EXPECT_EQ(fitSummary.totalElapsed, 7u);
}

TEST(FitPasses, tablesGrow)
{
    FitBuilder builder;
    for (int i = 0; i < 40; ++i)
        builder.define(0, messageRecord, {{253, 4}, {200, 250}, {201, 250}}).message(0, {1000 + i, 0, 0});
    builder.define(1, messageSession, {{5, 1}}).define(2, messageLap, {{25, 1}, {9, 4}});
    for (int i = 0; i < 700; ++i)
        builder.message(1, {2}).message(2, {2, 10});
    Gathered all = gather(builder);
    EXPECT_EQ(all.code, fitOk);
    EXPECT_EQ(all.recordDefinitions.size(), 40u);
    EXPECT_EQ(fitInventory.sessionSport.size(), 700u);
    EXPECT_EQ(all.laps[699].totalDistance, 10u);
    EXPECT_EQ(all.laps[0].recordCount, 40);
}

TEST(FitPasses, anOverrunIsTold)
{
    FitBuilder builder = records({1, 2});
    builder.put(0);
    EXPECT_EQ(gather(builder).code, fitInvalid);
    EXPECT_EQ(fitInventory.recordCount, 2u);
    EXPECT_EQ(gather(FitBuilder()).code, fitOk);
    EXPECT_EQ(fitInventory.definitionCount, 0u);
}

TEST(FitTypes, names)
{
    struct Case {
        int type;
        const char* name;
    };
    for (Case c : {Case{0, "unknown file type"},
                   {1, "device file"},
                   {4, "activity file"},
                   {8, "unknown file type"},
                   {14, "blood pressure file"},
                   {15, "monitoring file"},
                   {28, "monitoring file"},
                   {32, "monitoring file"},
                   {35, "segment file"},
                   {40, "configuration file"},
                   {41, "unknown file type"}})
        EXPECT_STREQ(fileTypeName(static_cast<uint8_t>(c.type)), c.name) << c.type;
    EXPECT_STREQ(sportName(5), "swiming");
    EXPECT_STREQ(sportName(7), "");
    EXPECT_EQ(sportValue(7), 8);
    EXPECT_EQ(sportValue(8), 254);
    EXPECT_EQ(sportValue(-1), 0);
    EXPECT_EQ(sportValue(9), 0);
}

} // namespace torvane
