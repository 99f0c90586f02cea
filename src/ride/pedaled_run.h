// What an acceleration and a deceleration share: a rider who turns the pedals in a gear, shifts with a loss of time,
// and whose work is added up on the way.
#pragma once

#include "core/result_status.h"
#include "ride/motion.h"
#include "ride/ride_records.h"
#include "ride/run_recorder.h"
#include "ride/stage_totals.h"

namespace torvane {

// How the reference power meets the cadence.
enum class PowerLaw {
    parabola, // found.power at cadencePoweredMax, less at any other cadence
    constant, // found.power at every cadence
};

struct PedaledRun {
    PowerLaw law;
    double dt; // s, constant through the run
    StepState state = {};
    StageTotals totals = {};
    double shiftRemaining = 0; // s of shifting still to run, without pedaling
    bool shifting = false;     // the present step is one of it
    ResultStatus status = 0;
    int count = 1; // rows that a log of the run needs
};

// A run at its starting velocity in a gear, nothing done yet; the stages show what holds that velocity.
PedaledRun startPedaledRun(RideRun& ride, PowerLaw law, double dt, int gear);

// First half of a step: the stages of ride.found at the present velocity, by pedaling or, while shifting, at 0, and the
// resistances. extraVelocity lets the cranks turn where the wheel stands still.
void pedalOrShift(RideRun& ride, PedaledRun& run, double extraVelocity);

// Second half: work done, velocity and distance.
void rideStep(RideRun& ride, PedaledRun& run, RunRecorder* recorder);

// Takes back what the step went beyond the ending velocity.
void settleAtEnd(RideRun& ride, PedaledRun& run);

// Shifts as many gears up, or down, as the velocity asks for; each change of ring or sprocket costs shiftTimeLoss.
void shiftUp(const RideRun& ride, PedaledRun& run);
void shiftDown(const RideRun& ride, PedaledRun& run);

// Steps until `step` ends the run, at most 900 s; false when the time ran out.
template <class Step>
bool runSteps(RideRun& ride, PedaledRun& run, RunRecorder* recorder, Step step)
{
    while (run.state.time < longestRun) {
        if (recorder != nullptr && !recordStep(*recorder, run.state))
            return true;
        if (!step(ride, run, recorder))
            return true;
        ++run.count;
        run.state.time += run.dt;
    }
    return false;
}

// Means, velocity, time, distance and mean acceleration into found. A dry run leaves its count of rows in the log, a
// logged run its last row.
void finishPedaledRun(RideRun& ride, const PedaledRun& run, RunRecorder* recorder);

// Lets a run fill the log and, when wanted, the curves, as the dry run before it counted and timed it. Returns the
// normalized power in W.
template <class Run>
double recordPedaledRun(RideRun& ride, Run run)
{
    RunRecorder recorder = beginRecording(ride, GraphLayout::process);
    recorder.bins = makePowerBins(ride.found.sectorTime);
    run(recorder);
    return normalizedPower(recorder.bins);
}

} // namespace torvane
