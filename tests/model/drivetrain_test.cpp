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

Teeth teethOf(const Model& model)
{
    Teeth teeth;
    for (int row = 0; row < model.state.gearCount; ++row)
        teeth.emplace_back(frontToothOf(model, row), rearToothOf(model, row));
    return teeth;
}

} // namespace

TEST_F(GearTableTest, defaultsMeetAtTheSharedSprocket)
{
    Teeth expected = {{42, 27}, {42, 25}, {42, 23}, {42, 21}, {42, 19}, {42, 17},
                      {51, 17}, {51, 15}, {51, 14}, {51, 13}, {51, 12}, {51, 11}};
    EXPECT_EQ(teethOf(model), expected);
    EXPECT_NEAR(model.reachVelocity * 3.6, 70.055, 0.0005);
    EXPECT_NEAR(model.gearTable[0].velocityShiftUp / model.gearTable[0].velocityShiftDown, 110.0 / 85.0, 1e-12);
}

TEST_F(GearTableTest, oneRingAndThree)
{
    m.chainringCount = 1;
    m.sprocketCount = 3;
    buildGearTable(model);
    EXPECT_EQ(teethOf(model), (Teeth{{51, 13}, {51, 12}, {51, 11}}));
    m.chainringCount = 3;
    m.sprocketCount = 4;
    m.cadenceShiftUp = 300.0; // no jump is too wide
    buildGearTable(model);
    EXPECT_EQ(teethOf(model), (Teeth{{33, 14}, {33, 13}, {42, 13}, {42, 12}, {51, 12}, {51, 11}}));
}

TEST_F(GearTableTest, narrowShiftWindowStartsTheNextRingFurtherDown)
{
    m.cadenceShiftUp = 90.0; // 90 / 85 allows a jump of 6 percent; 51 x 17 after 42 x 17 is 21 percent
    buildGearTable(model);
    EXPECT_EQ(m.gearCount, 14);
    EXPECT_EQ(teethOf(model)[6], std::make_pair(51, 21)); // 51 / 21 is below 42 / 17, the row before
    m.chainring[1] = 20;                                  // no sprocket is large enough
    buildGearTable(model);
    EXPECT_EQ(teethOf(model)[6], std::make_pair(51, 27));
}

TEST_F(GearTableTest, nearestGear)
{
    expectFigures({nearestGear(model, 0.1), nearestGear(model, 42.0 / 19.0), nearestGear(model, 9.0),
                   nearestGear(model, NAN), nearestGear(model, 5000.0)},
                  {0, 4, 11, 0, 0});
    m.chainring[0] = 42; // both rings alike: the earlier row wins
    buildGearTable(model);
    EXPECT_EQ(nearestGear(model, 42.0 / 17.0), 5);
}

TEST_F(DrivetrainTest, withoutThrustEverythingIsZeroInTheLowestGear)
{
    for (auto [velocity, power] : {std::pair{0.0, 100.0}, {-1.0, 100.0}, {10.0, 0.0}, {10.0, -50.0}, {10.0, NAN}}) {
        SCOPED_TRACE(testing::Message() << velocity << " m/s, " << power << " W");
        drivetrainFromThrust(model, now, kph(40), 250.0);
        drivetrainFromThrust(model, now, velocity, power);
        expectFigures({now.pedalingPower, now.crankTorque, now.hubForce, now.thrustPower, now.cadence,
                       now.currentFrontTooth, now.currentRearTooth},
                      {0, 0, 0, 0, 0, 42, 27});
    }
}

} // namespace torvane
