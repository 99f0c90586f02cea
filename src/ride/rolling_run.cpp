#include "ride/rolling_run.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
#include "ride/ride_status.h"
#include "ride/roll_bound.h"
#include "ride/run_recorder.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double automaticRollInterval = 0.1; // s
constexpr double steadyAccele = 0.0005;       // m/s2; a roll without limit ends below it
constexpr double noThrust = 0.001;            // W
constexpr int stepsBetweenLooks = 32;         // of a trial, at where it leads to

void selectGear(StepState& s)
{
    s.gear = nearestGear(usualRatio(s.velocity));
    engageGear(s);
    s.cadence = cadenceInGear(s.velocity, s.gearRatio);
}

bool recordRoll(RunRecorder& recorder, StepState& s, const RollLimit& limit)
{
    selectGear(s);
    if (limit.until == RollUntil::distance) {
        reportProgress(progressPercent(0.0, limit.distance, s.distance));
    } else if (limit.until == RollUntil::time) {
        reportProgress(progressPercent(0.0, limit.time, s.time));
    }
    return recordStep(recorder, s);
}

// Seconds that the step just done went beyond the limit; negative while it has not reached it.
double secondsBeyond(const StepState& s, const RollLimit& limit, double dt)
{
    if (limit.until == RollUntil::time) {
        return s.time - (limit.time - dt);
    }
    return s.distance >= limit.distance ? (s.distance - limit.distance) / s.velocity : -1.0;
}

// Whether the step just done is the last; it is cut to the limit then.
bool isLastStep(StepState& s, const RollLimit& limit, double dt)
{
    if (limit.until != RollUntil::distance && limit.until != RollUntil::time) {
        return s.accele < steadyAccele;
    }
    const double over = secondsBeyond(s, limit, dt);
    if (over < 0.0) {
        return false;
    }
    addDragQuantities(-over);
    endRollStep(s, dt, over);
    return true;
}

void storeRoll(const StepState& s)
{
    runState.velocity = s.velocity;
    runState.sectorTime = s.time;
    runState.distance = s.distance;
    runState.accele = meanAccele(runState.startVelocity, s.velocity, s.time);
}

// A run that is certain to end below `enough` may be given up: nothing then.
std::optional<ResultStatus> roll(const RollLimit& limit, double enough, SampleLog& log, RunRecorder* recorder)
{
    const double dt = rollInterval();
    if (!(dt >= leastInterval)) {
        return statusIllegalValue;
    }
    StepState s = startRolling();
    showStart(s);
    double before = s.velocity;
    int count = 1;
    while (s.time < longestRun) {
        if (recorder != nullptr && !recordRoll(*recorder, s, limit)) {
            break;
        }
        if (count % stepsBetweenLooks == 0 && staysBelow(s, before, enough, dt)) {
            runState.velocity = s.velocity;
            return {};
        }
        before = s.velocity;
        rollStep(s, dt);
        if (isLastStep(s, limit, dt)) {
            break;
        }
        ++count;
        s.time += dt;
    }
    storeRoll(s);
    if (recorder != nullptr) {
        finishRecording(*recorder, s);
    } else {
        log.sampleCount = count;
    }
    return std::isfinite(s.velocity) ? 0 : statusNotConverged;
}

constexpr double anyVelocity = 0.0; // is enough: the run goes to its end

} // namespace

double rollThreshold()
{
    const double weight = modelState.humanWeight + modelState.bikeWeight;
    const double rolling = weight * modelState.effectiveRolling * tyreLoadFactor(); // kgf on the level
    return std::tan(std::asin(-rolling / modelState.inertialWeight)) * 100.0 - 0.01;
}

ResultStatus checkRollingGradient()
{
    if (runState.inclination > rollThreshold()) {
        runState.velocity = 0.0;
        return statusTooSmallGradient;
    }
    return 0;
}

ResultStatus solveRollingVelocity()
{
    resetGrip();
    Stepper velocity{1.4, 2.8, 0.3};
    const Settled settled =
        settle(velocity, noThrust, [](double v) { return -solvePowerAtVelocity(stageThrust, v).value; });
    runState.velocity = velocity.value > 0.0 ? velocity.value : 0.0;
    return settled == Settled::met ? 0 : statusNotConverged;
}

StepState startRolling()
{
    StepState s;
    s.velocity = runState.startVelocity;
    selectGear(s);
    resetGrip();
    s.resistance = solvePowerAtVelocity(stageThrust, s.velocity).value;
    updateLoadAndGrip(0.0); // the same in every step, and none of them reads it
    return s;
}

void rollStep(StepState& state, double dt)
{
    clearStages();
    updateResistance(state);
    state.accele = state.velocity == 0.0 ? gravityAcceleration(0.0) : powerAcceleration(state);
    advance(state, dt);
    addDragQuantities(dt);
}

void endRollStep(StepState& state, double dt, double over)
{
    state.distance -= over * state.velocity;
    state.velocity -= over * state.accele;
    state.time += dt - over;
}

double rollInterval()
{
    return runState.accelerationIntervalMode == 0 ? automaticRollInterval : runState.accelerationInterval;
}

ResultStatus rollDryRun(const RollLimit& limit, SampleLog& log)
{
    return *roll(limit, anyVelocity, log, nullptr);
}

std::optional<ResultStatus> rollTrial(const RollLimit& limit, double enough, SampleLog& log)
{
    return roll(limit, enough, log, nullptr);
}

ResultStatus rollLoggedRun(const RollLimit& limit, SampleLog& log, GraphSeries* graph)
{
    RunRecorder recorder = beginRecording(log, graph, GraphLayout::rolling);
    return *roll(limit, anyVelocity, log, &recorder);
}

} // namespace torvane
