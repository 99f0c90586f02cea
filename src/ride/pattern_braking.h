// Ways of using the brakes on a descent: the largest force that the tyres take, and the force that holds a velocity.
// A constant force of the user's own is braking_run.h's, braking in turns intermittent_braking.h's.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// Finds the largest force that the tyres take on the inclination, into found.force, and runs it dry. Status:
// statusIllegalValue for a start not above the end; statusNotConverged, as without any friction; the tolerance class of
// the velocity reached.
ResultStatus criticalFullBraking(RideRun& ride);

// The force that holds endVelocity over totalDistance, into found.force; the time into sectorTime, whole
// seconds; the points of the curves into log.sampleCount. Status: statusIllegalValue for a velocity not above 0 or one
// so low that the way would take more than a week; statusTooSmallGradient; statusNoBrakingNeeded, with the velocity
// that the bicycle rolls at in found.velocity.
ResultStatus constantVelocityDryRun(RideRun& ride);

// The brakes' heat on that way, and its curves when wanted, after a dry run that was not fatal.
void constantVelocityLoggedRun(RideRun& ride);

} // namespace torvane
