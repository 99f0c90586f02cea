// Coherence, presence, readiness and the raw rows of a loaded ride.
#include "fit/fit_builder.h"
#include "gps/gps_load.h"

namespace torvane {

namespace {

FitImage imageOf(const FitBuilder& builder)
{
    FitImage image;
    image.data = builder.data;
    return image;
}

// A file of records with these fields alone, loaded.
StatusCode loadFields(const std::vector<int>& numbers)
{
    std::vector<FitBuilder::Field> fields;
    for (int number : numbers)
        fields.push_back({number, 4});
    FitBuilder builder;
    builder.define(1, messageRecord, fields).message(1, std::vector<int64_t>(fields.size(), 0));
    StatusCode code = gatherActivity(imageOf(builder));
    setFieldPresence();
    setReadiness();
    return code;
}

} // namespace

TEST(GpsLoad, coherence)
{
    struct Case {
        const char* name;
        std::vector<int> sessions, laps;           // sports
        std::vector<std::vector<int>> definitions; // field numbers
        StatusCode code;
    };
    const Case cases[] = {
        {"one session, one lap", {2}, {1}, {{253}}, 0},
        {"nothing", {}, {}, {}, 0},
        {"sessions agree, laps differ", {2, 2}, {1, 2}, {}, 0},
        {"third session differs", {2, 2, 1}, {2}, {}, 32769},
        {"laps differ without a session", {}, {2, 1}, {}, 32770},
        {"one session, laps differ", {2}, {2, 1}, {}, 0},
        {"altitude added", {}, {}, {{253, 0, 1}, {253, 0, 1, 2}}, 32772},
        {"same OR of the numbers", {}, {}, {{1, 2}, {3}}, 0},
        {"other fields do not count", {}, {}, {{253, 5, 52}, {5, 253, 8, 31}}, 0},
        {"temperature counts", {}, {}, {{4}, {4, 13}}, 32772},
        {"third definition differs", {}, {}, {{4}, {4}, {5}}, 32772},
        {"sessions and fields", {1, 2}, {}, {{4}, {5}}, 32773},
        {"laps and fields", {}, {1, 2}, {{4}, {5}}, 32774},
    };
    for (const Case& c : cases) {
        FitBuilder builder;
        builder.define(1, messageSession, {{5, 1}}).define(2, messageLap, {{25, 1}});
        for (int sport : c.sessions)
            builder.message(1, {sport});
        for (int sport : c.laps)
            builder.message(2, {sport});
        for (const std::vector<int>& numbers : c.definitions) {
            std::vector<FitBuilder::Field> fields;
            for (int number : numbers)
                fields.push_back({number, 1});
            builder.define(3, messageRecord, fields);
        }
        EXPECT_EQ(gatherActivity(imageOf(builder)), c.code) << c.name;
    }
}

TEST(GpsLoad, readiness)
{
    struct Case {
        const char* name;
        std::vector<int> fields;
        uint32_t readiness;
    };
    const Case cases[] = {
        {"speed alone", {6}, 0},
        {"distance, time and position", {5, 253, 0, 1}, 0},
        {"distance and time", {5, 253}, 1},
        {"distance and position without time", {5, 0, 1}, 1},
        {"distance, time, longitude", {5, 253, 1}, 1},
        {"time and position", {253, 0, 1}, 1},
        {"speed, cadence and power", {6, 4, 7}, 2},
        {"speed and cadence", {6, 4}, 0},
        {"cadence and power", {4, 7}, 1},
        {"distance without time, cadence, power", {5, 4, 7}, 1},
    };
    for (const Case& c : cases) {
        ASSERT_EQ(loadFields(c.fields), fitOk);
        EXPECT_EQ(static_cast<uint32_t>(analysisReadiness), c.readiness) << c.name;
    }
}

TEST(GpsLoad, presenceOfDefinedFields)
{
    loadFields({253, 0, 1, 2, 5, 6, 13, 3, 4, 52, 7, 31});
    const FieldPresence& p = fieldPresence;
    EXPECT_EQ(p.isActivity, 0);
    EXPECT_EQ(p.hasRecords, 1);
    EXPECT_EQ(p.timestampFlags, 0x01);
    EXPECT_EQ(p.positionFlags, 0x11);
    EXPECT_EQ(p.altitudeFlags, 0x01);
    EXPECT_EQ(p.motionFlags, 0x11);
    EXPECT_EQ(p.temperatureFlags, 0x01);
    EXPECT_EQ(p.heartRateFlags, 0x01);
    EXPECT_EQ(p.cadenceFlags, 0x11);
    EXPECT_EQ(p.powerFlags, 0x01);
    EXPECT_EQ(p.accuracyFlags, 0x01);

    fitSummary.totalElapsed = fitSummary.totalDistance = 1;
    fitSummary.firstLatitude = fitSummary.lastLongitude = -1;
    fitSummary.maxAltitude = fitSummary.avgSpeed = fitSummary.maxSpeed = fitSummary.normalizedPower = 1;
    fitSummary.avgTemperature = -1;
    fitSummary.avgHeartRate = fitSummary.maxCadence = fitSummary.gpsAccuracy = 1;
    fitInventory.fileType = 4;
    setFieldPresence();
    EXPECT_EQ(p.isActivity, 1);
    EXPECT_EQ(p.timestampFlags, 0x11);
    EXPECT_EQ(p.positionFlags, 0x53);
    EXPECT_EQ(p.altitudeFlags, 0x05);
    EXPECT_EQ(p.motionFlags, 0x73);
    EXPECT_EQ(p.temperatureFlags, 0x03);
    EXPECT_EQ(p.heartRateFlags, 0x03);
    EXPECT_EQ(p.cadenceFlags, 0x15);
    EXPECT_EQ(p.powerFlags, 0x09);
    EXPECT_EQ(p.accuracyFlags, 0x03);
}

TEST(GpsLoad, presenceIsThatOfTheLowestSlotLeftAtTheEnd)
{
    FitBuilder builder;
    builder.define(4, messageRecord, {{6, 2}}).define(9, messageRecord, {{6, 2}, {31, 1}});
    ASSERT_EQ(gatherActivity(imageOf(builder)), fitOk);
    setFieldPresence();
    EXPECT_EQ(fieldPresence.accuracyFlags, 0);
    builder.define(4, messageLap, {{25, 1}});
    ASSERT_EQ(gatherActivity(imageOf(builder)), fitOk);
    setFieldPresence();
    EXPECT_EQ(fieldPresence.accuracyFlags, 1);
    builder.define(9, messageLap, {{25, 1}});
    ASSERT_EQ(gatherActivity(imageOf(builder)), fitOk);
    setFieldPresence();
    EXPECT_EQ(fieldPresence.hasRecords, 1);
    EXPECT_EQ(fieldPresence.motionFlags, 0);
}

TEST(GpsLoad, rowsHoldWhatTheFileHas)
{
    for (bool bigEndian : {false, true}) {
        FitBuilder builder;
        builder.define(2, messageRecord,
                       {{253, 4}, {0, 4}, {1, 4}, {2, 2}, {5, 4}, {6, 2}, {13, 1}, {3, 1}, {4, 1}, {7, 2}, {99, 7}},
                       bigEndian);
        builder.message(2, {900000000, 1 << 30, -(1 << 29), 3333, 123456, 8765, -1, 140, 90, 300, 0});
        builder.message(2, {900000001, 0, 0, 0xFFFF, -100, 0, 21, 0, 255, 0, 0});
        GpsRecords rows(3);
        ASSERT_EQ(fillRecords(imageOf(builder), rows), fitOk);
        EXPECT_EQ(rows[0].timestamp, 900000000u);
        EXPECT_EQ(rows[0].latitude, 90.0);
        EXPECT_EQ(rows[0].longitude, -45.0);
        EXPECT_DOUBLE_EQ(rows[0].altitude, 166.6);
        EXPECT_DOUBLE_EQ(rows[0].distance, 1234.56);
        EXPECT_DOUBLE_EQ(rows[0].speed, 8.765);
        EXPECT_EQ(rows[0].temperature, 255); // no sign here
        EXPECT_EQ(rows[0].heartRate, 140);
        EXPECT_EQ(rows[0].cadence, 90);
        EXPECT_EQ(rows[0].power, 300);
        EXPECT_EQ(rows[0].sector, 0u);
        EXPECT_EQ(rows[1].altitude, 12607.0); // the "invalid" marker counts as a number
        EXPECT_EQ(rows[1].distance, -1.0);
        EXPECT_EQ(rows[2].timestamp, 0u);
    }
}

TEST(GpsLoad, compressedTimestampsHaveNoOffset)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}})
        .define(2, messageRecord, {{253, 4}})
        .define(1, messageRecord, {{253, 4}});
    builder.compressed(0, 9, {1}).message(2, {1000}).compressed(0, 9, {1}).compressed(0, 31, {1});
    builder.message(2, {1024}).compressed(0, 5, {1}).compressed(1, 5, {2001}).compressed(0, 5, {1});
    GpsRecords rows(9);
    ASSERT_EQ(fillRecords(imageOf(builder), rows), fitOk);
    // 1000 is 31 x 32 + 8 and goes on to 32 x 32; 1024 has no low bits; 2001 is 62 x 32 + 17
    constexpr uint32_t expected[] = {0, 1000, 1024, 1024, 1024, 1024, 2001, 2016, 0};
    for (size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i].timestamp, expected[i]) << i;
}

TEST(GpsLoad, recordsBeyondTheArrayAreWalkedOver)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}}).message(0, {50}).message(0, {60});
    GpsRecords one(1);
    EXPECT_EQ(fillRecords(imageOf(builder), one), fitOk);
    EXPECT_EQ(one[0].heartRate, 50);
    builder.put(0);
    EXPECT_EQ(fillRecords(imageOf(builder), one), fitInvalid);
}

} // namespace torvane
