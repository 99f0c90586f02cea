// Bins of normalized power, training levels, energy.
#include "ride/physiology.h"

#include "ride/power_bins.h"
#include "ride/ride_fixture.h"

#include <cmath>

namespace torvane {

TEST(PowerBins, countAndWidth)
{
    struct Case {
        double sectorTime;
        size_t count;
        double width;
    };
    constexpr Case cases[] = {
        {60.0, 2, 30.0}, {60.1, 3, 60.1 / 3}, {29.9, 1, 29.9}, {0.01, 1, 0.01}, {900.0, 30, 30.0}, {0.0, 0, 0.0},
    };
    for (const Case& c : cases) {
        PowerBins bins = makePowerBins(c.sectorTime);
        EXPECT_EQ(bins.bins.size(), c.count) << c.sectorTime;
        EXPECT_DOUBLE_EQ(bins.width, c.width) << c.sectorTime;
    }
}

TEST(PowerBins, weighHardStretchesToTheFourth)
{
    PowerBins bins = makePowerBins(60.0);
    for (int step = 0; step < 60; ++step) {
        addToBins(bins, step < 30 ? 100.0 : 300.0, 1.0);
    }
    EXPECT_NEAR(normalizedPower(bins), std::pow((1e8 + 81e8) / 2.0, 0.25), 1e-9);
    addToBins(bins, 9999.0, 1.0); // behind the last bin
    EXPECT_NEAR(normalizedPower(bins), 253.0440, 1e-4);
}

TEST(PowerBins, coastingCountsAsTimeAlone)
{
    PowerBins bins = makePowerBins(30.0);
    addToBins(bins, 200.0, 15.0);
    addToBins(bins, -200.0, 15.0);
    EXPECT_NEAR(normalizedPower(bins), 100.0, 1e-9);
    EXPECT_EQ(normalizedPower(makePowerBins(0.0)), 0.0);
}

using PhysiologyTest = RideTest;

TEST_F(PhysiologyTest, levelsBeginAtTheirBounds)
{
    modelState.ftp = 100.0;
    rebuildModel();
    struct Case {
        double power;
        int level;
    };
    constexpr Case cases[] = {{0, 1}, {55.9, 1}, {56.1, 2}, {76.1, 3}, {91.1, 4}, {106.1, 5}, {121.1, 6}, {151.1, 7}};
    for (const Case& c : cases) {
        EXPECT_EQ(trainingLevelOf(c.power), c.level) << c.power;
    }
    EXPECT_STREQ(trainingLevels[3].name, "lactate threshold");
}

TEST_F(PhysiologyTest, anHourAtTheThreshold)
{
    prepare(rideAcceleration, 0);
    runState.useFtp = 1;
    modelState.ftp = 250.0;
    runState.meanStagePower[stagePedaling] = 200.0;
    runState.sectorTime = 3600.0;
    runState.energyEfficiency = 0.25;
    physiologyOfRun(250.0);
    EXPECT_DOUBLE_EQ(physiology.variabilityIndex, 1.25);
    EXPECT_DOUBLE_EQ(physiology.intensityFactor, 1.0);
    EXPECT_DOUBLE_EQ(physiology.trainingStressScore, 100.0);
    EXPECT_DOUBLE_EQ(physiology.kiloJoule, 720.0);
    EXPECT_NEAR(physiology.kiloCalorie, 171.96912, 1e-9);
    EXPECT_NEAR(physiology.foodKiloCalorie, 687.87648, 1e-9);
}

TEST_F(PhysiologyTest, timeAndDistanceFollowEachOther)
{
    struct Case {
        const char* name;
        int intensionCase;
        double velocity;
        int first, second, otherFirst, otherSecond;
        double duration;
    };
    constexpr Case cases[] = {
        {"an hour", 0, 10.0, 60, 0, 36, 0, 3600.0},   {"90 s", 0, 10.5, 1, 30, 0, 945, 90.0},
        {"50 km", 1, 10.0, 50, 0, 83, 20, 5000.0},    {"50 m", 1, 8.0, 0, 50, 0, 6, 6.25},
        {"standing still", 1, 0.0, 50, 0, 0, 0, 0.0},
    };
    for (const Case& c : cases) {
        const int other = 1 - c.intensionCase;
        runState.intensionCase = c.intensionCase;
        runState.intensionFirst[c.intensionCase] = c.first;
        runState.intensionSecond[c.intensionCase] = c.second;
        runState.velocity = c.velocity;
        physiologyOfSteadyRide();
        EXPECT_EQ(runState.intensionFirst[other], c.otherFirst) << c.name;
        EXPECT_EQ(runState.intensionSecond[other], c.otherSecond) << c.name;
        EXPECT_DOUBLE_EQ(physiology.duration, c.duration) << c.name;
    }
}

} // namespace torvane
