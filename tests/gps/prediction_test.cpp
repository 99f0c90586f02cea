// The model along a track: conditions of a row, cadence and power, brake heat, statistics. The main law: a ride that
// the model itself made with a known power comes back with that power.
#include "gps/prediction.h"

#include "figures.h"
#include "gps/analysis.h"
#include "gps/ride_maker.h"
#include "gps/sectors.h"
#include "gps/track.h"
#include "gps/track_brake_heat.h"
#include "model/brake_heat.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace torvane {

struct PredictionTest : ModelTest {
    LoadedRide ride = {.presence = {0, 0, 0x11, 0x77, 7, 0x73, 0, 0, 0, 0, 0}};

    BrakeRecords brakes = {};

    void predict(GpsRecords& records, uint32_t flags)
    {
        predictAndFinish(model, records, block, ride.summary, flags, nullptr, &brakes);
    }
    // The model at the last row.
    Evaluation predictRows(GpsRecords& records, uint32_t flags)
    {
        TrackModel track = startTrackModel(model, block, ride.summary, flags);
        runPasses(records.size(), {predictTrack(track, records)});
        return track.now;
    }
    void analyse(GpsRecords& records, Physics physics = Physics::classic)
    {
        uint32_t flags = buildAnalysisFlags(block, ride.presence, physics);
        ASSERT_TRUE(formSectors(records, block.thresholdSpeed / 3.6, flags));
        refineTrack(records, block.analyseUnrealInclination, block.analyseUnrealAccele, flags);
        predict(records, flags);
    }
};

namespace {

// One row on a slope, and the one before it a second earlier.
GpsRecords pairOfRows(double speed, double inclination)
{
    GpsRecords records(2);
    for (uint32_t i = 0; i < 2; ++i) {
        records[i].sector = 1;
        records[i].timestamp = 100 + i;
        records[i].speed = speed;
        records[i].inclination = inclination;
    }
    return records;
}

} // namespace

TEST_F(PredictionTest, aRideOfTheModelComesBackWithItsPower)
{
    constexpr Physics road = Physics::ofTheRoad;
    // The bounds of mean and row are shares of the power.
    const std::tuple<const char*, MadeRide, bool, double, double> cases[] = {
        {"flat", {.hillHeight = 0}, false, 0.002, 0.012},
        {"hills", {}, false, 0.002, 0.025},
        {"hills, strong rider, cold", {.power = 350, .temperature = 2}, false, 0.002, 0.025},
        {"wind from everywhere", {.hillHeight = 0, .windSpeed = 4, .windDirection = 250}, false, 0.002, 0.02},
        // Means of windows in which every row slows down are trimmed on one side only and overstate the braking.
        {"hills, smoothed", {}, true, 0.04, 0.2},
        {"noise", {.speedNoise = 0.1, .altitudeNoise = 0.3, .positionNoise = 3}, true, 0.04, 1},
        {"road, hills of 1 km", {.hillLength = 1000, .physics = road}, true, 0.005, 0.25},
        {"road, hills of 4 km", {.hillLength = 4000, .physics = road}, true, 0.005, 0.05},
        {"road, above 1000 m, cold", {.foot = 1500, .temperature = -3, .physics = road}, true, 0.005, 0.05},
        {"road, out and back", {.hillHeight = 20, .turnsAfter = 5000, .windSpeed = 4, .physics = road}, true, 0.005, 1},
        {"road, out and back, hills of 1 km",
         {.hillHeight = 15, .hillLength = 1000, .turnsAfter = 5000, .windSpeed = 4, .physics = road},
         true,
         0.005,
         1},
    };
    for (const auto& [name, made, smoothing, meanBound, rowBound] : cases) {
        block.analyseSmoothing = smoothing;
        block.analyseWindSpeed = made.windSpeed;
        block.analyseWindDirection = static_cast<int32_t>(made.windDirection);
        block.averageTemperature = made.temperature;
        GpsRecords records = makeRide(model, made);
        analyse(records, made.physics);
        double sum = 0;
        for (const GpsRecord& record : records)
            sum += record.power;
        EXPECT_NEAR(sum / made.power / made.seconds, 1, meanBound) << name;
        for (size_t i = 20; i + 20 < records.size(); ++i)
            EXPECT_NEAR(records[i].power / made.power, 1, rowBound) << name << ", row " << i;
    }
}

