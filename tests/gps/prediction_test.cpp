// The model along a track: conditions of a row, cadence and power, brake heat, statistics. The main law: a ride that
// the model itself made with a known power comes back with that power.
#include "gps/prediction.h"

#include "gps/analysis.h"
#include "gps/ride_maker.h"
#include "gps/sectors.h"
#include "gps/track.h"
#include "gps/track_brake_heat.h"
#include "model/assist.h"
#include "model/brake_heat.h"
#include "model/derived.h"

#include <algorithm>
#include <numeric>

namespace torvane {

class PredictionTest : public ModelTest {
protected:
    PredictionTest()
    {
        fieldPresence = {};
        fieldPresence.timestampFlags = 0x11;
        fieldPresence.positionFlags = 0x77;
        fieldPresence.altitudeFlags = 7;
        fieldPresence.motionFlags = 0x73;
        fitSummary = {};
        fitInventory = {};
    }
};

namespace {

void analyse(GpsRecords& records)
{
    uint32_t flags = buildAnalysisFlags();
    ASSERT_TRUE(formSectors(records, workingBlock.thresholdSpeed / 3.6, flags));
    refineTrack(records, workingBlock.analyseUnrealInclination, workingBlock.analyseUnrealAccele, flags);
    predictAndFinish(records, flags);
}

double meanPower(const GpsRecords& records)
{
    double sum = std::accumulate(records.begin(), records.end(), 0.0,
                                 [](double total, const GpsRecord& record) { return total + record.power; });
    return sum / static_cast<double>(records.size());
}

// One row on a slope, and the one before it a second earlier.
GpsRecords pairOfRows(double speed, double inclination)
{
    GpsRecords records(2);
    for (uint32_t i = 0; i < 2; i++) {
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
    struct Case {
        const char* name;
        MadeRide ride;
        bool smoothing;
        double meanBound, rowBound; // shares of the power
    };
    const Case cases[] = {
        {"flat", {.hillHeight = 0}, false, 0.002, 0.012},
        {"hills", {}, false, 0.002, 0.025},
        {"hills, strong rider, cold", {.power = 350, .temperature = 2}, false, 0.002, 0.025},
        {"wind from everywhere", {.hillHeight = 0, .windSpeed = 4, .windDirection = 250}, false, 0.002, 0.02},
        // Means of windows in which every row slows down are trimmed on one side only and overstate the braking.
        {"hills, smoothed", {}, true, 0.04, 0.2},
        {"noise", {.speedNoise = 0.05, .altitudeNoise = 0.2, .positionNoise = 1}, true, 0.04, 0.5},
        {"more noise", {.speedNoise = 0.1, .altitudeNoise = 0.3, .positionNoise = 3}, true, 0.04, 1},
    };
    for (const Case& c : cases) {
        workingBlock.analyseSmoothing = c.smoothing;
        workingBlock.analyseWindSpeed = c.ride.windSpeed;
        workingBlock.analyseWindDirection = static_cast<int32_t>(c.ride.windDirection);
        workingBlock.averageTemperature = c.ride.temperature;
        GpsRecords records = makeRide(c.ride);
        analyse(records);
        EXPECT_NEAR(meanPower(records) / c.ride.power, 1, c.meanBound) << c.name;
        for (size_t i = 20; i + 20 < records.size(); i++)
            EXPECT_NEAR(records[i].power / c.ride.power, 1, c.rowBound) << c.name << ", row " << i;
    }
}

TEST_F(PredictionTest, steadyRidingAgreesWithTheSolverInEveryStageAndMotor)
{
    fieldPresence.altitudeFlags = 0; // a flat course: the air of 50 m
    for (int motor : {0, 1, 2}) {
        workingBlock.motorLocation = motor;
        workingBlock.maxEPower = 100;
        workingBlock.assistRangeMode[0] = 1;
        workingBlock.assistRangeSpeed[0] = 60;
        workingBlock.assistRangeRatio[0] = 0.5;
        restart();
        for (int stage = stagePedaling; stage < stageCount; stage++) {
            runState.airPressureRatio = airPressureAt(20, 50) / seaLevelPressure;
            takeRoad(0);
            double speed = solveVelocityForPower(stage, 150).value;
            double cadence = runState.cadence;
            workingBlock.analysePowerBase = stage;
            GpsRecords records = pairOfRows(speed, 0);
            predictAndFinish(records, buildAnalysisFlags());
            EXPECT_NEAR(records[1].power, 150, 0.1) << "motor " << motor << ", stage " << stage;
            EXPECT_NEAR(records[1].cadence, cadence, 0.05) << "motor " << motor << ", stage " << stage;
        }
    }
}

TEST_F(PredictionTest, airAndTemperatureOfARow)
{
    modelState.hectoPascal = 0.7 * seaLevelPressure; // of the condition, where the track does not know better
    struct Case {
        const char* name;
        uint32_t flags;
        double temperature, pressureRatio;
    };
    constexpr double kilometreHigh = 0.8870; // standard atmosphere at 1000 m and 15 degrees on the ground
    constexpr Case cases[] = {
        {"entered temperature", 0, 15, kilometreHigh},
        {"average of the file", analysisAverageTemperature, 10, 0.8850},
        {"of the record", analysisRecordTemperature, 30, 0.8923},
        {"of the record, flat", analysisRecordTemperature | analysisFlat, 30, 0.8923},
        {"flat: the air of 50 m", analysisFlat, 15, 0.9941},
        {"no timestamps: the air of the condition", analysisNoTimestamps, 15, 0.7},
        {"no timestamps, flat", analysisNoTimestamps | analysisFlat, 15, 0.9941},
    };
    workingBlock.averageTemperature = 15;
    fitSummary.avgTemperature = 10;
    for (const Case& c : cases) {
        GpsRecords records = pairOfRows(8, 0);
        for (GpsRecord& record : records) {
            record.altitude = 1000;
            record.temperature = 30;
        }
        predictAndFinish(records, c.flags);
        EXPECT_EQ(records[1].temperature, c.temperature) << c.name;
        EXPECT_NEAR(runState.airPressureRatio, c.pressureRatio, 0.0001) << c.name;
    }
}

TEST_F(PredictionTest, windIsTakenAlongTheHeading)
{
    struct Case {
        double heading, speed, headWind;
    };
    constexpr Case cases[] = {{90, 3, 3}, {270, 3, -3}, {0, 3, 0}, {150, 3, 1.5}, {90, 0, 0}};
    workingBlock.analyseWindDirection = 90;
    for (const Case& c : cases) {
        workingBlock.analyseWindSpeed = c.speed;
        GpsRecords records = pairOfRows(8, 0);
        records[1].heading = c.heading;
        predictAndFinish(records, 0);
        EXPECT_NEAR(runState.headWind, c.headWind, 1e-12) << c.heading;
    }
}

TEST_F(PredictionTest, whatIsNotWantedStays)
{
    for (int cadence : {0, 1}) {
        for (int power : {0, 1}) {
            workingBlock.predictCadence = cadence;
            workingBlock.predictPower = power;
            GpsRecords records = pairOfRows(8, 0);
            records[1].cadence = 33;
            records[1].power = 44;
            predictAndFinish(records, 0);
            EXPECT_EQ(records[1].cadence == 33, cadence == 0);
            EXPECT_EQ(records[1].power == 44, power == 0);
        }
    }
}

TEST_F(PredictionTest, limitHoldsAfterConversion)
{
    workingBlock.limitPowerPrediction = 1;
    workingBlock.thresholdPower = 100;
    GpsRecords records = pairOfRows(12, 0);
    predictAndFinish(records, 0);
    EXPECT_EQ(records[1].power, 100);
    workingBlock.thresholdPower = 1000;
    records = pairOfRows(12, 0);
    predictAndFinish(records, 0);
    EXPECT_GT(records[1].power, 100);
}

TEST_F(PredictionTest, standingAgainstTheWindIsNoNumberNowhere)
{
    workingBlock.analyseWindSpeed = 5;
    workingBlock.analyseWindDirection = 0;
    for (int stage = stagePedaling; stage < stageCount; stage++) {
        workingBlock.analysePowerBase = stage;
        GpsRecords records(20);
        for (size_t i = 0; i < 10; i++)
            records[i].speed = 8;
        predictAndFinish(records, analysisSmoothing);
        for (const GpsRecord& record : records)
            EXPECT_TRUE(std::isfinite(record.power) && std::isfinite(record.cadence)) << "stage " << stage;
    }
}

TEST_F(PredictionTest, accelerationCountsOnlyWhereItIsKnown)
{
    struct Case {
        uint8_t timestampFlags, motionFlags;
        bool known;
    };
    constexpr Case cases[] = {{0x11, 0x11, true}, {0, 0x11, true}, {1, 0x10, true}, {0, 0x70, false}};
    workingBlock.analysePowerBase = stageThrust;
    for (const Case& c : cases) {
        fieldPresence.timestampFlags = c.timestampFlags;
        fieldPresence.motionFlags = c.motionFlags;
        GpsRecords records = pairOfRows(8, 0);
        records[1].acceleration = 0.5;
        predictAndFinish(records, 0);
        double inertia = 0.5 * 8 * modelState.inertialWeight;
        EXPECT_NEAR(records[1].power - records[0].power, c.known ? inertia : 0, 1e-9);
    }
}

using TrackBrakeHeatTest = PredictionTest;

TEST_F(TrackBrakeHeatTest, heatIsNeitherLostNorMade)
{
    workingBlock.detectBraking = 1;
    workingBlock.averageTemperature = 15;
    GpsRecords records = pairOfRows(8, -10);
    records.resize(60, records[1]);
    for (size_t i = 0; i < records.size(); i++) {
        records[i].timestamp = 100 + static_cast<uint32_t>(i);
        if (i >= 30)
            records[i].acceleration = 1.5; // on the brakes for half a minute, then they are let go
    }
    predictAndFinish(records, 0);
    double friction = 0, radiated = 0;
    for (size_t i = 0; i < records.size(); i++) {
        friction += records[i].frontFriction + records[i].rearFriction;
        radiated += records[i].frontRadiate + records[i].rearRadiate;
        EXPECT_NEAR(records[i].frontStored + records[i].rearStored, friction - radiated, 1e-6) << i;
        EXPECT_EQ(records[i].brakeForce != 0, i > 0 && i < 30) << i;
        EXPECT_GE(records[i].frontBrakeTemperature, 15) << i;
    }
    const GpsRecord& braking = records[29];
    EXPECT_EQ(braking.power, 0);
    EXPECT_EQ(braking.cadence, 0);
    EXPECT_NEAR(braking.frontFriction + braking.rearFriction, braking.brakeForce * 9.80665 * 8, 1e-9);
    double capacity = 0.91 * 350; // J/K, carbon rim
    EXPECT_NEAR(braking.frontBrakeTemperature, 15 + braking.frontStored / capacity, 1e-9);
    EXPECT_GT(braking.rearStored, records[59].rearStored);

    records.back().inclination = 5; // the slope of the last row holds for all
    predictAndFinish(records, 0);
    for (const GpsRecord& record : records)
        EXPECT_EQ(record.brakeForce, 0);
}

TEST_F(TrackBrakeHeatTest, secondsOfAStep)
{
    struct Case {
        const char* name;
        uint32_t timestamp; // after 100
        double frictionSeconds;
        bool cools;
    };
    constexpr Case cases[] = {
        {"one second", 101, 1, true},
        {"two", 102, 2, true},
        {"none", 100, 0, false},
        {"backward", 99, 0, false},
        {"a clock that jumps by a century", 3250000100u, 3.25e9, true},
    };
    std::copy_n(workingBlock.specificHeat, 3, runState.specificHeat);
    std::copy_n(workingBlock.emittance, 3, runState.emittance);
    for (const Case& c : cases) {
        GpsRecords records = pairOfRows(8, 0);
        records[0].frontStored = 1000;
        records[1].timestamp = c.timestamp;
        records[1].temperature = 20;
        brakeHeatStep(records, -300, 1);
        double friction = records[1].frontFriction;
        EXPECT_NEAR(friction, c.frictionSeconds * 300 * modelState.frontFrictionShare, 1e-6) << c.name;
        EXPECT_EQ(records[1].frontRadiate > 0, c.cools) << c.name;
        double rest = 1000 + friction - records[1].frontRadiate;
        EXPECT_NEAR(records[1].frontStored, rest, std::max(1e-6, friction * 1e-6)) << c.name;
    }
}

TEST_F(TrackBrakeHeatTest, aFirstSecondByHand)
{
    std::copy_n(workingBlock.specificHeat, 3, runState.specificHeat);
    std::copy_n(workingBlock.emittance, 3, runState.emittance);
    modelState.brakeSurfaceArea[0] = 0.05;
    GpsRecords records = pairOfRows(10, 0);
    records[0].frontStored = 318.5 * 99; // with this second's friction the rim is 100 K above the air
    records[1].temperature = 20;
    brakeHeatStep(records, -318.5 / modelState.frontFrictionShare, 1);
    // 12 W/m2K over 100 K, and grey radiation of emittance 0.9 between 393.15 and 293.15 K, from 0.05 m2
    EXPECT_NEAR(records[1].frontRadiate, 60 + 42.116, 0.01);
    EXPECT_NEAR(records[1].frontBrakeTemperature, 120 - 102.116 / 318.5, 0.001);
}

TEST_F(PredictionTest, statisticsByHand)
{
    GpsRecords records(5);
    struct Row {
        uint32_t sector, timestamp;
        double distance, speed, altitude, heartRate, cadence, power, brake, front, rear;
    };
    constexpr Row rows[] = {
        {1, 100, 0, 5, 10, 100, 0, 0, 0, 0, 0},        {1, 101, 6, 6, 20, 120, 80, 200, 0, 0, 0},
        {0, 102, 13, 99, 99, 199, 99, 999, 9, 99, 99}, {2, 103, 20, 7, 30, 140, 90, 300, 2, 50, 60},
        {2, 105, 40, 10, 40, 160, 0, 0, 4, 70, 40},
    };
    for (size_t i = 0; i < 5; i++) {
        const Row& row = rows[i];
        GpsRecord& record = records[i];
        record.sector = row.sector;
        record.timestamp = row.timestamp;
        record.distance = row.distance;
        record.speed = row.speed;
        record.altitude = row.altitude;
        record.heartRate = row.heartRate;
        record.cadence = row.cadence;
        record.power = row.power;
        record.brakeForce = row.brake;
        record.frontBrakeTemperature = row.front;
        record.rearBrakeTemperature = row.rear;
        record.latitude = 90;
        record.longitude = i == 4 ? -45 : 45;
        record.temperature = -3;
    }
    fitSummary.recordInterval = 1;
    fitSummary.totalElapsed = 77;
    fitSummary.minAltitude = 88;
    fitSummary.normalizedPower = 99;
    fitInventory.normalDataCount = 10;
    fitInventory.recordCount = 5;
    analysedStats(records);
    const FitSummary& s = analysedSummary;
    EXPECT_EQ(s.startTimestamp, 100);
    EXPECT_EQ(s.endTimestamp, 105);
    EXPECT_EQ(s.firstLatitude, 1073741824);
    EXPECT_EQ(s.firstLongitude, 536870912);
    EXPECT_EQ(s.lastLongitude, -536870912);
    EXPECT_EQ(s.totalTimer, 2000u) << "the steps that end at 101 and 103";
    EXPECT_EQ(s.totalDistance, 1300u);
    EXPECT_EQ(s.avgSpeed, 6500);
    EXPECT_EQ(s.maxSpeed, 10000);
    EXPECT_EQ(s.avgAltitude, 2625);
    EXPECT_EQ(s.maxAltitude, 2700);
    EXPECT_EQ(s.avgTemperature, -3);
    EXPECT_EQ(s.avgHeartRate, 130);
    EXPECT_EQ(s.maxHeartRate, 160);
    EXPECT_EQ(s.avgCadence, 85);
    EXPECT_EQ(s.maxCadence, 90);
    EXPECT_EQ(s.avgPower, 250);
    EXPECT_EQ(s.maxPower, 300);
    EXPECT_EQ(s.avgBrakeForce, 3);
    EXPECT_EQ(s.maxBrakeForce, 4);
    EXPECT_EQ(s.avgFrontBrake, 60);
    EXPECT_EQ(s.maxFrontBrake, 70);
    EXPECT_EQ(s.avgRearBrake, 50);
    EXPECT_EQ(s.maxRearBrake, 60);
    EXPECT_EQ(s.totalElapsed + s.minAltitude + s.normalizedPower, 77u + 88 + 99) << "the file's own";
    EXPECT_EQ(analysedInventory.normalDataCount, 9u);
    EXPECT_EQ(analysedInventory.recordCount, 4u);

    fitSummary.recordInterval = 3600; // no step of that length: no timer
    fitInventory.compressedTimestampCount = 1;
    analysedStats(records);
    EXPECT_EQ(s.totalTimer, 0u);
    EXPECT_EQ(s.avgSpeed, 7000);
    EXPECT_EQ(s.totalDistance, 4000u);
    EXPECT_EQ(analysedInventory.normalDataCount, 10u);
    EXPECT_EQ(analysedInventory.recordCount, 5u);

    fitSummary.endTimestamp = 55;
    records.resize(1);
    analysedStats(records);
    EXPECT_EQ(s.startTimestamp, 100);
    EXPECT_EQ(s.endTimestamp, 55) << "a single row is no end";
    EXPECT_EQ(s.avgPower + s.avgCadence + s.avgBrakeForce, 0) << "means over nothing";
}

} // namespace torvane
