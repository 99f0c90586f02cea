// Time integrals and peaks of the power stages over a run, and the means they end in.
#pragma once

#include "model/run_state.h"

namespace torvane {

struct StageTotals {
    double power[stageCount] = {};  // J
    double torque[stageCount] = {}; // Nm s
    double force[stageCount] = {};  // kgf s
    double assistPower = 0;         // J
    double assistTorque = 0;        // Nm s
    double assistForce = 0;         // kgf s
};

// Clears the results that a run builds up while it goes: peaks and the largest acceleration.
void clearPeaks();

// Adds the present stages of runState and its motor for one step, and raises their peaks.
void addStages(StageTotals& totals, double dt);
// Takes a fraction of that step back.
void takeStagesBack(StageTotals& totals, double dt, double fraction);

// The same for the thrust stage alone, as in a braking run, whose peak is the lowest power.
void lowerThrustPeak();
void addThrust(StageTotals& totals, double dt);
void takeThrustBack(StageTotals& totals, double dt, double fraction);

// Means over a time into runState; 0 over no time.
void storeMeans(const StageTotals& totals, double time);

} // namespace torvane
