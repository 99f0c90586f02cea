// Time integrals and peaks of the power stages over a run, and the means they end in.
#pragma once

#include "ride/ride_records.h"

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
void clearPeaks(RideRun& ride);

// Adds the present stages of ride.found and its motor for one step, and raises their peaks.
void addStages(RideRun& ride, StageTotals& totals, double dt);
// Takes a fraction of that step back.
void takeStagesBack(const RideRun& ride, StageTotals& totals, double dt, double fraction);

// The same for the thrust stage alone, as in a braking run, whose peak is the lowest power.
void lowerThrustPeak(RideRun& ride);
void addThrust(const RideRun& ride, StageTotals& totals, double dt);
void takeThrustBack(const RideRun& ride, StageTotals& totals, double dt, double fraction);

// Means over a time into ride.found; 0 over no time.
void storeMeans(RideRun& ride, const StageTotals& totals, double time);

} // namespace torvane
