// The two rides without time: power and velocity, critical cornering; and their bands.
#include "core/result_status.h"
#include "figures.h"
#include "ride/ride_fixture.h"

namespace torvane {

class SteadyTest : public RideTest {
protected:
    SteadyTest()
    {
        block.bandGraphPowerVelocity = block.bandGraphCornering = 1;
    }
};

TEST_F(SteadyTest, theBandRunsFromStandstillToTheVelocity)
{
    block.ridePowerBase[0] = stageHub;
    block.ridePower[0] = 260.307; // that of 40 kph
    RideRun power = run(ridePowerAndVelocity, 0), velocity = run(ridePowerAndVelocity, 1);
    ASSERT_EQ(power.graph->pointCount(), 100);
    EXPECT_EQ(power.graph->value(0, 0), 0.0);
    EXPECT_NEAR(power.graph->value(99, 0), kph(40), 1e-9); // in m/s there
    EXPECT_NEAR(power.graph->value(99, 1), 273.174, 0.0005);
    EXPECT_NEAR(velocity.found.velocity, kph(40), 1e-5);
    EXPECT_NEAR(velocity.graph->value(99, 0), velocity.found.velocity * 3.6, 1e-9);
    for (int series = 5; series < 8; ++series)
        EXPECT_EQ(power.graph->value(0, series), 0.0) << series; // nothing resists at standstill
}

TEST_F(SteadyTest, beyondTheGearsTheBandRepeatsItsLastGoodPoint)
{
    block.rideVelocity[0] = kph(120);
    run(ridePowerAndVelocity, 0);
    EXPECT_EQ(ride->status, statusOverReach);
    const GraphSeries& g = *ride->graph;
    int last = 99;
    while (last > 0 && g.value(last, 5) == 0.0)
        --last;
    EXPECT_LE(g.value(last, 0), model.reachVelocity);
    EXPECT_GT(g.value(last, 0) + kph(120) / 99, model.reachVelocity);
    for (int series = 0; series < 8; ++series)
        EXPECT_EQ(g.value(99, series), series < 5 ? g.value(last, series) : 0.0) << series;
}

TEST_F(SteadyTest, downhillThrustAloneTurnsNegative)
{
    block.rideInclination[0] = -8.0;
    run(ridePowerAndVelocity, 0);
    expectFigures({ride->found.power, ride->found.requiredPower, ride->graph->value(99, 1)}, {0.0, 0.0, 0.0});
    EXPECT_LT(ride->graph->value(99, 7), 0.0);
}

// mu 0.9, 15 m, margin 0.1: sqrt(0.9 x 0.9 x 9.80665 x 15) = 10.915622 m/s.
TEST_F(SteadyTest, cornering)
{
    block.frictionCoefficient[0] = block.frictionCoefficient[1] = 0.9;
    block.bpn = 75;
    block.rideVelocity[5] = 10.915622;
    ASSERT_EQ(run(rideCriticalCornering, 0).status, 0u);
    EXPECT_NEAR(ride->found.velocity, 10.915622, 1e-5);
    run(rideCriticalCornering, 1);
    EXPECT_NEAR(ride->found.corneringRadius, 15.0, 1e-4);
    run(rideCriticalCornering, 2);
    EXPECT_NEAR(ride->found.safetyMargin, 0.1, 1e-5);
    block.roadSurface = 2; // a wet road leaves 0.7 of the friction
    run(rideCriticalCornering, 2);
    EXPECT_NEAR(ride->found.safetyMargin, 1.0 - 0.9 / 0.7, 1e-5);
    block.corneringRadius = 0.0;
    run(rideCriticalCornering, 2);
    EXPECT_EQ(ride->found.safetyMargin, -9999.999);
    EXPECT_GT(ride->found.power, 0.0);
}

TEST_F(SteadyTest, corneringBands)
{
    for (int target : {0, 1, 2}) {
        SCOPED_TRACE(target);
        run(rideCriticalCornering, target);
        ASSERT_EQ(ride->graph->pointCount(), 100);
        double x = ride->graph->value(99, 0), radius = ride->graph->value(99, 1);
        EXPECT_NEAR(target == 0 ? radius : x, target == 0 ? 15.0 : target == 1 ? 40.0 : 0.5, 1e-9); // where a band ends
        double v = target == 2 ? kph(40) : x / 3.6, margin = target == 2 ? x : 0.1;
        EXPECT_NEAR(v * v / radius, (1.0 - margin) * ride->now.effectiveFriction * 9.80665, 1e-9);
    }
}

} // namespace torvane
