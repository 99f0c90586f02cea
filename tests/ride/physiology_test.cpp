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
    for (const Case& c : {Case{60.0, 2, 30.0}, {60.1, 3, 60.1 / 3}, {0.01, 1, 0.01}, {900.0, 30, 30.0}, {0, 0, 0}}) {
        PowerBins bins = makePowerBins(c.sectorTime);
        EXPECT_EQ(bins.bins.size(), c.count) << c.sectorTime;
        EXPECT_DOUBLE_EQ(bins.width, c.width) << c.sectorTime;
    }
}

TEST(PowerBins, weighHardStretchesToTheFourthAndCoastingAsTime)
{
    PowerBins bins = makePowerBins(60.0);
    for (int step = 0; step < 60; ++step)
        addToBins(bins, step < 30 ? 100.0 : 300.0, 1.0);
    addToBins(bins, 9999.0, 1.0); // behind the last bin
    EXPECT_NEAR(normalizedPower(bins), std::pow((1e8 + 81e8) / 2.0, 0.25), 1e-9);
    bins = makePowerBins(30.0);
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
    constexpr double beginnings[] = {0, 56.1, 76.1, 91.1, 106.1, 121.1, 151.1};
    for (int level = 1; level <= 7; ++level) {
        EXPECT_EQ(trainingLevelOf(beginnings[level - 1]), level);
        EXPECT_EQ(trainingLevelOf(beginnings[level - 1] - 0.2), std::max(1, level - 1));
    }
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
        int intensionCase; // 0: by time
        double velocity;
        int first, second, otherFirst, otherSecond;
        double duration;
    };
    constexpr Case cases[] = {
        {0, 10.0, 60, 0, 36, 0, 3600.0}, {0, 10.5, 1, 30, 0, 945, 90.0}, {1, 10.0, 50, 0, 83, 20, 5000.0},
        {1, 8.0, 0, 50, 0, 6, 6.25},     {1, 0.0, 50, 0, 0, 0, 0.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.velocity);
        runState.intensionCase = c.intensionCase;
        runState.intensionFirst[c.intensionCase] = c.first;
        runState.intensionSecond[c.intensionCase] = c.second;
        runState.velocity = c.velocity;
        physiologyOfSteadyRide();
        EXPECT_EQ(runState.intensionFirst[1 - c.intensionCase], c.otherFirst);
        EXPECT_EQ(runState.intensionSecond[1 - c.intensionCase], c.otherSecond);
        EXPECT_DOUBLE_EQ(physiology.duration, c.duration);
    }
}

} // namespace torvane
