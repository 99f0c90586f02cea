// What a motor carries, by speed range.
#include "model/assist.h"

#include "model/model_fixture.h"

#include <cmath>

namespace torvane {

class AssistTest : public ModelTest {
protected:
    // Ratio 2.0 to 25 kph, falling to 1.5 at 32, none above.
    AssistTest()
    {
        setMotor(1, 1, 2, 0);
    }

    static void setMotor(int location, int first, int second, int third)
    {
        workingBlock.motorLocation = location;
        workingBlock.assistRangeMode[0] = first;
        workingBlock.assistRangeMode[1] = second;
        workingBlock.assistRangeMode[2] = third;
        restart();
    }

    static void withoutLosses()
    {
        modelState.shellLossPercent = modelState.missionLossPercent = modelState.wheelLossPercent = 0.0;
    }
};

TEST_F(AssistTest, ratioBySpeed)
{
    struct Case {
        const char* name;
        double velocity, ratio;
    };
    constexpr Case cases[] = {
        {"standing", 0.0, 2.0},
        {"end of the first", 25.0 / 3.6, 2.0},
        {"start of the linear", kph(25.0001), 2.0},
        {"half way", kph(28.5), 1.75},
        {"end of the linear", kph(32.0), 1.5},
        {"none", kph(32.1), 0.0},
        {"above all", kph(50.0), 0.0},
    };
    for (const Case& c : cases) {
        EXPECT_NEAR(assistRatioAt(c.velocity), c.ratio, 1e-5) << c.name;
    }
    modelState.assistRangeMode[0] = 2; // nothing to run from: none
    EXPECT_EQ(assistRatioAt(kph(20.0)), 0.0);
}

TEST_F(AssistTest, motorTakesItsShareAndIsLimited)
{
    struct Case {
        const char* name;
        int location;
        double maxPower, rider, motor;
    };
    constexpr Case cases[] = {
        {"crank", 1, 250.0, 50.0, 100.0},       {"hub", 2, 250.0, 50.0, 100.0},
        {"crank limited", 1, 80.0, 70.0, 80.0}, {"hub limited", 2, 80.0, 70.0, 80.0},
        {"no motor", 0, 250.0, 150.0, 0.0},
    };
    for (const Case& c : cases) {
        modelState.motorLocation = c.location;
        modelState.maxEPower = c.maxPower;
        withoutLosses();
        clearAssist();
        assistedDrivetrainFromThrust(kph(20), 150.0);
        EXPECT_NEAR(runState.pedalingPower, c.rider, 1e-9) << c.name;
        EXPECT_NEAR(runState.crankPower, c.location == 2 ? c.rider : 150.0, 1e-9) << c.name;
        EXPECT_NEAR(runState.assistPower, c.motor, 1e-9) << c.name;
        double stageTorque = c.location == 2 ? runState.hubTorque : runState.crankTorque;
        EXPECT_NEAR(runState.assistTorque, stageTorque * c.motor / 150.0, 1e-9) << c.name;
        EXPECT_NEAR(runState.pedalingTorque * runState.cadence * pi / 30.0, c.rider, 1e-9) << c.name;
    }
}

TEST_F(AssistTest, hubMotorAt40)
{
    setMotor(2, 1, 1, 1);
    Solved found = assistedPowerAtVelocity(stagePedaling, kph(40));
    EXPECT_EQ(found.status, 0u);
    EXPECT_NEAR(found.value, 135.372, 0.0005);
    EXPECT_NEAR(runState.crankPower, 134.179, 0.0005);
    EXPECT_NEAR(runState.hubPower, 260.307, 0.0005);
    EXPECT_NEAR(runState.assistPower, 130.154, 0.0005);
    EXPECT_NEAR(runState.assistTorque, 3.912, 0.0005);
    EXPECT_EQ(runState.assistForce, 0.0); // of the evaluation before, of which there is none
    assistedPowerAtVelocity(stagePedaling, kph(40));
    EXPECT_NEAR(runState.assistForce, 14.098, 0.0005); // half of 28.197
    assistedDrivetrainFromThrust(kph(40), 0.0);        // the road alone does it
    EXPECT_EQ(runState.assistPower + runState.assistTorque + runState.assistForce, 0.0);
}

TEST_F(AssistTest, forwardMotorAddsToItsStage)
{
    StepState step;
    step.velocity = kph(20);
    step.frontTooth = 50;
    step.rearTooth = 25;
    step.gearRatio = 2.0;
    step.cadence = 300.0 / pi; // 10 rad/s
    struct Case {
        const char* name;
        int location;
        double maxPower, crank, hub, motor;
    };
    constexpr Case cases[] = {
        {"crank", 1, 250.0, 300.0, 300.0, 200.0},
        {"hub", 2, 250.0, 100.0, 300.0, 200.0},
        {"hub limited", 2, 50.0, 100.0, 150.0, 50.0},
        {"no motor", 0, 250.0, 100.0, 100.0, 0.0},
    };
    for (const Case& c : cases) {
        modelState.motorLocation = c.location;
        modelState.maxEPower = c.maxPower;
        withoutLosses();
        clearAssist();
        runState.pedalingPower = 100.0;
        driveFromPedaling(step);
        EXPECT_NEAR(runState.crankPower, c.crank, 1e-9) << c.name;
        EXPECT_NEAR(runState.hubPower, c.hub, 1e-9) << c.name;
        EXPECT_NEAR(runState.thrustPower, c.hub, 1e-9) << c.name;
        EXPECT_NEAR(runState.assistPower, c.motor, 1e-9) << c.name;
        EXPECT_NEAR(runState.assistTorque, c.motor / (c.location == 2 ? 20.0 : 10.0), 1e-9) << c.name;
    }
    runState.pedalingPower = 0.0;
    modelState.motorLocation = 1;
    driveFromPedaling(step);
    EXPECT_EQ(runState.assistTorque, 0.0); // a share of nothing is nothing
}

TEST_F(AssistTest, velocityInsideTheRangesIsThatOfTheAssistedPower)
{
    for (int location : {1, 2}) {
        setMotor(location, 1, 1, 1);
        for (double wanted : {20.0, 40.0, 75.0, 120.0}) {
            Solved found = solveVelocityForPower(stagePedaling, wanted);
            double unassisted = velocityForPower(stagePedaling, wanted).value;
            EXPECT_EQ(found.status, 0u) << wanted;
            EXPECT_GT(found.value, unassisted * 1.1) << wanted;
            EXPECT_NEAR(solvePowerAtVelocity(stagePedaling, found.value).value, wanted, wanted * 0.01) << wanted;
        }
    }
}

TEST_F(AssistTest, powerInTheDeadZoneHasNoVelocity)
{
    setMotor(1, 1, 0, 0);
    double unassisted = powerAtVelocity(stagePedaling, kph(25.001)).value;
    double assisted = assistedPowerAtVelocity(stagePedaling, kph(25)).value;
    Solved found = assistedVelocityForPower(stagePedaling, (assisted + unassisted) / 2.0);
    EXPECT_EQ(found.status, statusNoAssistedVelocity);
    EXPECT_DOUBLE_EQ(runState.assistSampleVelocity[0], 25.0);
    EXPECT_DOUBLE_EQ(runState.assistSampleVelocity[1], 25.001);
    EXPECT_NEAR(runState.assistSamplePower[0], assisted, 1e-9);
    EXPECT_NEAR(runState.assistSamplePower[1], unassisted, 1e-9);
    EXPECT_GT(unassisted, 2.5 * assisted);
}

TEST_F(AssistTest, aboveAllRangesTheMotorIsOutOfPlayAndWarningsAreLost)
{
    setMotor(2, 1, 1, 1);
    Solved found = assistedVelocityForPower(stagePedaling, 400.0);
    EXPECT_EQ(found.status, 0u);
    EXPECT_NEAR(found.value * 3.6, 45.621, 0.0005);
    EXPECT_EQ(runState.assistPower, 0.0);
    found = assistedVelocityForPower(stagePedaling, 2246.382);
    EXPECT_EQ(found.status, 0u);
    EXPECT_GT(found.value, runState.reachVelocity);
}

TEST_F(AssistTest, withAllRangesNoneAMotorIsNoHelp)
{
    setMotor(2, 0, 0, 0);
    EXPECT_DOUBLE_EQ(assistedPowerAtVelocity(stagePedaling, kph(30)).value,
                     powerAtVelocity(stagePedaling, kph(30)).value);
    EXPECT_NEAR(assistedVelocityForPower(stagePedaling, 150.0).value, velocityForPower(stagePedaling, 150.0).value,
                1e-3);
}

} // namespace torvane
