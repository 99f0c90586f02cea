// A bicycle that rolls without power: how fast it gets on a slope, at last, over a distance or over a time.
// The coasting sectors of intermittent braking roll by the same step.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/sample_log.h"

#include <optional>

namespace torvane {

enum class RollUntil : int { steady, distance, time }; // order of inclinationLimit

struct RollLimit {
    RollUntil until = RollUntil::steady;
    double distance = 0; // m
    double time = 0;     // s
};

// Gradient in % that just beats the rolling resistance; negative.
double rollThreshold();

// statusTooSmallGradient, with runState.velocity 0, when the inclination does not reach the threshold; else 0.
ResultStatus checkRollingGradient();

// Velocity at which the road pushes as hard as the drags hold, into runState.velocity. Status 0 or statusNotConverged.
ResultStatus solveRollingVelocity();

// A rolling state at runState.startVelocity, in the gear for it, on the starting grip.
StepState startRolling();
// Acceleration, velocity and distance of one step, and the work against air and tyres.
void rollStep(StepState& state, double dt);
// Takes the last `over` seconds of that motion back; the time of the step is added here, without them.
void endRollStep(StepState& state, double dt, double over);
// Step in s; not above 0 when the one entered is unusable.
double rollInterval();

// Rolls from runState.startVelocity to the limit, at most 900 s; counts the rows into log.sampleCount. Status 0;
// statusIllegalValue for an unusable interval; statusNotConverged where the velocity ends as no number, as in a gale
// that blows the bicycle back through standstill.
ResultStatus rollDryRun(const RollLimit& limit, SampleLog& log);

// The same run, given up as soon as it is certain to end slower than `enough`: nothing then, and runState.velocity is
// some velocity below. Else all is as after rollDryRun.
std::optional<ResultStatus> rollTrial(const RollLimit& limit, double enough, SampleLog& log);

// The dry run again, into the log and, when not null, the curves.
ResultStatus rollLoggedRun(const RollLimit& limit, SampleLog& log, GraphSeries* graph);

} // namespace torvane
