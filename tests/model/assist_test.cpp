// What a motor carries, by speed range.
#include "model/assist.h"
#include "model/chain_inverse.h"

#include "figures.h"
#include "model/model_fixture.h"

namespace torvane {

class AssistTest : public ModelTest {
protected:
    // Ratio 2.0 to 25 kph, falling to 1.5 at 32, none above.
    AssistTest()
    {
        setMotor(1, 1, 2, 0);
    }

    void setMotor(int location, int first, int second, int third)
    {
        block.motorLocation = location;
        int32_t* mode = block.assistRangeMode;
        mode[0] = first, mode[1] = second, mode[2] = third;
        restart();
    }

    void setLossless(double location, double maxPower)
    {
        m.motorLocation = static_cast<int32_t>(location);
        m.maxEPower = maxPower;
        m.shellLossPercent = m.missionLossPercent = m.wheelLossPercent = 0.0;
        clearAssist(now);
    }
};

TEST_F(AssistTest, ratioBySpeed)
{
    constexpr double cases[][2] = {{0, 2}, {25, 2}, {25.0001, 2}, {28.5, 1.75}, {32, 1.5}, {32.1, 0}, {50, 0}};
    for (auto [velocity, ratio] : cases)
        EXPECT_NEAR(assistRatioAt(model, kph(velocity)), ratio, 1e-5) << velocity;
    m.assistRangeMode[0] = 2; // nothing to run from: none
    EXPECT_EQ(assistRatioAt(model, kph(20.0)), 0.0);
}

TEST_F(AssistTest, motorTakesItsShareAndIsLimited)
{
    // Motor location and its maximum; power of rider and motor for 150 W at the road.
    constexpr double cases[][4] = {
        {1, 250, 50, 100}, {2, 250, 50, 100}, {1, 80, 70, 80}, {2, 80, 70, 80}, {0, 250, 150, 0}};
    for (auto [location, maxPower, rider, motor] : cases) {
        SCOPED_TRACE(location);
        setLossless(location, maxPower);
        assistedDrivetrainFromThrust(model, now, kph(20), 150.0);
        double stageTorque = location == 2 ? now.hubTorque : now.crankTorque;
        expectFigures({now.pedalingPower, now.crankPower, now.assistPower, now.assistTorque,
                       now.pedalingTorque * now.cadence * pi / 30.0},
                      {rider, location == 2 ? rider : 150.0, motor, stageTorque * motor / 150.0, rider}, 1e-9);
    }
}

TEST_F(AssistTest, thrustOfAStageGivesItBack)
{
    // Motor location, its maximum, kph, cadence, power; a slow crank loses nearly all of it.
    constexpr double cases[][5] = {{0, 250, 30, 90, 200},  {1, 250, 20, 80, 200}, {2, 250, 20, 80, 200},
                                   {1, 40, 20, 80, 200},   {2, 40, 20, 80, 200},  {0, 250, 5, 3, 2500},
                                   {0, 250, 60, 110, 1.5}, {1, 0, 30, 90, 200}};
    for (auto [location, maxPower, speed, cadence, power] : cases) {
        m.motorLocation = static_cast<int32_t>(location);
        m.maxEPower = maxPower;
        for (int stage = stagePedaling; stage <= stageThrust; ++stage) {
            double thrust = thrustForStage(model, now, stage, power, kph(speed), cadence);
            driveStagesFromThrust(model, now, kph(speed), thrust, radiansPerSecond(wheelRpmAt(model, kph(speed))),
                                  radiansPerSecond(cadence));
            EXPECT_NEAR(stagePower(now, stage) / power, 1, 1e-9) << location << ", stage " << stage << ", " << speed;
        }
    }
    setLossless(0, 0);
    EXPECT_EQ(thrustForStage(model, now, stagePedaling, 200, 8, 90), 200);
    EXPECT_EQ(thrustForStage(model, now, stagePedaling, 200, 8, 0), 0);
}

TEST_F(AssistTest, hubMotorAt40)
{
    setMotor(2, 1, 1, 1);
    Solved found = assistedPowerAtVelocity(model, now, stagePedaling, kph(40));
    EXPECT_EQ(found.status, 0u);
    expectFigures({found.value, now.crankPower, now.hubPower, now.assistPower, now.assistTorque},
                  {135.372, 134.179, 260.307, 130.154, 3.912}, 0.0005);
    EXPECT_EQ(now.assistForce, 0.0); // of the evaluation before, of which there is none
    assistedPowerAtVelocity(model, now, stagePedaling, kph(40));
    EXPECT_NEAR(now.assistForce, 14.098, 0.0005);           // half of 28.197
    assistedDrivetrainFromThrust(model, now, kph(40), 0.0); // the road alone does it
    expectFigures({now.assistPower, now.assistTorque, now.assistForce}, {0, 0, 0});
}

TEST_F(AssistTest, forwardMotorAddsToItsStage)
{
    StepState step;
    step.velocity = kph(20);
    step.frontTooth = 50, step.rearTooth = 25, step.gearRatio = 2.0;
    step.cadence = 300.0 / pi; // 10 rad/s
    // Motor location and its maximum; power at crank, hub and of the motor.
    constexpr double cases[][5] = {
        {1, 250, 300, 300, 200}, {2, 250, 100, 300, 200}, {2, 50, 100, 150, 50}, {0, 250, 100, 100, 0}};
    for (auto [location, maxPower, crank, hub, motor] : cases) {
        SCOPED_TRACE(location);
        setLossless(location, maxPower);
        driveFromPedaling(model, now, step, 100.0);
        expectFigures({now.crankPower, now.hubPower, now.thrustPower, now.assistPower, now.assistTorque},
                      {crank, hub, hub, motor, motor / (location == 2 ? 20.0 : 10.0)}, 1e-9);
    }
    m.motorLocation = 1;
    driveFromPedaling(model, now, step, 0.0);
    EXPECT_EQ(now.assistTorque, 0.0); // a share of nothing is nothing
}

TEST_F(AssistTest, powerInTheDeadZoneHasNoVelocity)
{
    setMotor(1, 1, 0, 0);
    double unassisted = powerAtVelocity(model, now, stagePedaling, kph(25.001)).value;
    double assisted = assistedPowerAtVelocity(model, now, stagePedaling, kph(25)).value;
    Solved found = assistedVelocityForPower(model, now, stagePedaling, (assisted + unassisted) / 2.0);
    EXPECT_EQ(found.status, statusNoAssistedVelocity);
    expectFigures(
        {now.assistSampleVelocity[0], now.assistSampleVelocity[1], now.assistSamplePower[0], now.assistSamplePower[1]},
        {25.0, 25.001, assisted, unassisted}, 1e-9);
    EXPECT_GT(unassisted, 2.5 * assisted);
    setMotor(1, 1, 1, 1); // the edge is the end of the last range
    double edge = m.assistRangeSpeed[2];
    unassisted = powerAtVelocity(model, now, stagePedaling, kph(edge + 0.001)).value;
    assisted = assistedPowerAtVelocity(model, now, stagePedaling, kph(edge)).value;
    found = assistedVelocityForPower(model, now, stagePedaling, (assisted + unassisted) / 2.0);
    EXPECT_EQ(found.status, statusNoAssistedVelocity);
    EXPECT_EQ(now.assistSampleVelocity[0], edge);
}

} // namespace torvane