TEST_F(PredictionTest, airAndTemperatureOfARow)
{
    m.hectoPascal = 0.7 * seaLevelPressure;
    // Flags, temperature, pressure ratio: the standard atmosphere at 1000 m by the temperature on the ground, on a flat
    // course the air of 50 m, without timestamps that of the condition.
    constexpr std::tuple<uint32_t, double, double> cases[] = {
        {0, 15, 0.8870},
        {analysisAverageTemperature, 10, 0.8850},
        {analysisRecordTemperature, 30, 0.8923},
        {analysisFlat, 15, 0.9941},
        {analysisNoTimestamps, 15, 0.7},
        {analysisNoTimestamps | analysisFlat, 15, 0.9941},
    };
    block.averageTemperature = 15;
    ride.summary.avgTemperature = 10;
    for (auto [flags, temperature, pressureRatio] : cases) {
        GpsRecords records = pairOfRows(8, 0);
        for (GpsRecord& record : records) {
            record.altitude = 1000;
            record.temperature = 30;
        }
        Evaluation last = predictRows(records, flags);
        EXPECT_EQ(records[1].temperature, temperature) << flags;
        EXPECT_NEAR(last.airRatio, pressureRatio, 0.0001) << flags;
    }
}

TEST_F(PredictionTest, windIsTakenAlongTheHeadingAndTheLimitHolds)
{
    constexpr double cases[][2] = {{90, 1}, {270, -1}, {0, 0}, {150, 0.5}};
    block.analyseWindDirection = 90;
    block.analyseWindSpeed = 1;
    block.limitPowerPrediction = 1;
    block.thresholdPower = 100;
    for (auto [heading, headWind] : cases) {
        GpsRecords records = pairOfRows(12, 0);
        records[1].heading = heading;
        EXPECT_NEAR(predictRows(records, 0).headWind, headWind, 1e-12) << heading;
        EXPECT_EQ(records[1].power, 100) << heading;
    }
}

TEST_F(PredictionTest, aMeasuredCadenceOfAlmostNothingLosesNoPower)
{
    block.predictCadence = 0;
    // Cadence, physics, least and greatest power of 210 W at the road; at rest there is none.
    constexpr std::tuple<double, Physics, double, double> cases[] = {{90, Physics::ofTheRoad, 220, 227},
                                                                     {1, Physics::ofTheRoad, 220, 227},
                                                                     {0, Physics::ofTheRoad, 0, 0},
                                                                     {1, Physics::classic, -1e9, -800}};
    for (auto [cadence, physics, least, most] : cases) {
        GpsRecords records = pairOfRows(8, 2);
        records[1].cadence = cadence;
        predict(records, physics == Physics::ofTheRoad ? analysisOfTheRoad : 0);
        EXPECT_GE(records[1].power, least) << cadence << " rpm, physics " << static_cast<int>(physics);
        EXPECT_LE(records[1].power, most) << cadence << " rpm, physics " << static_cast<int>(physics);
    }
}

// One row of nine that accelerates: a trimmed mean leaves its power out, the road's spreads it.
TEST_F(PredictionTest, smoothingSpreadsTheWorkOfTheRoad)
{
    for (uint32_t road : {uint32_t{0}, uint32_t{analysisOfTheRoad}}) {
        GpsRecords records = pairOfRows(10, 0);
        records.resize(9, records[1]);
        for (size_t i = 0; i < records.size(); ++i)
            records[i].distance = 10 * static_cast<double>(i);
        records[4].acceleration = 0.1;
        GpsRecords raw = records;
        predict(raw, road);
        predict(records, road | analysisSmoothing);
        double spread = road ? (raw[4].power - raw[0].power) / 3 : 0;
        EXPECT_GT(raw[4].power, raw[0].power + 50) << road;
        for (size_t i : {3, 4, 5})
            EXPECT_NEAR(records[i].power, raw[0].power + spread, 1e-9) << i << " of " << road;
    }
}

