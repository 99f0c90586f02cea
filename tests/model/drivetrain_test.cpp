// The gear table, and power, torque and force along the stages.
#include "figures.h"
#include "model/drivetrain.h"
#include "model/model_fixture.h"

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
    for (int row = 0; row < modelState.gearCount; ++row)
        teeth.emplace_back(frontToothOf(row), rearToothOf(row));
    return teeth;
}

} // namespace

TEST_F(GearTableTest, defaultsMeetAtTheSharedSprocket)
{
    const Teeth expected = {{42, 27}, {42, 25}, {42, 23}, {42, 21}, {42, 19}, {42, 17},
                            {51, 17}, {51, 15}, {51, 14}, {51, 13}, {51, 12}, {51, 11}};
    EXPECT_EQ(tableTeeth(), expected);
    EXPECT_NEAR(runState.reachVelocity * 3.6, 70.055, 0.0005);
    EXPECT_NEAR(gearTable[0].velocityShiftUp / gearTable[0].velocityShiftDown, 110.0 / 85.0, 1e-12);
}

TEST_F(GearTableTest, oneRingAndThree)
{
    modelState.chainringCount = 1;
    modelState.sprocketCount = 3;
    buildGearTable();
    EXPECT_EQ(tableTeeth(), (Teeth{{51, 13}, {51, 12}, {51, 11}}));
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
    EXPECT_EQ(modelState.gearCount, 14);
    EXPECT_EQ(tableTeeth()[6], std::make_pair(51, 21)); // 51 / 21 is below 42 / 17, the row before
}

TEST_F(GearTableTest, nearestGear)
{
    expectFigures({nearestGear(0.1), nearestGear(42.0 / 19.0), nearestGear(9.0), nearestGear(NAN), nearestGear(5000.0)},
                  {0, 4, 11, 0, 0});
    modelState.chainring[0] = 42; // both rings alike: the earlier row wins
    buildGearTable();
    EXPECT_EQ(nearestGear(42.0 / 17.0), 5);
}

TEST_F(DrivetrainTest, stagesAt40)
{
    drivetrainFromThrust(kph(40), resistanceAtVelocity(kph(40)).value);
    expectFigures({runState.pedalingPower, runState.pedalingTorque, runState.pedalingForce, runState.crankPower,
                   runState.crankTorque, runState.crankForce, runState.hubPower, runState.hubTorque, runState.hubForce,
                   runState.thrustTorque, runState.thrustForce, runState.cadence},
                  {273.174, 29.914, 17.683, 268.358, 29.386, 29.069, 260.307, 7.825, 28.197, 7.734, 2.361, 87.205},
                  0.0005);
}

TEST_F(DrivetrainTest, withoutThrustEverythingIsZeroInTheLowestGear)
{
    for (auto [velocity, power] : {std::pair{0.0, 100.0}, {-1.0, 100.0}, {10.0, 0.0}, {10.0, -50.0}, {10.0, NAN}}) {
        drivetrainFromThrust(kph(40), 250.0);
        drivetrainFromThrust(velocity, power);
        expectFigures({runState.pedalingPower + runState.crankTorque + runState.hubForce + runState.thrustPower,
                       runState.cadence, modelState.currentFrontTooth, modelState.currentRearTooth},
                      {0.0, 0.0, 42, 27});
    }
}

} // namespace torvane
