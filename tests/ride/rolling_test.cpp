// Rolling without power, and the slopes that give a wanted velocity.
#include "core/result_status.h"
#include "model/solver.h"
#include "ride/inclination_run.h"
#include "ride/ride_fixture.h"

namespace torvane {

using RollingTest = RideTest;

TEST_F(RollingTest, theThresholdBeatsTheRollingResistance)
{
    prepare(rideInclinationAndVelocity, 0);
    // Rolling coefficient 0.0035 and tyres wide enough; the slope of 0.35 % by weight over inertial weight.
    ride->now.effectiveRolling = 0.0035;
    m.tyreSize[0] = m.tyreSize[1] = 40.0;
    m.humanWeight = 70.0;
    m.bikeWeight = 10.0;
    m.inertialWeight = 80.0;
    EXPECT_NEAR(rollThreshold(*ride), -0.35 - 0.01, 1e-5);
    ride->now.inclination = -0.355;
    EXPECT_EQ(checkRollingGradient(*ride), statusTooSmallGradient);
    EXPECT_EQ(ride->found.velocity, 0.0);
    ride->now.inclination = -0.365;
    EXPECT_EQ(checkRollingGradient(*ride), 0u);
}

TEST_F(RollingTest, standingStillOnlyTheSlopePulls)
{
    run(rideInclinationAndVelocity, 0);
    double pull = std::sin(std::atan(0.07)) * m.totalWeight * 9.80665 / m.inertialWeight;
    EXPECT_NEAR(ride->log.rows[1].accele, pull, 1e-12);
    EXPECT_NEAR(ride->log.rows[1].velocity, pull * 0.1, 1e-12);
}

TEST_F(RollingTest, limitsAreMetExactlyAndALongRollIsCut)
{
    block.rideStartVelocity[4] = 2.0;
    for (double amount : {300.0, 60.0, 0.05, 0.01, 0.0}) {
        block.rideDistance[4] = block.rideLegTime[4] = amount;
        for (int limit : {1, 2}) {
            block.inclinationLimit = limit;
            ASSERT_EQ(run(rideInclinationAndVelocity, 0).status, 0u);
            EXPECT_NEAR(limit == 1 ? ride->found.distance : ride->found.sectorTime, amount, 1e-9) << limit;
        }
    }
    block.inclinationLimit = 1;
    block.rideDistance[4] = 100000.0;
    EXPECT_EQ(run(rideInclinationAndVelocity, 0).status, 0u);
    EXPECT_NEAR(ride->found.sectorTime, 900.0, 0.1001);
}

TEST_F(RollingTest, theSlopeFoundGivesTheVelocityBack)
{
    for (int limit : {0, 1, 2}) {
        setDefaults(block);
        block.inclinationLimit = limit;
        block.rideVelocity[4] = kph(45);
        ASSERT_EQ(run(rideInclinationAndVelocity, 1).status, 0u) << limit;
        double found = ride->now.inclination;
        EXPECT_LT(found, -3.0) << limit;
        block.rideInclination[4] = found;
        ASSERT_EQ(run(rideInclinationAndVelocity, 0).status, 0u) << limit;
        EXPECT_NEAR(ride->found.velocity, kph(45), limit == 0 ? 0.0001 : 0.01) << limit;
    }
    block.inclinationLimit = 0;
    block.rideVelocity[4] = kph(0.0001); // at which no slope pushes with any power
    EXPECT_EQ(run(rideInclinationAndVelocity, 1).status, statusLooseTolerance);
}

} // namespace torvane