using TrackBrakeHeatTest = PredictionTest;

TEST_F(TrackBrakeHeatTest, heatIsNeitherLostNorMade)
{
    block.detectBraking = 1;
    block.averageTemperature = 15;
    GpsRecords records = pairOfRows(8, -10);
    records.resize(60, records[1]);
    for (size_t i = 0; i < records.size(); ++i) {
        records[i].timestamp = 100 + static_cast<uint32_t>(i);
        if (i >= 30)
            records[i].acceleration = 1.5; // on the brakes for half a minute, then they are let go
    }
    predict(records, 0);
    double friction = 0, radiated = 0;
    for (size_t i = 0; i < records.size(); ++i) {
        friction += brakes[i].frontFriction + brakes[i].rearFriction;
        radiated += brakes[i].frontRadiate + brakes[i].rearRadiate;
        EXPECT_NEAR(brakes[i].frontStored + brakes[i].rearStored, friction - radiated, 1e-6) << i;
        EXPECT_EQ(brakes[i].force != 0, i > 0 && i < 30) << i;
        EXPECT_GE(brakes[i].frontTemperature, 15) << i;
    }
    const BrakeRecord& braking = brakes[29];
    expectFigures({records[29].power, records[29].cadence}, {0, 0});
    EXPECT_NEAR(braking.frontFriction + braking.rearFriction, braking.force * 9.80665 * 8, 1e-9);
    double capacity = 0.91 * 350; // J/K, carbon rim
    EXPECT_NEAR(braking.frontTemperature, 15 + braking.frontStored / capacity, 1e-9);
    EXPECT_GT(braking.rearStored, brakes[59].rearStored);

    records.back().inclination = 5; // the slope of the last row holds for all
    predict(records, 0);
    for (const BrakeRecord& row : brakes)
        EXPECT_EQ(row.force, 0);
    predict(records, analysisOfTheRoad);
    EXPECT_GT(brakes[29].force, 0);
}

TEST_F(TrackBrakeHeatTest, secondsOfAStep)
{
    // Time of the second row, 100 being that of the first; seconds of friction. A clock may jump by a century.
    constexpr std::pair<uint32_t, double> cases[] = {{101, 1}, {102, 2}, {100, 0}, {99, 0}, {3250000100u, 3.25e9}};
    TrackModel track = startTrackModel(model, block, ride.summary, analysisFlat);
    GpsRecords records = pairOfRows(10, 0);
    records[1].temperature = 20;
    brakes.resize(2);
    for (auto [timestamp, seconds] : cases) {
        SCOPED_TRACE(timestamp);
        brakes[0].frontStored = 1000;
        records[1].timestamp = timestamp;
        brakeHeatStep(track, records, brakes, -300, 1);
        double friction = seconds * 300 * track.now.frontFrictionShare, radiated = brakes[1].frontRadiate;
        EXPECT_EQ(radiated > 0, seconds > 0) << radiated;
        expectFigures({brakes[1].frontFriction, brakes[1].frontStored}, {friction, 1000 + friction - radiated},
                      std::max(1e-6, friction * 1e-6));
    }
    // By hand: 12 W/m2K over 100 K, and grey radiation of emittance 0.9 between 393.15 and 293.15 K, from 0.05 m2
    m.brakeSurfaceArea[0] = 0.05;
    brakes[0].frontStored = 318.5 * 99; // with this second's friction the rim is 100 K above the air
    records[1].timestamp = 101;
    brakeHeatStep(track, records, brakes, -318.5 / track.now.frontFrictionShare, 1);
    EXPECT_NEAR(brakes[1].frontRadiate, 60 + 42.116, 0.01);
    EXPECT_NEAR(brakes[1].frontTemperature, 120 - 102.116 / 318.5, 0.001);
}

