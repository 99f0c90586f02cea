#include "ride/inclination_run.h"

#include "core/result_status.h"
#include "model/assist.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double firstInclination = -3.0; // %
constexpr double noThrust = 0.001;        // W
constexpr double closeVelocity = 0.01;    // m/s

// The limit in force; the other figure reads 0 in the report.
RollLimit takeLimit(RideRun& ride)
{
    RollLimit limit{static_cast<InclinationLimit>(ride.in.inclinationLimit), ride.in.distance, ride.in.sectorTime};
    if (limit.until != limitDistance)
        ride.found.distance = limit.distance = 0.0;
    if (limit.until != limitTime)
        ride.found.sectorTime = limit.time = 0.0;
    return limit;
}

ResultStatus solveVelocity(RideRun& ride, const RollLimit& limit)
{
    ResultStatus status = checkRollingGradient(ride);
    if (status == statusDone && limit.until == limitNone)
        status = solveRollingVelocity(ride);
    double poised = ride.found.velocity;
    if (!isFatal(status))
        status |= rollDryRun(ride, limit);
    if (limit.until == limitNone)
        ride.found.velocity = poised;
    return status;
}

ResultStatus solveInclination(RideRun& ride, const RollLimit& limit)
{
    if (!(ride.in.velocity > 0.0))
        return statusTooSmallVelocity;
    if (limit.until != limitNone)
        return seekInclinationOver(ride, limit);
    ResultStatus status = seekInclinationForFinalVelocity(ride);
    if (!isFatal(status))
        status |= rollDryRun(ride, limit);
    ride.found.velocity = ride.in.velocity;
    return status;
}

} // namespace

ResultStatus runInclination(RideRun& ride)
{
    RollLimit limit = takeLimit(ride);
    clearBrakeEnergy(ride);
    const ResultStatus status =
        ride.in.rideTarget == inclinationTargetVelocity ? solveVelocity(ride, limit) : solveInclination(ride, limit);
    if (status != statusDone)
        return status;
    clearBrakeEnergy(ride);
    double solved = ride.found.velocity;
    ResultStatus logged = rollLoggedRun(ride, limit);
    if (limit.until == limitNone)
        ride.found.velocity = solved; // what the report calls final, a little above where the run faded out
    return logged;
}

ResultStatus seekInclinationForFinalVelocity(RideRun& ride)
{
    Stepper inclination{firstInclination, -1.0, 0.3};
    double missing = 0.0; // W
    Settled settled = settle(ride.progress, inclination, noThrust, [&](double percent) {
        ride.now.inclination = percent;
        resetGrip(ride);
        return missing = solvePowerAtVelocity(ride.model, ride.now, stageThrust, ride.in.velocity).value;
    });
    if (settled != Settled::met)
        return statusNotConverged;
    // Near standstill hardly any power is needed on any slope, and the first one would do.
    return std::fabs(missing) > std::fabs(ride.now.slopePower) * 0.01 ? statusLooseTolerance : statusDone;
}

ResultStatus seekInclinationOver(RideRun& ride, const RollLimit& limit)
{
    double wanted = ride.in.velocity;
    Stepper inclination{firstInclination, 0.1, 0.3};
    ride.now.inclination = inclination.value;
    resetGrip(ride);
    std::optional<ResultStatus> rolled = 0;
    Settled settled = settle(ride.progress, inclination, closeVelocity, rollThreshold(ride), [&](double percent) {
        ride.now.inclination = percent;
        rolled = rollTrial(ride, limit, wanted - 2.0 * closeVelocity);
        return ride.found.velocity - wanted; // too fast: a gentler slope
    });
    ResultStatus status = rolled ? *rolled : rollDryRun(ride, limit); // a search that ends shows its last run
    return status | (settled == Settled::never ? statusNotConverged : toleranceClass(ride.found.velocity, wanted));
}

} // namespace torvane
