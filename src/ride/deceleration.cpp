#include "ride/deceleration.h"

#include "core/parameter_block.h"
#include "model/assist.h"
#include "model/gear_table.h"
#include "ride/braking_run.h"
#include "ride/braking_seek.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

bool decelerateStep(PedaledRun& run, RunRecorder* recorder)
{
    StepState& s = run.state;
    pedalOrShift(run, 0.0);
    s.accele = powerAcceleration(s);
    followLargestAccele(s.accele);
    if (std::fabs(s.accele) < plateauAccele) {
        return false;
    }
    rideStep(run, recorder);
    if (s.velocity <= runState.endVelocity) {
        settleAtEnd(run);
        return false;
    }
    shiftDown(run);
    return true;
}

bool isFalling()
{
    return runState.endVelocity < runState.startVelocity;
}

double interval()
{
    return runState.decelerationIntervalMode == 0 ? automaticInterval(runState.startVelocity)
                                                  : runState.decelerationInterval;
}

// Whether the reference power lets slow from start to end.
ResultStatus comparePower()
{
    resetGrip();
    if (solveVelocityForPower(stagePedaling, 0.0).value >= runState.startVelocity) {
        return statusNoDeceleration;
    }
    const double heldVelocity = solveVelocityForPower(stagePedaling, runState.power).value;
    if (heldVelocity >= runState.startVelocity) {
        return statusTooLargePower;
    }
    return heldVelocity > runState.endVelocity ? statusDeclineMayStop : 0;
}

ResultStatus pedalDown(PowerLaw law, ResultStatus status, SampleLog& log, RunRecorder* recorder)
{
    PedaledRun run = startPedaledRun(law, interval(), startGear(1, runState.startVelocity));
    run.status = status;
    if (!runSteps(run, recorder, decelerateStep)) {
        run.status = statusNotConverged;
    }
    finishPedaledRun(run, log, recorder);
    return run.status;
}

ResultStatus decelerate(PowerLaw law, SampleLog& log, RunRecorder* recorder)
{
    if (!isFalling() || !(interval() >= leastInterval) || std::isnan(runState.power)) {
        return statusIllegalValue;
    }
    if (runState.power < 0.0) {
        runState.thrustMode = 1;
        return 0;
    }
    const ResultStatus status = comparePower();
    return isFatal(status) ? status : pedalDown(law, status, log, recorder);
}

ResultStatus decelerateByParabola(SampleLog& log)
{
    return decelerateDryRun(PowerLaw::parabola, log);
}

double powerForEndingVelocity()
{
    resetGrip();
    return solvePowerAtVelocity(stagePedaling, runState.endVelocity).value;
}

// A figure of the run that grows with the power: the time, the distance, and the acceleration, which is negative.
struct Factor {
    double RunState::*figure;
    double tolerance;
    ResultStatus beyond;
    ResultStatus (*brake)(SampleLog&); // the same figure by braking
};

constexpr Factor sectorTimeFactor = {&RunState::sectorTime, 0.01, statusTooLongTime, seekBrakeForSectorTime};
constexpr Factor distanceFactor = {&RunState::distance, 0.1, statusTooLongDistance, seekBrakeForDistance};
constexpr Factor acceleFactor = {&RunState::accele, 0.0015, statusTooHighAccele, seekBrakeForAccele};

// First power of a seek, laid between coasting and the power for the ending velocity. Leaves the limits, and the status
// of the run with that power, when there is one.
double firstPower(const Factor& factor, double wanted, ResultStatus& status, SampleLog& log)
{
    double& figure = runState.*factor.figure;
    const double coasting = figure;
    double power = 0.0;
    if (runState.endVelocity != 0.0) {
        const double holding = powerForEndingVelocity();
        runState.power = holding;
        status = decelerateByParabola(log);
        power = holding * (figure - wanted) / (figure - coasting);
    }
    runState.seekLow = coasting;
    runState.seekHigh = figure;
    return power;
}

ResultStatus seekFactor(const Factor& factor, SampleLog& log)
{
    double& figure = runState.*factor.figure;
    const double wanted = figure;
    runState.power = 0.0;
    ResultStatus status = decelerateByParabola(log);
    if (isFatal(status)) {
        figure = wanted;
        return status;
    }
    const double power = firstPower(factor, wanted, status, log);
    if (!(wanted <= runState.seekHigh - factor.tolerance)) {
        figure = wanted;
        return status | factor.beyond;
    }
    if (runState.seekLow > wanted) {
        runState.thrustMode = 1;
        figure = wanted;
        return factor.brake(log);
    }
    runState.power = power;
    const Seek seek = {&runState.power, &figure, wanted, 0.2 * power, factor.tolerance, HighSide::aboveWanted, 0.0};
    return seekTarget(seek, log, decelerateByParabola);
}

// What this reference lets through of a status: all that a run can set today.
constexpr ResultStatus endingVelocityMask = 0x7FDFFFFF;

} // namespace

ResultStatus decelerateDryRun(PowerLaw law, SampleLog& log)
{
    return decelerate(law, log, nullptr);
}

double decelerateLoggedRun(PowerLaw law, SampleLog& log, GraphSeries* graph)
{
    return recordPedaledRun(log, graph, [&](RunRecorder& recorder) { decelerate(law, log, &recorder); });
}

ResultStatus decelSeekMeanPower(SampleLog& log)
{
    if (!isFalling()) {
        return statusIllegalValue;
    }
    runState.meanPower = runState.power;
    if (runState.power < 0.0) {
        runState.thrustMode = 1;
        return seekBrakeForMeanPower(log);
    }
    const double holding = powerForEndingVelocity();
    if (runState.power > holding) {
        return statusTooLargePower;
    }
    const Seek seek = {&runState.power,
                       &runState.meanStagePower[stagePedaling],
                       runState.meanPower,
                       0.4 * holding,
                       0.001,
                       HighSide::aboveWanted,
                       0.0,
                       holding};
    return seekTarget(seek, log, decelerateByParabola);
}

ResultStatus decelPowerForEndingVelocity(SampleLog& log)
{
    if (!isFalling()) {
        return statusIllegalValue;
    }
    const double holding = powerForEndingVelocity();
    if (runState.totalLoad < 0.0) {
        runState.power = 0.0;
        runState.force = runState.totalLoad;
        runState.thrustMode = 1;
        return brakeDryRun(BrakeLaw::force, log) & endingVelocityMask;
    }
    const double ratio = usualRatio(runState.endVelocity);
    const double cadence = modelState.cadenceUsual * ratio / gearTable[nearestGear(ratio)].ratio;
    if (!takePower(requiredPower(holding, cadence, modelState.cadencePoweredMax))) {
        return statusNotConverged;
    }
    ResultStatus status = decelerateByParabola(log);
    if (runState.thrustMode != 0) { // pedals that would turn beyond the far end of the parabola ask for power below 0
        status = brakeDryRun(BrakeLaw::force, log);
    }
    return status & endingVelocityMask;
}

ResultStatus decelSeekSectorTime(SampleLog& log)
{
    return runState.sectorTime > 0.0 && isFalling() ? seekFactor(sectorTimeFactor, log) : statusIllegalValue;
}

ResultStatus decelSeekDistance(SampleLog& log)
{
    return runState.distance > 0.0 && isFalling() ? seekFactor(distanceFactor, log) : statusIllegalValue;
}

ResultStatus decelSeekAccele(SampleLog& log)
{
    return runState.accele <= 0.0 && isFalling() ? seekFactor(acceleFactor, log) : statusIllegalValue;
}

} // namespace torvane
