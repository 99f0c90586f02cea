// Deceleration from startVelocity to endVelocity while still pedaling at a reduced reference power, or none.
// Where pedaling alone cannot slow so much, thrustMode is set: the run is one of braking (braking_run.h) then.
#pragma once

#include "ride/pedaled_run.h"
#include "ride/ride_records.h"

namespace torvane {

// Counts the rows into log.sampleCount. A negative power answers 0 with thrustMode set and nothing run. Status:
// statusIllegalValue for an end not below the start or an unusable interval; statusNoDeceleration when coasting does
// not slow; statusTooLargePower when the power does not let slow; statusNotConverged when cut at 900 s; warning
// statusDeclineMayStop.
ResultStatus decelerateDryRun(RideRun& ride, PowerLaw law);

// The same run into the log and, when wanted, the curves. Returns the normalized power in W.
double decelerateLoggedRun(RideRun& ride, PowerLaw law);

// The reference power that holds the ending velocity, run once. Where the road pushes harder than the drags hold, the
// force that holds it is braked instead.
ResultStatus decelPowerForEndingVelocity(RideRun& ride);

// Each seeks the power whose run has the figure wanted, or, with thrustMode set, the braking force. Status: as
// seekTarget, statusIllegalValue, the dry run's, and where even the power for the ending velocity slows too hard
// statusTooLongTime, statusTooLongDistance or statusTooHighAccele, with seekLow and seekHigh as the limits.
ResultStatus decelSeekMeanPower(RideRun& ride);                 // the power as entered
ResultStatus decelSeekSectorTime(RideRun& ride, double wanted); // s
ResultStatus decelSeekDistance(RideRun& ride, double wanted);   // m
ResultStatus decelSeekAccele(RideRun& ride, double wanted);     // m/s2

} // namespace torvane
