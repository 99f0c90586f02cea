// A descent ridden in intervals: coasting from the ending velocity up, then one short hard braking back down to it, so
// that each interval ends at the ending velocity. Coasting and braking are a sector each.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// Finds out whether the force brakes within an interval, and settles the velocities that the sectors repeat. Whole
// intervals into intervalCount, points of the curves into log.sampleCount. Status: statusNoBrakingNeeded, with the
// velocity that the bicycle rolls at in found.velocity; statusTooShortInterval; statusIllegalValue;
// statusNotConverged when a sector takes 900 s.
ResultStatus intermittentDryRun(RideRun& ride, int& intervalCount);

// Rides totalDistance, a remainder behind the whole intervals included: the brakes' heat, a row in log.sectors
// for each sector, and when wanted the curves. Time into found.sectorTime. Status: statusSlip,
// statusNotConverged, or 0.
ResultStatus intermittentLoggedRun(RideRun& ride, int intervalCount);

} // namespace torvane
