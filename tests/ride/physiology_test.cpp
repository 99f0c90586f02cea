// Training levels, energy, time against distance.
#include "ride/physiology.h"

#include "figures.h"
#include "model/model_fixture.h"
#include "ride/power_bins.h"

#include <tuple>

namespace torvane {

using PhysiologyTest = ModelTest;

TEST_F(PhysiologyTest, levelsBeginAtTheirBounds)
{
    m.ftp = 100.0;
    rebuildModel(model);
    constexpr double beginnings[] = {0, 56.1, 76.1, 91.1, 106.1, 121.1, 151.1};
    for (int level = 1; level <= 7; ++level) {
        EXPECT_EQ(trainingLevelOf(model, beginnings[level - 1]), level);
        EXPECT_EQ(trainingLevelOf(model, beginnings[level - 1] - 0.2), std::max(1, level - 1));
    }
    EXPECT_EQ(trainingLevelOf(model, model.trainingLevelBound[3]), 4); // a bound belongs to what begins there
}

TEST_F(PhysiologyTest, anHourAtTheThreshold)
{
    m.ftp = 250.0;
    PhysiologyFigures body = physiologyOfRun(model, {1, 0.25, 0, {}}, 200.0, 250.0, 3600.0);
    expectFigures({body.variabilityIndex, body.intensityFactor, body.trainingStressScore, body.kiloJoule,
                   body.kiloCalorie, body.foodKiloCalorie},
                  {1.25, 1.0, 100.0, 720.0, 171.96912, 687.87648}, 1e-9);
    EXPECT_EQ(normalizedPower(makePowerBins(0.0)), 0.0); // of no time
}

TEST_F(PhysiologyTest, timeAndDistanceFollowEachOther)
{
    // Case (0: by time), velocity, what is entered; the other case's, and the duration.
    constexpr std::tuple<int, double, int, int, double, double, double> cases[] = {
        {0, 10.0, 60, 0, 36, 0, 3600.0}, {0, 10.5, 1, 30, 0, 945, 90.0}, {1, 10.0, 50, 0, 83, 20, 5000.0},
        {1, 8.0, 0, 50, 0, 6, 6.25},     {1, 0.0, 50, 0, 0, 0, 0.0},
    };
    for (auto [given, velocity, first, second, otherFirst, otherSecond, duration] : cases) {
        SCOPED_TRACE(velocity);
        PhysiologyInputs in = {0, 0.25, given, {}};
        in.length.intensionFirst[given] = first;
        in.length.intensionSecond[given] = second;
        PhysiologyFigures body = physiologyOfSteadyRide(model, in, 100.0, velocity);
        expectFigures({body.length.intensionFirst[1 - given], body.length.intensionSecond[1 - given], body.duration},
                      {otherFirst, otherSecond, duration});
        EXPECT_NEAR(body.kiloJoule, 0.1 * duration, 1e-9);
        EXPECT_EQ(physiologyOfSteadyRide(model, in, -100.0, velocity).kiloJoule, 0.0);
    }
}

} // namespace torvane
