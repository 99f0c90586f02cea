#include "ride/acceleration.h"

#include "core/parameter_block.h"
#include "model/assist.h"
#include "model/resistance.h"
#include "ride/seek.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

bool isKick(const StepState& s)
{
    return runState.startVelocity == 0.0 && s.time < runState.kickTime;
}

// Velocity that the cranks turn with in the first kick, when the wheel still stands.
double kickVelocity(PowerLaw law)
{
    return law == PowerLaw::constant ? 1.4 : 0.025;
}

void testWheelSpin(PedaledRun& run)
{
    updateLoadAndGrip(runState.thrustForce);
    double grip = modelState.rearWeightRatio * modelState.effectiveFriction * modelState.totalWeight;
    if (runState.thrustForce > grip) {
        run.status = statusWheelSpin; // whatever warning stood before
    }
}

bool accelerateStep(PedaledRun& run, RunRecorder* recorder)
{
    StepState& s = run.state;
    const bool kick = isKick(s);
    pedalOrShift(run, kick ? kickVelocity(run.law) : 0.0);
    s.accele = kick ? gravityAcceleration(runState.thrustForce) : powerAcceleration(s);
    if (!kick && !run.shifting && s.accele < plateauAccele) {
        run.status = s.accele < 0.0 ? statusNoAcceleration : run.status | statusEndNotReached;
        return false;
    }
    testWheelSpin(run);
    runState.maxAccele = std::max(runState.maxAccele, s.accele);
    rideStep(run, recorder);
    if (s.velocity >= runState.endVelocity) {
        settleAtEnd(run);
        return false;
    }
    shiftUp(run);
    return true;
}

bool isRising()
{
    return runState.startVelocity < runState.endVelocity;
}

// Step by the velocity that the power can hold.
double intervalFor(double heldVelocity)
{
    return runState.accelerationIntervalMode == 0 ? automaticInterval(heldVelocity) : runState.accelerationInterval;
}

// What is to be known before the first step.
struct Start {
    ResultStatus status;
    double dt = 0;
};

Start prepareAcceleration()
{
    if (!(runState.power >= 0.0) || !isRising()) {
        return {statusIllegalValue};
    }
    resetGrip();
    double heldVelocity = solveVelocityForPower(stagePedaling, runState.power).value;
    if (!(runState.startVelocity < heldVelocity)) {
        return {statusTooShortPower};
    }
    double dt = intervalFor(heldVelocity);
    return {dt >= leastInterval ? 0 : statusIllegalValue, dt};
}

ResultStatus accelerate(PowerLaw law, SampleLog& log, RunRecorder* recorder)
{
    const Start start = prepareAcceleration();
    if (isFatal(start.status)) {
        return start.status;
    }
    PedaledRun run = startPedaledRun(law, start.dt, startGear(0, runState.startVelocity));
    const bool ended = runSteps(run, recorder, accelerateStep);
    if (isFatal(run.status)) {
        return run.status;
    }
    if (!ended || !std::isfinite(run.state.velocity)) {
        run.status = statusNotConverged;
    }
    if (run.state.velocity > runState.reachVelocity) {
        run.status |= statusOverReach;
    }
    finishPedaledRun(run, log, recorder);
    return run.status;
}

ResultStatus accelerateByParabola(SampleLog& log)
{
    return accelerateDryRun(PowerLaw::parabola, log);
}

double powerForEndingVelocity()
{
    resetGrip();
    return solvePowerAtVelocity(stagePedaling, runState.endVelocity).value;
}

// A figure of the run that asks for more power than the ending velocity does.
struct Factor {
    double RunState::*figure;
    double tolerance;
    HighSide highSide;
    ResultStatus beyond;
};

constexpr Factor sectorTimeFactor = {&RunState::sectorTime, 0.01, HighSide::belowWanted, statusTooLongTime};
constexpr Factor distanceFactor = {&RunState::distance, 0.1, HighSide::belowWanted, statusTooLongDistance};
constexpr Factor acceleFactor = {&RunState::accele, 0.0015, HighSide::aboveWanted, statusTooHighAccele};

// Sets the limits that a message quotes, by the run with the power for the ending velocity.
bool isWithinLimit(const Factor& factor, double wanted)
{
    const double limit = runState.*factor.figure;
    const bool atLeast = factor.highSide == HighSide::aboveWanted;
    runState.seekLow = atLeast ? limit : 0.0;
    runState.seekHigh = atLeast ? 0.0 : limit;
    return !(atLeast ? wanted < limit : wanted > limit);
}

ResultStatus seekFactor(const Factor& factor, SampleLog& log)
{
    double& figure = runState.*factor.figure;
    const double wanted = figure;
    if (!(wanted > 0.0) || !isRising()) {
        return statusIllegalValue;
    }
    runState.power = powerForEndingVelocity();
    const double step = 0.2 * runState.power;
    accelerateByParabola(log);
    if (!isWithinLimit(factor, wanted)) {
        figure = wanted;
        return factor.beyond;
    }
    const Seek seek = {&runState.power, &figure, wanted, step, factor.tolerance, factor.highSide, 0.0};
    return seekTarget(seek, log, accelerateByParabola);
}

} // namespace

ResultStatus accelerateDryRun(PowerLaw law, SampleLog& log)
{
    return accelerate(law, log, nullptr);
}

double accelerateLoggedRun(PowerLaw law, SampleLog& log, GraphSeries* graph)
{
    return recordPedaledRun(log, graph, [&](RunRecorder& recorder) { accelerate(law, log, &recorder); });
}

ResultStatus seekMeanPower(SampleLog& log)
{
    runState.meanPower = runState.power;
    if (!(runState.power > 0.0) || !isRising()) {
        return statusIllegalValue;
    }
    const double step = 0.4 * powerForEndingVelocity();
    const Seek seek = {&runState.power,
                       &runState.meanStagePower[stagePedaling],
                       runState.meanPower,
                       step,
                       0.001,
                       HighSide::aboveWanted,
                       0.0};
    return seekTarget(seek, log, accelerateByParabola);
}

ResultStatus seekSectorTime(SampleLog& log)
{
    return seekFactor(sectorTimeFactor, log);
}

ResultStatus seekDistance(SampleLog& log)
{
    return seekFactor(distanceFactor, log);
}

ResultStatus seekAccele(SampleLog& log)
{
    return seekFactor(acceleFactor, log);
}

} // namespace torvane
