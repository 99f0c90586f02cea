// A bicycle that rolls without power: how fast it gets on a slope, at last, over a distance or over a time.
// The coasting sectors of intermittent braking roll by the same step.
#pragma once

#include "ride/ride_records.h"

#include <optional>

namespace torvane {

struct RollLimit {
    InclinationLimit until = limitNone;
    double distance = 0; // m
    double time = 0;     // s
};

// Gradient in % that just beats the rolling resistance; negative.
double rollThreshold(const RideRun& ride);

// statusTooSmallGradient, with found.velocity 0, when the inclination does not reach the threshold; else 0.
ResultStatus checkRollingGradient(RideRun& ride);

// Velocity at which the road pushes as hard as the drags hold, into found.velocity. Status 0 or statusNotConverged.
ResultStatus solveRollingVelocity(RideRun& ride);

// A rolling state at sectorStartVelocity, in the gear for it, on the starting grip.
StepState startRolling(RideRun& ride);
// Acceleration, velocity and distance of one step, and the work against air and tyres.
void rollStep(RideRun& ride, StepState& state, double dt);
// Takes the last `over` seconds of that motion back; the time of the step is added here, without them.
void endRollStep(StepState& state, double dt, double over);
// Step in s; not above 0 when the one entered is unusable.
double rollInterval(const RideRun& ride);

// Rolls from sectorStartVelocity to the limit, at most 900 s; counts the rows into log.sampleCount. Status 0;
// statusIllegalValue for an unusable interval; statusNotConverged where the velocity ends as no number, as in a gale
// that blows the bicycle back through standstill.
ResultStatus rollDryRun(RideRun& ride, const RollLimit& limit);

// The same run, given up as soon as it is certain to end slower than `enough`: nothing then, and found.velocity is
// some velocity below. Else all is as after rollDryRun.
std::optional<ResultStatus> rollTrial(RideRun& ride, const RollLimit& limit, double enough);

// The dry run again, into the log and, when wanted, the curves.
ResultStatus rollLoggedRun(RideRun& ride, const RollLimit& limit);

} // namespace torvane
