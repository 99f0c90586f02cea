#include "ride/inclination_run.h"

#include "model/assist.h"
#include "model/run_state.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
#include "ride/ride_status.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double firstInclination = -3.0; // %
constexpr double noThrust = 0.001;        // W
constexpr double closeVelocity = 0.01;    // m/s

// The limit in force; the other figure reads 0 in the report.
RollLimit takeLimit()
{
    RollLimit limit{static_cast<RollUntil>(runState.inclinationLimit), runState.distance, runState.sectorTime};
    if (limit.until != RollUntil::distance) {
        runState.distance = limit.distance = 0.0;
    }
    if (limit.until != RollUntil::time) {
        runState.sectorTime = limit.time = 0.0;
    }
    return limit;
}

ResultStatus solveVelocity(const RollLimit& limit, SampleLog& log)
{
    ResultStatus status = checkRollingGradient();
    if (status == 0 && limit.until == RollUntil::steady) {
        status = solveRollingVelocity();
    }
    const double poised = runState.velocity;
    if (!isFatal(status)) {
        status |= rollDryRun(limit, log);
    }
    if (limit.until == RollUntil::steady) {
        runState.velocity = poised;
    }
    return status;
}

ResultStatus solveInclination(const RollLimit& limit, SampleLog& log)
{
    if (!(runState.velocity > 0.0)) {
        return statusTooSmallVelocity;
    }
    if (limit.until != RollUntil::steady) {
        return seekInclinationOver(limit, log);
    }
    const double wanted = runState.velocity;
    ResultStatus status = seekInclinationForFinalVelocity();
    if (!isFatal(status)) {
        status |= rollDryRun(limit, log);
    }
    runState.velocity = wanted;
    return status;
}

} // namespace

ResultStatus runInclination(int target, SampleLog& log, GraphSeries* graph)
{
    const RollLimit limit = takeLimit();
    clearBrakeEnergy();
    const ResultStatus status = target == 0 ? solveVelocity(limit, log) : solveInclination(limit, log);
    if (status != 0) {
        return status;
    }
    clearBrakeEnergy();
    const double solved = runState.velocity;
    const ResultStatus logged = rollLoggedRun(limit, log, graph);
    if (limit.until == RollUntil::steady) {
        runState.velocity = solved; // what the report calls final, a little above where the run faded out
    }
    return logged;
}

ResultStatus seekInclinationForFinalVelocity()
{
    Stepper inclination{firstInclination, -1.0, 0.3};
    double missing = 0.0; // W
    const Settled settled = settle(inclination, noThrust, [&missing](double percent) {
        runState.inclination = percent;
        resetGrip();
        return missing = solvePowerAtVelocity(stageThrust, runState.velocity).value;
    });
    if (settled != Settled::met) {
        return statusNotConverged;
    }
    // Near standstill hardly any power is needed on any slope, and the first one would do.
    return std::fabs(missing) > std::fabs(runState.slopePower) * 0.01 ? statusLooseTolerance : 0;
}

ResultStatus seekInclinationOver(const RollLimit& limit, SampleLog& log)
{
    const double wanted = runState.velocity;
    Stepper inclination{firstInclination, 0.1, 0.3};
    runState.inclination = inclination.value;
    resetGrip();
    std::optional<ResultStatus> rolled = 0;
    const Settled settled = settle(inclination, closeVelocity, rollThreshold(), [&](double percent) {
        runState.inclination = percent;
        rolled = rollTrial(limit, wanted - 2.0 * closeVelocity, log);
        return runState.velocity - wanted; // too fast: a gentler slope
    });
    const ResultStatus status = rolled ? *rolled : rollDryRun(limit, log); // a search that ends shows its last run
    return status | (settled == Settled::never ? statusNotConverged : toleranceClass(runState.velocity, wanted));
}

} // namespace torvane
