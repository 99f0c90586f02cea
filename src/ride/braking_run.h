// A run driven by the brakes (runState.thrustMode 1): the wheel force, not pedaling, drives it, in one gear, with a
// negative thrust. Knows nothing of what force is wanted (braking_seek.h, pattern_braking.h).
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/run_recorder.h"
#include "ride/sample_log.h"
#include "ride/stage_totals.h"

#include <limits>

namespace torvane {

// What stays the same through the run.
enum class BrakeLaw {
    force, // runState.force, kgf, negative
    power, // runState.power, W, negative
};

struct BrakingRun {
    BrakeLaw law;
    double dt;                                                      // s
    double distanceLimit = std::numeric_limits<double>::infinity(); // m
    bool heats = false;                                             // adds the brakes' heat up
    StepState state = {};
    StageTotals totals = {};
    ResultStatus status = 0;
};

// A run at its starting velocity in a gear, nothing done yet.
BrakingRun startBrakingRun(BrakeLaw law, double dt);

// One step. False ends the run: at runState.endVelocity, at the distance limit, or when the velocity stays.
bool brakeStep(BrakingRun& run);

// From runState.startVelocity to endVelocity; counts the rows into log.sampleCount. The brakes' heat is left alone.
// Status: statusIllegalValue for a start not above the end or an unusable interval; warning statusSlip. A run cut at
// 900 s is no failure.
ResultStatus brakeDryRun(BrakeLaw law, SampleLog& log);

// The same run with the brakes' heat, into the log and, when not null, the curves. A peak of 10 kW or more turns
// runState.kiloWattLog on.
void brakeLoggedRun(BrakeLaw law, SampleLog& log, GraphSeries* graph);

} // namespace torvane
