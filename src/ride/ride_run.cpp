// Which simulation a mode and its target, reference factor or pattern name, and in what order its passes run.
#include "ride/ride_run.h"

#include "core/parameter_block.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/run_state.h"
#include "ride/acceleration.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/braking_seek.h"
#include "ride/critical_cornering.h"
#include "ride/deceleration.h"
#include "ride/inclination_run.h"
#include "ride/intermittent_braking.h"
#include "ride/motion.h"
#include "ride/number_check.h"
#include "ride/pattern_braking.h"
#include "ride/physiology.h"
#include "ride/power_and_velocity.h"
#include "ride/ride_status.h"

namespace torvane {

namespace {

// Reference factors of an acceleration and of a deceleration, in the order of their lists.
enum AccelerationFactor : int {
    accelerationMaxiPower,
    accelerationMeanPower,
    accelerationEndingVelocityMaxi,
    accelerationEndingVelocityMean,
    accelerationSectorTime,
    accelerationDistance,
    accelerationAccele,
    accelerationGravity,
    accelerationConstantPower,
};
enum DecelerationFactor : int {
    decelerationMaxiPower,
    decelerationMeanPower,
    decelerationEndingVelocity,
    decelerationSectorTime,
    decelerationDistance,
    decelerationAccele,
    decelerationGravity,
    decelerationConstantPower,
};
enum BrakingPattern : int { patternForce, patternCritical, patternVelocity, patternIntermittent };

constexpr double limitPerGravity = 35.30394; // 9.80665 x 3.6

// The reference power is the one for the ending velocity; that it lies above the gears' reach is no news then.
ResultStatus accelerateByEndingVelocity(bool asMean, SampleLog& log)
{
    constexpr ResultStatus mask = 0x7FEFFFFF;
    if (!(runState.startVelocity < runState.endVelocity)) {
        return statusIllegalValue;
    }
    if (!takePower(solvePowerAtVelocity(stagePedaling, runState.endVelocity).value)) {
        return statusNotConverged;
    }
    return (asMean ? seekMeanPower(log) : accelerateDryRun(PowerLaw::parabola, log)) & mask;
}

ResultStatus accelerateByGravity(SampleLog& log)
{
    runState.accele = runState.gravity * standardGravity;
    const ResultStatus status = seekAccele(log);
    runState.seekLow /= limitPerGravity;
    runState.seekHigh = 0.0;
    return status;
}

ResultStatus dryAcceleration(int factor, SampleLog& log)
{
    switch (factor) {
    case accelerationMeanPower:
        return seekMeanPower(log);
    case accelerationEndingVelocityMaxi:
    case accelerationEndingVelocityMean:
        return accelerateByEndingVelocity(factor == accelerationEndingVelocityMean, log);
    case accelerationSectorTime:
        return seekSectorTime(log);
    case accelerationDistance:
        return seekDistance(log);
    case accelerationAccele:
        return seekAccele(log);
    case accelerationGravity:
        return accelerateByGravity(log);
    case accelerationConstantPower:
        return accelerateDryRun(PowerLaw::constant, log);
    default:
        return accelerateDryRun(PowerLaw::parabola, log);
    }
}

ResultStatus decelerateByGravity(SampleLog& log)
{
    runState.accele = runState.gravity * standardGravity;
    const ResultStatus status = decelSeekAccele(log);
    runState.seekLow /= limitPerGravity;
    runState.seekHigh /= limitPerGravity;
    return status;
}

// A power that turns out negative is one of the brakes.
ResultStatus decelerateByPower(PowerLaw law, SampleLog& log)
{
    const ResultStatus status = decelerateDryRun(law, log);
    if (runState.thrustMode == 0) {
        return status;
    }
    return law == PowerLaw::parabola ? seekBrakeForPeakPower(log) : brakeDryRun(BrakeLaw::power, log);
}

ResultStatus dryDeceleration(int factor, SampleLog& log)
{
    switch (factor) {
    case decelerationMeanPower:
        return decelSeekMeanPower(log);
    case decelerationEndingVelocity:
        return decelPowerForEndingVelocity(log);
    case decelerationSectorTime:
        return decelSeekSectorTime(log);
    case decelerationDistance:
        return decelSeekDistance(log);
    case decelerationAccele:
        return decelSeekAccele(log);
    case decelerationGravity:
        return decelerateByGravity(log);
    case decelerationConstantPower:
        return decelerateByPower(PowerLaw::constant, log);
    default:
        return decelerateByPower(PowerLaw::parabola, log);
    }
}

// A place for the curves when the user wants any.
GraphSeries* graphFor(RideResult& result, int32_t wanted)
{
    return wanted != 0 ? &result.graph.emplace() : nullptr;
}

void runBrakes(BrakeLaw law, RideResult& result)
{
    clearBrakeEnergy();
    brakeLoggedRun(law, result.log, graphFor(result, workingBlock.expressGraph));
    energyLedger(runState.inclination, runState.distance, runState.startVelocity, runState.endVelocity);
}

void runAcceleration(int factor, RideResult& result)
{
    result.status = dryAcceleration(factor, result.log);
    if (isFatal(result.status)) {
        return;
    }
    const PowerLaw law = factor == accelerationConstantPower ? PowerLaw::constant : PowerLaw::parabola;
    const double normalized = accelerateLoggedRun(law, result.log, graphFor(result, workingBlock.expressGraph));
    physiologyOfRun(normalized);
}

void runDeceleration(int factor, RideResult& result)
{
    result.status = dryDeceleration(factor, result.log);
    if (isFatal(result.status)) {
        return;
    }
    const bool constant = factor == decelerationConstantPower;
    if (runState.thrustMode != 0) {
        runBrakes(constant ? BrakeLaw::power : BrakeLaw::force, result);
        return;
    }
    const PowerLaw law = constant ? PowerLaw::constant : PowerLaw::parabola;
    physiologyOfRun(decelerateLoggedRun(law, result.log, graphFor(result, workingBlock.expressGraph)));
}

void runConstantVelocity(RideResult& result)
{
    result.status = constantVelocityDryRun(result.log);
    if (isFatal(result.status)) {
        return;
    }
    clearBrakeEnergy();
    constantVelocityLoggedRun(result.log, graphFor(result, workingBlock.expressGraph));
    energyLedger(runState.inclination, runState.totalDistance, runState.endVelocity, runState.endVelocity);
}

void runIntermittent(RideResult& result)
{
    int intervals = 0;
    result.status = intermittentDryRun(result.log, intervals);
    if (isFatal(result.status)) {
        return;
    }
    clearBrakeEnergy();
    result.status = intermittentLoggedRun(intervals, result.log, graphFor(result, workingBlock.expressGraph));
    energyLedger(runState.inclination, runState.totalDistance, runState.startVelocity, runState.velocity);
}

void runPattern(int pattern, RideResult& result)
{
    switch (pattern) {
    case patternVelocity:
        runConstantVelocity(result);
        return;
    case patternIntermittent:
        runIntermittent(result);
        return;
    default:
        result.status =
            pattern == patternCritical ? criticalFullBraking(result.log) : brakeDryRun(BrakeLaw::force, result.log);
        if (!isFatal(result.status)) {
            runBrakes(BrakeLaw::force, result);
        }
    }
}

void runInclinationMode(int target, RideResult& result)
{
    result.status = runInclination(target, result.log, graphFor(result, workingBlock.expressGraph));
    if (result.status != 0) {
        result.graph.reset();
    }
}

void runPowerMode(int target, RideResult& result)
{
    result.status = runPowerAndVelocity(target, graphFor(result, workingBlock.bandGraphPowerVelocity));
    physiologyOfSteadyRide();
}

void runMode(RideResult& result)
{
    const int target = workingBlock.rideTarget;
    switch (workingBlock.rideMode) {
    case ridePowerAndVelocity:
        return runPowerMode(target, result);
    case rideAcceleration:
        return runAcceleration(target, result);
    case rideDeceleration:
        return runDeceleration(target, result);
    case ridePatternBraking:
        return runPattern(target, result);
    case rideInclinationAndVelocity:
        return runInclinationMode(target, result);
    case rideCriticalCornering:
        result.status = runCriticalCornering(target, graphFor(result, workingBlock.bandGraphCornering));
        return;
    default:
        return;
    }
}

} // namespace

void runRide(RideResult& result)
{
    physiology = {}; // of no run before
    runMode(result);
    if (!isFatal(result.status) && !endedInNumbers(result.log)) {
        const ResultStatus status = result.status | statusNotConverged;
        result = {};
        result.status = status;
    }
}

} // namespace torvane
