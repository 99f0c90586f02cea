// The two rides without time: power and velocity, critical cornering; and their bands.
#include "figures.h"
#include "ride/ride_fixture.h"
#include "ride/ride_status.h"

namespace torvane {

class SteadyTest : public RideTest {
protected:
    SteadyTest()
    {
        workingBlock.bandGraphPowerVelocity = workingBlock.bandGraphCornering = 1;
    }
};

TEST_F(SteadyTest, powerAndVelocityAnswerEachOther)
{
    for (int stage = stagePedaling; stage <= stageThrust; ++stage) {
        workingBlock.ridePowerBase[0] = stage;
        workingBlock.ridePower[0] = 300.0;
        ASSERT_EQ(ride(ridePowerAndVelocity, 1).status, 0u);
        const double powers[] = {runState.pedalingPower, runState.crankPower, runState.hubPower, runState.thrustPower};
        EXPECT_NEAR(powers[stage], 300.0, 0.01) << stage;
    }
    ride(ridePowerAndVelocity, 0);
    EXPECT_NEAR(runState.power, 273.174, 0.0005); // 40 kph
}

TEST_F(SteadyTest, theBandRunsFromStandstillToTheVelocity)
{
    const RideResult power = ride(ridePowerAndVelocity, 0), velocity = ride(ridePowerAndVelocity, 1);
    ASSERT_EQ(power.graph->pointCount(), 100);
    EXPECT_EQ(power.graph->value(0, 0), 0.0);
    EXPECT_NEAR(power.graph->value(99, 0), kph(40), 1e-9); // in m/s there
    EXPECT_NEAR(power.graph->value(99, 1), 273.174, 0.0005);
    EXPECT_NEAR(velocity.graph->value(99, 0), runState.velocity * 3.6, 1e-9);
    for (int series = 5; series < 8; ++series)
        EXPECT_EQ(power.graph->value(0, series), 0.0); // nothing resists at standstill
}

TEST_F(SteadyTest, beyondTheGearsTheBandRepeatsItsLastGoodPoint)
{
    workingBlock.rideVelocity[0] = kph(120);
    const RideResult result = ride(ridePowerAndVelocity, 0);
    EXPECT_EQ(result.status, statusOverReach);
    const GraphSeries& g = *result.graph;
    int last = 99;
    while (last > 0 && g.value(last, 5) == 0.0)
        --last;
    EXPECT_LE(g.value(last, 0), runState.reachVelocity);
    EXPECT_GT(g.value(last, 0) + kph(120) / 99, runState.reachVelocity);
    for (int series = 0; series < 8; ++series)
        EXPECT_EQ(g.value(99, series), series < 5 ? g.value(last, series) : 0.0);
}

TEST_F(SteadyTest, downhillThrustAloneTurnsNegative)
{
    workingBlock.rideInclination[0] = -8.0;
    const RideResult result = ride(ridePowerAndVelocity, 0);
    expectFigures({runState.power, runState.peakPower[stagePedaling], result.graph->value(99, 1)}, {0.0, 0.0, 0.0});
    EXPECT_LT(result.graph->value(99, 7), 0.0);
}

TEST_F(SteadyTest, lossesThatReachTheWholePowerLeaveNoAnswer)
{
    for (int location : {0, 1, 2}) {
        useMotor(location);
        workingBlock.wheelLossPercent = 3.0;
        ASSERT_EQ(ride(ridePowerAndVelocity, 0).status, 0u);
        workingBlock.wheelLossPercent = 100.0;
        workingBlock.wheelLossTorque = runState.thrustTorque;
        const RideResult result = ride(ridePowerAndVelocity, 0);
        EXPECT_EQ(result.status, statusNotConverged) << location;
        EXPECT_FALSE(result.graph);
    }
}

// mu 0.9, 15 m, margin 0.1: sqrt(0.9 x 0.9 x 9.80665 x 15) = 10.915622 m/s.
TEST_F(SteadyTest, cornering)
{
    workingBlock.frictionCoefficient[0] = workingBlock.frictionCoefficient[1] = 0.9;
    workingBlock.bpn = 75;
    workingBlock.rideVelocity[5] = 10.915622;
    ASSERT_EQ(ride(rideCriticalCornering, 0).status, 0u);
    EXPECT_NEAR(runState.velocity, 10.915622, 1e-5);
    ride(rideCriticalCornering, 1);
    EXPECT_NEAR(runState.corneringRadius, 15.0, 1e-4);
    ride(rideCriticalCornering, 2);
    EXPECT_NEAR(runState.safetyMargin, 0.1, 1e-5);
    workingBlock.roadSurface = 2; // a wet road leaves 0.7 of the friction
    ride(rideCriticalCornering, 2);
    EXPECT_NEAR(runState.safetyMargin, 1.0 - 0.9 / 0.7, 1e-5);
    workingBlock.corneringRadius = 0.0;
    ride(rideCriticalCornering, 2);
    EXPECT_EQ(runState.safetyMargin, -9999.999);
    EXPECT_GT(runState.power, 0.0);
}

TEST_F(SteadyTest, corneringBands)
{
    for (int target : {0, 1, 2}) {
        const RideResult result = ride(rideCriticalCornering, target);
        ASSERT_EQ(result.graph->pointCount(), 100);
        const double x = result.graph->value(99, 0), radius = result.graph->value(99, 1);
        const double v = target == 2 ? kph(40) : x / 3.6, margin = target == 2 ? x : 0.1;
        EXPECT_NEAR(v * v / radius, (1.0 - margin) * modelState.effectiveFriction * 9.80665, 1e-9) << target;
    }
}

} // namespace torvane
