#include "ride/pattern_braking.h"

#include "core/result_status.h"
#include "core/units.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/resistance.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/motion.h"
#include "ride/rolling_run.h"
#include "ride/run_recorder.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double sampleInterval = 0.1;      // s
constexpr double longestBraking = 604800.0; // s, a week

// What the tyres hold beyond a braking force, kgf, with the weight that it moves to the front.
double gripLeft(RideRun& ride, double force)
{
    updateLoadAndGrip(ride.model, ride.now, force);
    double pressed = std::cos(std::atan(ride.now.inclination / 100.0));
    return pressed * ride.now.effectiveFriction * ride.model.state.totalWeight + force;
}

// Thrust power in W, negative, that holds the ending velocity.
double holdingPower(RideRun& ride)
{
    resetGrip(ride);
    return solvePowerAtVelocity(ride.model, ride.now, stageThrust, ride.in.endVelocity).value;
}

double brakingTime(const RideRun& ride)
{
    return ride.in.totalDistance / ride.in.endVelocity;
}

// Force at the road of a thrust power at the ending velocity.
double forceOf(const RideRun& ride, double power)
{
    double radius = ride.model.state.rimDiameter[1] * 0.5 + ride.model.state.tyreSize[1]; // mm
    return ride.model.state.rearCircumference * power / (radius * ride.in.endVelocity * 2.0 * pi * standardGravity);
}

void addPoint(RideRun& ride, double time)
{
    double velocity = ride.in.endVelocity;
    addGraphPoint(*ride.graph,
                  {time, velocity * kphPerMps, time * velocity, drawnTemperature(ride, 0), drawnTemperature(ride, 1)});
}

} // namespace

ResultStatus criticalFullBraking(RideRun& ride)
{
    if (!(ride.in.startVelocity > ride.in.endVelocity))
        return statusIllegalValue;
    resetGrip(ride);
    if (ride.now.effectiveFriction == 0.0)
        return statusNotConverged;         // no force to find
    Stepper deceleration{-8.2, -2.0, 0.7}; // m/s2; its step is negative, so that lowering it brakes less
    Settled settled = settle(ride.progress, deceleration, 0.0015, [&](double accele) {
        ride.found.force = ride.model.state.totalWeight * accele / standardGravity;
        return gripLeft(ride, ride.found.force);
    });
    if (settled != Settled::met)
        return statusNotConverged;
    ResultStatus status = brakeDryRun(ride, BrakeLaw::force);
    return isFatal(status) ? status : toleranceClass(ride.found.velocity, ride.in.endVelocity);
}

ResultStatus constantVelocityDryRun(RideRun& ride)
{
    if (!(ride.in.endVelocity > 0.0) || !(brakingTime(ride) <= longestBraking))
        return statusIllegalValue;
    resetGrip(ride);
    if (ride.now.inclination > rollThreshold(ride))
        return statusTooSmallGradient;
    double power = holdingPower(ride);
    if (!(power < 0.0)) {
        solveRollingVelocity(ride);
        return statusNoBrakingNeeded;
    }
    ride.found.force = forceOf(ride, power);
    ride.found.sectorTime = std::floor(brakingTime(ride) + 0.5);
    ride.log.sampleCount = 1;
    for (double time = 0.0; time <= brakingTime(ride); time += sampleInterval)
        ++ride.log.sampleCount;
    return 0;
}

void constantVelocityLoggedRun(RideRun& ride)
{
    double duration = brakingTime(ride);
    double power = holdingPower(ride);
    updateLoadAndGrip(ride.model, ride.now, ride.found.force);
    beginCurves(ride, GraphLayout::braking, ride.log.sampleCount);
    double time = 0.0;
    while (time <= duration) {
        reportProgress(ride.progress, progressPercent(0.0, duration, time));
        if (ride.graph)
            addPoint(ride, time);
        accumulateBrakeStep(ride, ride.in.endVelocity, power, sampleInterval);
        time += sampleInterval;
    }
    double over = (time - duration) / sampleInterval;
    if (over > 0.0)
        undoBrakeOvershoot(ride, ride.in.endVelocity, power, sampleInterval, over);
}

} // namespace torvane
