// A run driven by the brakes (thrustByBraking): the wheel force, not pedaling, drives it, in one gear, with a
// negative thrust. Knows nothing of what force is wanted (braking_seek.h, pattern_braking.h).
#pragma once

#include "ride/ride_records.h"
#include "ride/run_recorder.h"
#include "ride/stage_totals.h"

#include <limits>

namespace torvane {

// What stays the same through the run.
enum class BrakeLaw {
    force, // found.force, kgf, negative
    power, // found.power, W, negative
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
BrakingRun startBrakingRun(RideRun& ride, BrakeLaw law, double dt);

// One step. False ends the run: at endVelocity, at the distance limit, or when the velocity stays.
bool brakeStep(RideRun& ride, BrakingRun& run);

// From sectorStartVelocity to endVelocity; counts the rows into log.sampleCount. The brakes' heat is left alone.
// Status: statusIllegalValue for a start not above the end or an unusable interval; warning statusSlip. A run cut at
// 900 s is no failure.
ResultStatus brakeDryRun(RideRun& ride, BrakeLaw law);

// The same run with the brakes' heat, into the log and, when wanted, the curves. A peak of 10 kW or more turns
// kiloWattLog on.
void brakeLoggedRun(RideRun& ride, BrakeLaw law);

} // namespace torvane