TEST_F(PredictionTest, statisticsByHand)
{
    GpsRecords records(5);
    brakes.resize(5);
    // Sector, time, distance, speed, altitude, heart rate, cadence, power, brake force, temperatures of the brakes.
    using Row = std::tuple<uint32_t, uint32_t, double, double, double, double, double, double, double, double, double>;
    constexpr Row rows[] = {
        {1, 100, 0, 5, 10, 100, 0, 0, 0, 0, 0},        {1, 101, 6, 6, 20, 120, 80, 200, 0, 0, 0},
        {0, 102, 13, 99, 99, 199, 99, 999, 9, 99, 99}, {2, 103, 20, 7, 30, 140, 90, 300, 2, 50, 60},
        {2, 105, 40, 10, 40, 160, 0, 0, 4, 70, 40},
    };
    for (size_t i = 0; i < 5; ++i) {
        GpsRecord& record = records[i];
        std::tie(record.sector, record.timestamp, record.distance, record.speed, record.altitude, record.heartRate,
                 record.cadence, record.power, brakes[i].force, brakes[i].frontTemperature, brakes[i].rearTemperature) =
            rows[i];
        record.latitude = 90;
        record.longitude = i == 4 ? -45 : 45;
        record.temperature = -3;
    }
    std::tie(ride.summary.recordInterval, ride.summary.totalElapsed, ride.summary.minAltitude) = std::tuple(1, 77, 88);
    std::tie(ride.inventory.normalDataCount, ride.inventory.recordCount) = std::tuple(10, 5);
    AnalysedStats stats = analysedStats(records, ride, brakes);
    const FitSummary& s = stats.summary;
    // The timer is of the steps that end at 101 and 103.
    expectFigures({s.startTimestamp, s.endTimestamp, s.firstLatitude, s.firstLongitude, s.lastLongitude, s.totalTimer,
                   s.totalDistance},
                  {100, 105, 1073741824, 536870912, -536870912, 2000, 1300});
    expectFigures({s.avgSpeed, s.maxSpeed, s.avgAltitude, s.maxAltitude, s.avgTemperature, s.avgHeartRate,
                   s.maxHeartRate, s.avgCadence, s.maxCadence, s.avgPower, s.maxPower},
                  {6500, 10000, 2625, 2700, -3, 130, 160, 85, 90, 250, 300});
    expectFigures({s.avgBrakeForce, s.maxBrakeForce, s.avgFrontBrake, s.maxFrontBrake, s.avgRearBrake, s.maxRearBrake},
                  {3, 4, 60, 70, 50, 60});
    const FitInventory& counts = stats.inventory;
    expectFigures({s.totalElapsed, s.minAltitude, counts.normalDataCount, counts.recordCount}, {77, 88, 9, 4});
    ride.summary.recordInterval = 3600; // no step of that length: no timer
    ride.inventory.compressedTimestampCount = 1;
    stats = analysedStats(records, ride, brakes);
    expectFigures({s.totalTimer, s.avgSpeed, s.totalDistance, counts.normalDataCount, counts.recordCount},
                  {0, 7000, 4000, 10, 5});
    ride.summary.endTimestamp = 55;
    records.resize(1);
    brakes.resize(1);
    stats = analysedStats(records, ride, brakes);
    // A single row is no end, and means over nothing are 0.
    expectFigures({s.startTimestamp, s.endTimestamp, s.avgPower, s.avgCadence, s.avgBrakeForce}, {100, 55, 0, 0, 0});
    stats = analysedStats({}, ride);
    expectFigures({s.avgSpeed, s.totalDistance}, {0, 0});
}

} // namespace torvane
