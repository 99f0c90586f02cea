// The gear table, and power, torque and force along the stages.
#include "model/drivetrain.h"
#include "model/model_fixture.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace torvane {

using GearTableTest = ModelTest;
using DrivetrainTest = ModelTest;

namespace {

using Teeth = std::vector<std::pair<int, int>>;

Teeth tableTeeth()
{
    Teeth teeth;
    for (int row = 0; row < modelState.gearCount; ++row) {
        teeth.emplace_back(frontToothOf(row), rearToothOf(row));
    }
    return teeth;
}

} // namespace

TEST_F(GearTableTest, defaultsMeetAtTheSharedSprocket)
{
    const Teeth expected = {{42, 27}, {42, 25}, {42, 23}, {42, 21}, {42, 19}, {42, 17},
                            {51, 17}, {51, 15}, {51, 14}, {51, 13}, {51, 12}, {51, 11}};
    EXPECT_EQ(tableTeeth(), expected);
    EXPECT_NEAR(runState.reachVelocity * 3.6, 70.055, 0.0005);
    EXPECT_NEAR(gearTable[0].velocityUsual, 90.0 * 42 / 27 * 2.098583893 / 60.0, 1e-9);
    EXPECT_NEAR(gearTable[0].velocityShiftUp / gearTable[0].velocityShiftDown, 110.0 / 85.0, 1e-12);
}

TEST_F(GearTableTest, oneRingUsesEverySprocketOnce)
{
    modelState.chainringCount = 1;
    modelState.sprocketCount = 3;
    buildGearTable();
    EXPECT_EQ(tableTeeth(), (Teeth{{51, 13}, {51, 12}, {51, 11}}));
}

TEST_F(GearTableTest, threeRings)
{
    modelState.chainringCount = 3;
    modelState.sprocketCount = 4;
    modelState.cadenceShiftUp = 300.0; // no jump is too wide
    buildGearTable();
    EXPECT_EQ(tableTeeth(), (Teeth{{33, 14}, {33, 13}, {42, 13}, {42, 12}, {51, 12}, {51, 11}}));
}

TEST_F(GearTableTest, narrowShiftWindowStartsTheNextRingFurtherDown)
{
    modelState.cadenceShiftUp = 90.0; // 90 / 85 allows a jump of 6 percent; 51 x 17 after 42 x 17 is 21 percent
    buildGearTable();
    Teeth teeth = tableTeeth();
    EXPECT_EQ(modelState.gearCount, 14);
    EXPECT_EQ(teeth[5], std::make_pair(42, 17));
    EXPECT_EQ(teeth[6], std::make_pair(51, 21)); // 51 / 21 is below 42 / 17
}

TEST_F(GearTableTest, allCountsStayInsideTheCassetteAndEndInTheTopGear)
{
    for (double shiftUp : {30.0, 110.0, 300.0}) {
        for (int rings = 1; rings <= 3; ++rings) {
            for (int sprockets = 1; sprockets <= 15; ++sprockets) {
                modelState.cadenceShiftUp = shiftUp;
                modelState.chainringCount = rings;
                modelState.sprocketCount = sprockets;
                buildGearTable();
                ASSERT_LE(modelState.gearCount, gearTableCapacity);
                const GearEntry& top = gearTable[modelState.gearCount - 1];
                EXPECT_EQ(gearTable[0].rearIndex, sprockets - 1);
                EXPECT_EQ(std::make_pair(top.frontIndex, top.rearIndex), std::make_pair(0, 0))
                    << rings << 'x' << sprockets;
            }
        }
    }
}

TEST_F(GearTableTest, nearestGear)
{
    EXPECT_EQ(nearestGear(0.1), 0);
    EXPECT_EQ(nearestGear(42.0 / 19.0), 4);
    EXPECT_EQ(nearestGear(9.0), 11);
    EXPECT_EQ(nearestGear(NAN), 0);
    EXPECT_EQ(nearestGear(5000.0), 0);
    modelState.chainring[0] = 42; // both rings alike: the earlier row wins
    buildGearTable();
    EXPECT_EQ(nearestGear(42.0 / 17.0), 5);
}

