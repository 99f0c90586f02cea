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

} // namespace torvane
