// Rolling without power, and the slopes that give a wanted velocity.
#include "model/solver.h"
#include "ride/inclination_run.h"
#include "ride/ride_fixture.h"
#include "ride/ride_status.h"

namespace torvane {

using RollingTest = RideTest;

TEST_F(RollingTest, theThresholdBeatsTheRollingResistance)
{
    prepare(rideInclinationAndVelocity, 0);
    // Rolling coefficient 0.0035 and tyres wide enough; the slope of 0.35 % by weight over inertial weight.
    modelState.effectiveRolling = 0.0035;
    modelState.tyreSize[0] = modelState.tyreSize[1] = 40.0;
    modelState.humanWeight = 70.0;
    modelState.bikeWeight = 10.0;
    modelState.inertialWeight = 80.0;
    EXPECT_NEAR(rollThreshold(), -0.35 - 0.01, 1e-5);
    runState.inclination = -0.355;
    EXPECT_EQ(checkRollingGradient(), statusTooSmallGradient);
    EXPECT_EQ(runState.velocity, 0.0);
    runState.inclination = -0.365;
    EXPECT_EQ(checkRollingGradient(), 0u);
}

TEST_F(RollingTest, theRunFadesOutBelowThePoisedVelocity)
{
    const RideResult result = ride(rideInclinationAndVelocity, 0);
    const SampleRow& last = result.log.rows[static_cast<size_t>(result.log.sampleCount)];
    EXPECT_LT(last.accele, 0.0005);
    EXPECT_NEAR(last.velocity * 3.6, 57.95, 0.005);
    EXPECT_NEAR(runState.velocity * 3.6, 57.973, 0.001);
    EXPECT_EQ(last.time, result.log.rows[static_cast<size_t>(result.log.sampleCount) - 1].time); // adds no step
}

TEST_F(RollingTest, limitsAreMetExactlyAndALongRollIsCut)
{
    workingBlock.rideStartVelocity[4] = 2.0;
    for (double amount : {300.0, 60.0, 0.05, 0.01, 0.0}) {
        workingBlock.rideDistance[4] = workingBlock.rideLegTime[4] = amount;
        for (int limit : {1, 2}) {
            workingBlock.inclinationLimit = limit;
            ASSERT_EQ(ride(rideInclinationAndVelocity, 0).status, 0u);
            EXPECT_NEAR(limit == 1 ? runState.distance : runState.sectorTime, amount, 1e-9) << limit;
        }
    }
    workingBlock.inclinationLimit = 1;
    workingBlock.rideDistance[4] = 100000.0;
    EXPECT_EQ(ride(rideInclinationAndVelocity, 0).status, 0u);
    EXPECT_NEAR(runState.sectorTime, 900.0, 0.1001);
}

TEST_F(RollingTest, theSlopeFoundGivesTheVelocityBack)
{
    for (int limit : {0, 1, 2}) {
        setDefaults(workingBlock);
        workingBlock.inclinationLimit = limit;
        workingBlock.rideVelocity[4] = kph(45);
        ASSERT_EQ(ride(rideInclinationAndVelocity, 1).status, 0u) << limit;
        const double found = runState.inclination;
        EXPECT_LT(found, -3.0) << limit;
        workingBlock.rideInclination[4] = found;
        ASSERT_EQ(ride(rideInclinationAndVelocity, 0).status, 0u) << limit;
        EXPECT_NEAR(runState.velocity, kph(45), limit == 0 ? 0.0001 : 0.01) << limit;
    }
    workingBlock.inclinationLimit = 0;
    workingBlock.rideVelocity[4] = kph(0.0001); // at which no slope pushes with any power
    EXPECT_EQ(ride(rideInclinationAndVelocity, 1).status, statusLooseTolerance);
}

} // namespace torvane
