#include "ride/rolling_run.h"

#include "core/result_status.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
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

void selectGear(const Model& model, StepState& s)
{
    s.gear = usualGear(model, s.velocity);
    engageGear(model, s);
    s.cadence = cadenceInGear(model, s.velocity, s.gearRatio);
}

bool recordRoll(RunRecorder& recorder, StepState& s, const RollLimit& limit)
{
    selectGear(recorder.ride.model, s);
    if (limit.until == limitDistance)
        reportProgress(recorder.ride.progress, progressPercent(0.0, limit.distance, s.distance));
    else if (limit.until == limitTime)
        reportProgress(recorder.ride.progress, progressPercent(0.0, limit.time, s.time));
    return recordStep(recorder, s);
}

// Seconds that the step just done went beyond the limit; negative while it has not reached it.
double secondsBeyond(const StepState& s, const RollLimit& limit, double dt)
{
    if (limit.until == limitTime)
        return s.time - (limit.time - dt);
    return s.distance >= limit.distance ? (s.distance - limit.distance) / s.velocity : -1.0;
}

// Whether the step just done is the last; it is cut to the limit then.
bool isLastStep(RideRun& ride, StepState& s, const RollLimit& limit, double dt)
{
    if (limit.until != limitDistance && limit.until != limitTime)
        return s.accele < steadyAccele;
    double over = secondsBeyond(s, limit, dt);
    if (over < 0.0)
        return false;
    addDragQuantities(ride, -over);
    endRollStep(s, dt, over);
    return true;
}

void storeRoll(RideRun& ride, const StepState& s)
{
    ride.found.velocity = s.velocity;
    ride.found.sectorTime = s.time;
    ride.found.distance = s.distance;
    ride.found.accele = meanAccele(ride.found.sectorStartVelocity, s.velocity, s.time);
}

// A run that is certain to end below `enough` may be given up: nothing then.
std::optional<ResultStatus> roll(RideRun& ride, const RollLimit& limit, double enough, RunRecorder* recorder)
{
    double dt = rollInterval(ride);
    if (!(dt >= leastInterval))
        return statusIllegalValue;
    StepState s = startRolling(ride);
    showStart(ride, s);
    double before = s.velocity;
    int count = 1;
    while (s.time < longestRun) {
        if (recorder != nullptr && !recordRoll(*recorder, s, limit))
            break;
        if (count % stepsBetweenLooks == 0 && staysBelow(ride, s, before, enough, dt)) {
            ride.found.velocity = s.velocity;
            return {};
        }
        before = s.velocity;
        rollStep(ride, s, dt);
        if (isLastStep(ride, s, limit, dt))
            break;
        ++count;
        s.time += dt;
    }
    storeRoll(ride, s);
    if (recorder != nullptr)
        finishRecording(*recorder, s);
    else
        ride.log.sampleCount = count;
    return std::isfinite(s.velocity) ? statusDone : statusNotConverged;
}

constexpr double anyVelocity = 0.0; // is enough: the run goes to its end

} // namespace

double rollThreshold(const RideRun& ride)
{
    double weight = ride.model.state.humanWeight + ride.model.state.bikeWeight;
    const double rolling =
        weight * ride.now.effectiveRolling * tyreLoadFactor(ride.model, ride.now); // kgf on the level
    return std::tan(std::asin(-rolling / ride.model.state.inertialWeight)) * 100.0 - 0.01;
}

ResultStatus checkRollingGradient(RideRun& ride)
{
    if (ride.now.inclination > rollThreshold(ride)) {
        ride.found.velocity = 0.0;
        return statusTooSmallGradient;
    }
    return 0;
}

ResultStatus solveRollingVelocity(RideRun& ride)
{
    resetGrip(ride);
    Stepper velocity{1.4, 2.8, 0.3};
    Settled settled = settle(ride.progress, velocity, noThrust, [&](double v) {
        return -solvePowerAtVelocity(ride.model, ride.now, stageThrust, v).value;
    });
    ride.found.velocity = velocity.value > 0.0 ? velocity.value : 0.0;
    return settled == Settled::met ? statusDone : statusNotConverged;
}

StepState startRolling(RideRun& ride)
{
    StepState s;
    s.velocity = ride.found.sectorStartVelocity;
    selectGear(ride.model, s);
    resetGrip(ride);
    s.resistance = solvePowerAtVelocity(ride.model, ride.now, stageThrust, s.velocity).value;
    updateLoadAndGrip(ride.model, ride.now, 0.0); // the same in every step, and none of them reads it
    return s;
}

void rollStep(RideRun& ride, StepState& state, double dt)
{
    clearStages(ride.now);
    updateResistance(ride, state);
    state.accele = state.velocity == 0.0 ? gravityAcceleration(ride, 0.0) : powerAcceleration(ride, state);
    advance(state, dt);
    addDragQuantities(ride, dt);
}

void endRollStep(StepState& state, double dt, double over)
{
    state.distance -= over * state.velocity;
    state.velocity -= over * state.accele;
    state.time += dt - over;
}

double rollInterval(const RideRun& ride)
{
    return ride.in.accelerationIntervalMode == intervalAuto ? automaticRollInterval : ride.in.accelerationInterval;
}

ResultStatus rollDryRun(RideRun& ride, const RollLimit& limit)
{
    return *roll(ride, limit, anyVelocity, nullptr);
}

std::optional<ResultStatus> rollTrial(RideRun& ride, const RollLimit& limit, double enough)
{
    return roll(ride, limit, enough, nullptr);
}

ResultStatus rollLoggedRun(RideRun& ride, const RollLimit& limit)
{
    RunRecorder recorder = beginRecording(ride, GraphLayout::rolling);
    return *roll(ride, limit, anyVelocity, &recorder);
}

} // namespace torvane
