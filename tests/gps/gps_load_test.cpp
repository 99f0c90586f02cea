// Coherence, presence, readiness and the raw rows of a loaded ride.
#include "figures.h"
#include "fit/fit_builder.h"
#include "gps/gps_load.h"

#include <tuple>
#include <utility>

namespace torvane {

namespace {

struct Load {
    LoadedRide ride;
    StatusCode code;

    explicit Load(const FitBuilder& builder) : ride{imageOf(builder.data)}, code(gatherActivity(ride)) {}
};

std::vector<FitBuilder::Field> fieldsOf(const std::vector<int>& numbers)
{
    std::vector<FitBuilder::Field> fields;
    for (int number : numbers)
        fields.push_back({number, 4});
    return fields;
}

// A file of records with these fields alone, loaded.
Load loadFields(const std::vector<int>& numbers)
{
    FitBuilder builder;
    builder.define(1, messageRecord, fieldsOf(numbers)).message(1, std::vector<int64_t>(numbers.size(), 0));
    return Load(builder);
}

} // namespace

TEST(GpsLoad, tablesFarBeyondTheFileAreRefused)
{
    for (int message : {messageRecord, messageSession, messageLap})
        for (int size : {0, 2}) {
            FitBuilder builder;
            builder.define(1, message, {{6, size}});
            for (int i = 0; i < 100; ++i)
                builder.message(1, {1});
            EXPECT_EQ(Load(builder).code, size == 0 ? fitTooLarge : fitOk) << message << ' ' << size;
        }
}

TEST(GpsLoad, coherence)
{
    // Sports of the sessions, sports of the laps, field numbers of the record definitions.
    const std::tuple<const char*, std::vector<int>, std::vector<int>, std::vector<std::vector<int>>, StatusCode>
        cases[] = {
            {"one session, one lap", {2}, {1}, {{253}}, 0},
            {"sessions agree, laps differ", {2, 2}, {1, 2}, {}, 0},
            {"third session differs", {2, 2, 1}, {2}, {}, 32769},
            {"laps differ without a session", {}, {2, 1}, {}, 32770},
            {"altitude added", {}, {}, {{253, 0, 1}, {253, 0, 1, 2}}, 32772},
            {"same OR of the numbers", {}, {}, {{1, 2}, {3}}, 0},
            {"other fields do not count", {}, {}, {{253, 5, 52}, {5, 253, 8, 31}}, 0},
            {"temperature counts", {}, {}, {{4}, {4, 13}}, 32772},
            {"sessions and fields", {1, 2}, {}, {{4}, {5}}, 32773},
            {"laps and fields", {}, {1, 2}, {{4}, {5}}, 32774},
        };
    for (const auto& [name, sessions, laps, definitions, code] : cases) {
        FitBuilder builder;
        builder.define(1, messageSession, {{5, 1}}).define(2, messageLap, {{25, 1}});
        for (int sport : sessions)
            builder.message(1, {sport});
        for (int sport : laps)
            builder.message(2, {sport});
        for (const std::vector<int>& numbers : definitions)
            builder.define(3, messageRecord, fieldsOf(numbers));
        EXPECT_EQ(Load(builder).code, code) << name;
    }
}

TEST(GpsLoad, readiness)
{
    const std::pair<std::vector<int>, uint32_t> cases[] = {
        {{6}, 0},         {{5, 253, 0, 1}, 0}, {{5, 253}, 1}, {{5, 0, 1}, 1}, {{5, 253, 1}, 1},
        {{253, 0, 1}, 1}, {{6, 4, 7}, 2},      {{6, 4}, 0},   {{4, 7}, 1},    {{5, 4, 7}, 1}};
    for (const auto& [fields, readiness] : cases) {
        Load load = loadFields(fields);
        ASSERT_EQ(load.code, fitOk) << testing::PrintToString(fields);
        EXPECT_EQ(static_cast<uint32_t>(load.ride.readiness), readiness) << testing::PrintToString(fields);
    }
}

TEST(GpsLoad, presenceOfDefinedFields)
{
    LoadedRide ride = loadFields({253, 0, 1, 2, 5, 6, 13, 3, 4, 52, 7, 31}).ride;
    auto presence = [&] {
        const FieldPresence& p = ride.presence;
        return std::vector<int>{p.isActivity,    p.hasRecords,  p.timestampFlags,   p.positionFlags,
                                p.altitudeFlags, p.motionFlags, p.temperatureFlags, p.heartRateFlags,
                                p.cadenceFlags,  p.powerFlags,  p.accuracyFlags};
    };
    EXPECT_EQ(presence(), (std::vector{0, 1, 0x01, 0x11, 0x01, 0x11, 0x01, 0x01, 0x11, 0x01, 0x01}));
    FitSummary& s = ride.summary;
    s.totalElapsed = s.totalDistance = 1;
    s.firstLatitude = s.lastLongitude = s.avgTemperature = -1;
    s.maxAltitude = s.avgSpeed = s.maxSpeed = s.normalizedPower = s.avgHeartRate = s.maxCadence = s.gpsAccuracy = 1;
    ride.inventory.fileType = 4;
    setFieldPresence(ride);
    EXPECT_EQ(presence(), (std::vector{1, 1, 0x11, 0x53, 0x05, 0x73, 0x03, 0x03, 0x15, 0x09, 0x03}));
}

TEST(GpsLoad, rowsHoldWhatTheFileHas)
{
    for (bool bigEndian : {false, true}) {
        SCOPED_TRACE(bigEndian ? "big-endian" : "little-endian");
        FitBuilder builder;
        builder.define(
            2, messageRecord,
            {{253, 4}, {0, 4}, {1, 4}, {2, 2}, {5, 4}, {6, 2}, {13, 1}, {3, 1}, {4, 1}, {7, 2}, {99, 7}, {3, 1}},
            bigEndian);
        builder.message(2, {900000000, 1 << 30, -(1 << 29), 3333, 123456, 8765, -1, 139, 90, 300, 0, 140});
        builder.message(2, {900000001, 0, 0, 0xFFFF, -100, 0, 21, 0, 255, 0, 0, 0});
        GpsRecords rows(3);
        ASSERT_EQ(fillRecords(imageOf(builder.data), rows), fitOk);
        const GpsRecord& r = rows[0]; // a temperature has no sign here; of two heart rates the last one counts
        expectFigures({r.timestamp, r.latitude, r.longitude, r.temperature, r.heartRate, r.cadence, r.power, r.sector},
                      {900000000, 90, -45, 255, 140, 90, 300, 0});
        expectFigures({r.altitude, r.distance, r.speed}, {166.6, 1234.56, 8.765}, 1e-12);
        // The "invalid" marker counts as a number.
        expectFigures({rows[1].altitude, rows[1].distance, rows[2].timestamp}, {12607, -1, 0});
    }
}

TEST(GpsLoad, compressedTimestampsHaveNoOffset)
{
    FitBuilder builder;
    builder.define(0, messageRecord, {{3, 1}}).define(2, messageRecord, {{253, 4}});
    builder.define(1, messageRecord, {{253, 4}});
    builder.compressed(0, 9, {1}).message(2, {1000}).compressed(0, 9, {1}).compressed(0, 31, {1});
    builder.message(2, {1024}).compressed(0, 5, {1}).compressed(1, 5, {2001}).compressed(0, 5, {1});
    GpsRecords rows(9);
    ASSERT_EQ(fillRecords(imageOf(builder.data), rows), fitOk);
    // 1000 is 31 x 32 + 8 and goes on to 32 x 32; 1024 has no low bits; 2001 is 62 x 32 + 17
    constexpr uint32_t expected[] = {0, 1000, 1024, 1024, 1024, 1024, 2001, 2016, 0};
    for (size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i].timestamp, expected[i]) << i;
}

} // namespace torvane
