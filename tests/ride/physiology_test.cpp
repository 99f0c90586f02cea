// Training levels, energy, time against distance.
#include "ride/physiology.h"

#include "figures.h"
#include "ride/ride_fixture.h"

namespace torvane {

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
    expectFigures({physiology.variabilityIndex, physiology.intensityFactor, physiology.trainingStressScore,
                   physiology.kiloJoule, physiology.kiloCalorie, physiology.foodKiloCalorie},
                  {1.25, 1.0, 100.0, 720.0, 171.96912, 687.87648}, 1e-9);
}

TEST_F(PhysiologyTest, timeAndDistanceFollowEachOther)
{
    struct Case {
        int intensionCase; // 0: by time
        double velocity;
        int first, second;
        double otherFirst, otherSecond, duration;
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
        expectFigures({runState.intensionFirst[1 - c.intensionCase], runState.intensionSecond[1 - c.intensionCase],
                       physiology.duration},
                      {c.otherFirst, c.otherSecond, c.duration});
    }
}

} // namespace torvane
