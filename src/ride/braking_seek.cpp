#include "ride/braking_seek.h"

#include "model/constants.h"
#include "model/run_state.h"
#include "ride/braking_run.h"
#include "ride/ride_status.h"
#include "ride/seek.h"

namespace torvane {

namespace {

ResultStatus brakeByForce(SampleLog& log)
{
    return brakeDryRun(BrakeLaw::force, log);
}

bool isFalling()
{
    return runState.startVelocity > runState.endVelocity;
}

// The step has the sign of the force: a step down is less braking, and is due where the run came out too hard.
ResultStatus seekForce(double firstForce, double step, double wanted, double& result, double tolerance, SampleLog& log)
{
    runState.force = firstForce;
    return seekTarget({&runState.force, &result, wanted, step, tolerance, HighSide::belowWanted}, log, brakeByForce);
}

ResultStatus seekForPower(double& result, SampleLog& log)
{
    if (!(runState.power < 0.0) || !isFalling()) {
        return statusIllegalValue;
    }
    const double force = runState.power / (runState.startVelocity * standardGravity);
    return seekForce(force, 0.4 * force, runState.power, result, 0.001, log);
}

} // namespace

ResultStatus seekBrakeForPeakPower(SampleLog& log)
{
    return seekForPower(runState.peakPower[stageThrust], log);
}

ResultStatus seekBrakeForMeanPower(SampleLog& log)
{
    return seekForPower(runState.meanStagePower[stageThrust], log);
}

ResultStatus seekBrakeForSectorTime(SampleLog& log)
{
    const double wanted = runState.sectorTime;
    if (!(wanted > 0.0) || !isFalling()) {
        return statusIllegalValue;
    }
    const ResultStatus status = seekForce(-5.0, -2.0, wanted, runState.sectorTime, 0.01, log);
    runState.sectorTime = wanted;
    return status;
}

ResultStatus seekBrakeForDistance(SampleLog& log)
{
    const double wanted = runState.distance;
    if (!(wanted > 0.0) || !isFalling()) {
        return statusIllegalValue;
    }
    return seekForce(-7.0, -2.8, wanted, runState.distance, 0.1, log);
}

ResultStatus seekBrakeForAccele(SampleLog& log)
{
    const double wanted = runState.accele;
    if (!(wanted < 0.0) || !isFalling()) {
        return statusIllegalValue;
    }
    return seekForce(-7.0, -2.8, wanted, runState.accele, 0.0015, log);
}

} // namespace torvane
