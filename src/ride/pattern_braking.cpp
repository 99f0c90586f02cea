#include "ride/pattern_braking.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/resistance.h"
#include "model/run_state.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/motion.h"
#include "ride/ride_status.h"
#include "ride/rolling_run.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double sampleInterval = 0.1;      // s
constexpr double longestBraking = 604800.0; // s, a week

// What the tyres hold beyond a braking force, kgf, with the weight that it moves to the front.
double gripLeft(double force)
{
    updateLoadAndGrip(force);
    const double pressed = std::cos(std::atan(runState.inclination / 100.0));
    return pressed * modelState.effectiveFriction * modelState.totalWeight + force;
}

// Thrust power in W, negative, that holds the ending velocity.
double holdingPower()
{
    resetGrip();
    return solvePowerAtVelocity(stageThrust, runState.endVelocity).value;
}

double brakingTime()
{
    return runState.totalDistance / runState.endVelocity;
}

// Force at the road of a thrust power at the ending velocity.
double forceOf(double power)
{
    const double radius = modelState.rimDiameter[1] * 0.5 + modelState.tyreSize[1]; // mm
    return modelState.rearCircumference * power / (radius * runState.endVelocity * 2.0 * pi * standardGravity);
}

void addPoint(GraphSeries& graph, double time)
{
    const double velocity = runState.endVelocity;
    addGraphPoint(graph, {time, velocity * 3.6, time * velocity, drawnTemperature(0), drawnTemperature(1)});
}

} // namespace

ResultStatus criticalFullBraking(SampleLog& log)
{
    if (!(runState.startVelocity > runState.endVelocity)) {
        return statusIllegalValue;
    }
    resetGrip();
    if (modelState.effectiveFriction == 0.0) {
        return statusNotConverged; // no force to find
    }
    Stepper deceleration{-8.2, -2.0, 0.7}; // m/s2; its step is negative, so that lowering it brakes less
    const Settled settled = settle(deceleration, 0.0015, [](double accele) {
        runState.force = modelState.totalWeight * accele / standardGravity;
        return gripLeft(runState.force);
    });
    if (settled != Settled::met) {
        return statusNotConverged;
    }
    const ResultStatus status = brakeDryRun(BrakeLaw::force, log);
    return isFatal(status) ? status : toleranceClass(runState.velocity, runState.endVelocity);
}

ResultStatus constantVelocityDryRun(SampleLog& log)
{
    if (!(runState.endVelocity > 0.0) || !(brakingTime() <= longestBraking)) {
        return statusIllegalValue;
    }
    resetGrip();
    if (runState.inclination > rollThreshold()) {
        return statusTooSmallGradient;
    }
    const double power = holdingPower();
    if (!(power < 0.0)) {
        solveRollingVelocity();
        return statusNoBrakingNeeded;
    }
    runState.force = forceOf(power);
    runState.sectorTime = std::floor(brakingTime() + 0.5);
    log.sampleCount = 1;
    for (double time = 0.0; time <= brakingTime(); time += sampleInterval) {
        ++log.sampleCount;
    }
    return 0;
}

void constantVelocityLoggedRun(const SampleLog& log, GraphSeries* graph)
{
    const double duration = brakingTime();
    const double power = holdingPower();
    updateLoadAndGrip(runState.force);
    if (graph != nullptr) {
        beginGraphSeries(*graph, GraphLayout::braking, log.sampleCount);
    }
    double time = 0.0;
    while (time <= duration) {
        reportProgress(progressPercent(0.0, duration, time));
        if (graph != nullptr) {
            addPoint(*graph, time);
        }
        accumulateBrakeStep(runState.endVelocity, power, sampleInterval);
        time += sampleInterval;
    }
    const double over = (time - duration) / sampleInterval;
    if (over > 0.0) {
        undoBrakeOvershoot(runState.endVelocity, power, sampleInterval, over);
    }
}

} // namespace torvane
