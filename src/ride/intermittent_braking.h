// A descent ridden in intervals: coasting from the ending velocity up, then one short hard braking back down to it, so
// that each interval ends at the ending velocity. Coasting and braking are a sector each.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/sample_log.h"

namespace torvane {

// Finds out whether the force brakes within an interval, and settles the velocities that the sectors repeat. Whole
// intervals into intervalCount, points of the curves into log.sampleCount. Status: statusNoBrakingNeeded, with the
// velocity that the bicycle rolls at in runState.velocity; statusTooShortInterval; statusIllegalValue;
// statusNotConverged when a sector takes 900 s.
ResultStatus intermittentDryRun(SampleLog& log, int& intervalCount);

// Rides runState.totalDistance, a remainder behind the whole intervals included: the brakes' heat, a row in log.sectors
// for each sector, and when not null the curves. Time into runState.sectorTime. Status: statusSlip,
// statusNotConverged, or 0.
ResultStatus intermittentLoggedRun(int intervalCount, SampleLog& log, GraphSeries* graph);

} // namespace torvane