TEST_F(DrivetrainTest, stagesAt40)
{
    drivetrainFromThrust(kph(40), resistanceAtVelocity(kph(40)).value);
    EXPECT_NEAR(runState.pedalingPower, 273.174, 0.0005);
    EXPECT_NEAR(runState.pedalingTorque, 29.914, 0.0005);
    EXPECT_NEAR(runState.pedalingForce, 17.683, 0.0005);
    EXPECT_NEAR(runState.crankPower, 268.358, 0.0005);
    EXPECT_NEAR(runState.crankTorque, 29.386, 0.0005);
    EXPECT_NEAR(runState.crankForce, 29.069, 0.0005);
    EXPECT_NEAR(runState.hubPower, 260.307, 0.0005);
    EXPECT_NEAR(runState.hubTorque, 7.825, 0.0005);
    EXPECT_NEAR(runState.hubForce, 28.197, 0.0005);
    EXPECT_NEAR(runState.thrustTorque, 7.734, 0.0005);
    EXPECT_NEAR(runState.thrustForce, 2.361, 0.0005);
    EXPECT_NEAR(runState.cadence, 87.205, 0.0005);
    EXPECT_EQ(modelState.currentFrontTooth, 51);
    EXPECT_EQ(modelState.currentRearTooth, 14);
}

TEST_F(DrivetrainTest, withoutThrustEverythingIsZeroInTheLowestGear)
{
    for (auto [velocity, power] : {std::pair{0.0, 100.0}, {-1.0, 100.0}, {10.0, 0.0}, {10.0, -50.0}, {10.0, NAN}}) {
        drivetrainFromThrust(kph(40), 250.0);
        drivetrainFromThrust(velocity, power);
        EXPECT_EQ(runState.pedalingPower + runState.crankTorque + runState.hubForce + runState.thrustPower, 0.0);
        EXPECT_EQ(runState.cadence, 0.0);
        EXPECT_EQ(modelState.currentFrontTooth, 42);
        EXPECT_EQ(modelState.currentRearTooth, 27);
    }
}

TEST_F(DrivetrainTest, forwardLossesTakeTheTorqueNearerThePedals)
{
    StepState step;
    step.frontTooth = 50;
    step.rearTooth = 25;
    step.gearRatio = 2.0;
    step.cadence = 300.0 / pi; // 10 rad/s
    runState.pedalingPower = 250.0;
    drivetrainFromPedaling(step);
    EXPECT_NEAR(runState.pedalingTorque, 25.0, 1e-12);
    EXPECT_NEAR(runState.pedalingForce, 14.778496, 1e-6); // 25 / 9.80665 / 0.1725
    EXPECT_NEAR(runState.crankPower, 246.25, 1e-12);      // less 3 % x 25 / 50
    EXPECT_NEAR(runState.crankForce, 24.846299, 1e-6);    // 24.625 Nm on 50 teeth
    EXPECT_NEAR(runState.hubPower, 238.8625, 1e-12);      // less 3 %
    EXPECT_NEAR(runState.hubTorque, 11.943125, 1e-12);    // 20 rad/s
    EXPECT_NEAR(runState.thrustPower, 234.583353, 1e-6);  // less 3 % x 11.943125 / 20
    EXPECT_NEAR(runState.thrustForce, 3.580965, 1e-6);    // on 334 mm
    EXPECT_NEAR(runState.hubForce, 24.100910, 1e-6);      // chain tension less the mission loss
}

TEST_F(DrivetrainTest, powerNeverGrowsTowardsTheRoad)
{
    for (double velocity = 2.0; velocity < 20.0; velocity += 1.5) {
        for (double power : {1.0, 80.0, 400.0}) {
            drivetrainFromThrust(velocity, power);
            EXPECT_GT(runState.pedalingPower, runState.crankPower);
            EXPECT_GT(runState.crankPower, runState.hubPower);
            EXPECT_GT(runState.hubPower, power);
            // torque x angular velocity is the power, at both ends
            EXPECT_NEAR(runState.pedalingTorque * runState.cadence * pi / 30.0, runState.pedalingPower, 1e-9);
            EXPECT_NEAR(runState.thrustTorque * velocity * 2000.0 * pi / modelState.rearCircumference, power, 1e-9);
        }
    }
}

} // namespace torvane
