#include "ride/braking_seek.h"

#include "core/result_status.h"
#include "model/constants.h"
#include "ride/braking_run.h"
#include "ride/seek.h"

namespace torvane {

namespace {

ResultStatus brakeByForce(RideRun& ride)
{
    return brakeDryRun(ride, BrakeLaw::force);
}

bool isFalling(const RideRun& ride)
{
    return ride.in.startVelocity > ride.in.endVelocity;
}

// The step has the sign of the force: a step down is less braking, and is due where the run came out too hard.
ResultStatus seekForce(RideRun& ride, double firstForce, double step, double wanted, double& result, double tolerance)
{
    ride.found.force = firstForce;
    return seekTarget(ride, {&ride.found.force, &result, wanted, step, tolerance, HighSide::belowWanted}, brakeByForce);
}

ResultStatus seekForPower(RideRun& ride, double& result)
{
    double wanted = ride.in.power;
    if (!(wanted < 0.0) || !isFalling(ride))
        return statusIllegalValue;
    double force = wanted / (ride.in.startVelocity * standardGravity);
    return seekForce(ride, force, 0.4 * force, wanted, result, 0.001);
}

} // namespace

ResultStatus seekBrakeForPeakPower(RideRun& ride)
{
    return seekForPower(ride, ride.found.peakPower[stageThrust]);
}

ResultStatus seekBrakeForMeanPower(RideRun& ride)
{
    return seekForPower(ride, ride.found.meanStagePower[stageThrust]);
}

ResultStatus seekBrakeForSectorTime(RideRun& ride, double wanted)
{
    if (!(wanted > 0.0) || !isFalling(ride))
        return statusIllegalValue;
    ResultStatus status = seekForce(ride, -5.0, -2.0, wanted, ride.found.sectorTime, 0.01);
    ride.found.sectorTime = wanted;
    return status;
}

ResultStatus seekBrakeForDistance(RideRun& ride, double wanted)
{
    if (!(wanted > 0.0) || !isFalling(ride))
        return statusIllegalValue;
    return seekForce(ride, -7.0, -2.8, wanted, ride.found.distance, 0.1);
}

ResultStatus seekBrakeForAccele(RideRun& ride, double wanted)
{
    if (!(wanted < 0.0) || !isFalling(ride))
        return statusIllegalValue;
    return seekForce(ride, -7.0, -2.8, wanted, ride.found.accele, 0.0015);
}

} // namespace torvane
