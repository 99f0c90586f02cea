// From power to velocity, and how the search says what it found.
#include "model/solver.h"

#include "model/assist.h"
#include "model/model_fixture.h"

namespace torvane {

using SolverTest = ModelTest;

TEST_F(SolverTest, toleranceClasses)
{
    struct Case {
        double value, wanted;
        ResultStatus status;
    };
    constexpr Case cases[] = {
        {202.0, 200.0, 0},
        {198.0, 200.0, 0},
        {202.1, 200.0, statusLooseTolerance},
        {190.0, 200.0, statusLooseTolerance},
        {210.1, 200.0, statusBeyondTolerance},
        {189.9, 200.0, statusBeyondTolerance},
        {0.1, 0.0, 0},
        {-0.1, 0.0, 0},
        {0.3, 0.0, statusLooseTolerance},
        {0.5, 0.0, statusLooseTolerance},
        {-0.6, 0.0, statusBeyondTolerance},
        {-200.0, -200.0, statusBeyondTolerance}, // a negative wanted is never met
    };
    for (const Case& c : cases) {
        EXPECT_EQ(toleranceClass(c.value, c.wanted), c.status) << c.value << " for " << c.wanted;
    }
}

TEST_F(SolverTest, requiredPowerIsTheSummitOfTheParabola)
{
    EXPECT_DOUBLE_EQ(requiredPower(843.75, 90.0, 120.0), 900.0);
    EXPECT_DOUBLE_EQ(requiredPower(900.0, 120.0, 120.0), 900.0);
    EXPECT_DOUBLE_EQ(requiredPower(500.0, 0.0, 120.0), 0.0);
}

TEST_F(SolverTest, velocitiesOfPowers)
{
    struct Case {
        const char* name;
        int stage;
        double inclination, wind, power, kph;
    };
    constexpr Case cases[] = {
        {"level", stagePedaling, 0.0, 0.0, 400.0, 45.621},
        {"thrust", stageThrust, 0.0, 0.0, 257.287, 40.000},
        {"hub", stageHub, 0.0, 0.0, 260.307, 40.000},
        {"climb", stagePedaling, 6.0, 0.0, 400.0, 26.2},
    };
    for (const Case& c : cases) {
        takeRoad(c.inclination);
        Solved found = velocityForPower(c.stage, c.power);
        EXPECT_EQ(found.status, 0u) << c.name;
        EXPECT_NEAR(found.value * 3.6, c.kph, c.inclination > 0.0 ? 0.05 : 0.0005) << c.name;
    }
}

TEST_F(SolverTest, rainAndPelotonAndHubPower)
{
    workingBlock.windSpeed = 4.0;
    workingBlock.roadSurface = 2;
    workingBlock.bpn = 60;
    workingBlock.pelotonMode = 1;
    restart();
    Solved found = velocityForPower(stageHub, 400.0);
    EXPECT_NEAR(found.value * 3.6, 41.666, 0.0005);
    EXPECT_NEAR(runState.pedalingPower, 423.384, 0.001);
    EXPECT_NEAR(runState.airDragPower, 369.970, 0.001);
    EXPECT_NEAR(runState.rollingPower, 23.222, 0.001);
}

TEST_F(SolverTest, powerAboveReachIsSolvedWithAWarning)
{
    Solved found = powerAtVelocity(stagePedaling, kph(80));
    EXPECT_EQ(found.status, statusOverReach);
    EXPECT_NEAR(found.value, 2246.382, 0.0005);
    found = velocityForPower(stagePedaling, 2246.382);
    EXPECT_EQ(found.status, statusOverReach);
    EXPECT_NEAR(found.value * 3.6, 80.0, 0.001);
}

TEST_F(SolverTest, thrustPowerKeepsItsSignWhereTheStagesAreZero)
{
    takeRoad(-8.0);
    EXPECT_LT(powerAtVelocity(stageThrust, kph(40)).value, -300.0);
    EXPECT_EQ(powerAtVelocity(stageHub, kph(40)).value, 0.0);
    EXPECT_EQ(runState.thrustPower, 0.0);
    // Rolling freely, road and air hold each other.
    Solved rolling = velocityForPower(stageThrust, 0.0);
    EXPECT_EQ(rolling.status, 0u);
    EXPECT_NEAR(runState.airDragPower + runState.rollingPower, -runState.slopePower, 0.1);
    // Pushed by the road at 11 m/s already, a rider who gives nothing is answered there.
    EXPECT_EQ(velocityForPower(stagePedaling, 0.0).value, 11.0);
}

TEST_F(SolverTest, failures)
{
    struct Case {
        const char* name;
        double power;
        ResultStatus status;
    };
    constexpr Case cases[] = {
        {"nothing on a level road ends below zero", 0.0, statusTooShortPower},
        {"negative is met by no velocity", -100.0, statusTooShortPower | statusBeyondTolerance},
        {"beyond all rounds", 1e300, statusNotConverged | statusOverReach},
    };
    for (const Case& c : cases) {
        Solved found = velocityForPower(stagePedaling, c.power);
        EXPECT_EQ(found.status, c.status) << c.name;
        EXPECT_GE(found.value, 0.0) << c.name;
    }
    runState.power = -100.0;
    EXPECT_EQ(velocityFromPedaling(), statusTooShortPower | statusBeyondTolerance);
    EXPECT_LT(runState.velocity, 0.0);
}

// With a shell loss that grows steeply with torque, pedaling power jumps where the gear changes; a power inside the
// jump has no velocity, and how far off the answer is decides its class.
TEST_F(SolverTest, powerInsideAGearJumpIsClassedByItsDistance)
{
    const double change = 90.0 * (51.0 / 17.0 + 51.0 / 15.0) / 2.0 * modelState.rearCircumference / 60000.0;
    struct Case {
        double shellLoss;
        ResultStatus status;
    };
    constexpr Case cases[] = {{1.0, 0}, {12.0, statusLooseTolerance}, {25.0, statusBeyondTolerance}};
    modelState.shellLossTorque = 10.0;
    for (const Case& c : cases) {
        modelState.shellLossPercent = c.shellLoss;
        double below = powerAtVelocity(stagePedaling, change * 0.999999).value;
        double above = powerAtVelocity(stagePedaling, change * 1.000001).value;
        Solved found = velocityForPower(stagePedaling, (below + above) / 2.0);
        EXPECT_EQ(found.status, c.status) << c.shellLoss << ": " << below << " to " << above;
        EXPECT_NEAR(found.value, change, 0.001) << c.shellLoss;
    }
}

TEST_F(SolverTest, powerFromVelocityFillsTheReference)
{
    runState.velocity = kph(40);
    EXPECT_EQ(powerFromVelocity(), 0u);
    EXPECT_NEAR(runState.power, 273.174, 0.0005);
    EXPECT_NEAR(runState.torque, 29.914, 0.0005);
    EXPECT_NEAR(runState.force, 17.683, 0.0005);
    EXPECT_NEAR(runState.maxPower, 295.225, 0.0005);
    EXPECT_NEAR(runState.peakPower[0] / runState.maxPower, 257.287 / 273.174, 1e-5); // of the thrust, not the pedals
    runState.velocity = 0.0;
    EXPECT_EQ(powerFromVelocity(), 0u);
    EXPECT_EQ(runState.power, 0.0);
    EXPECT_EQ(runState.maxPower, 0.0);
}

} // namespace torvane
